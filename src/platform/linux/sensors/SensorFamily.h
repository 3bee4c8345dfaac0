#pragma once

#include <string_view>

namespace thermopix {

/// What a temperature sits on, in the order in which sensors are listed.
enum class SensorFamily { processor, graphics, chipset, battery, solidStateDrive, rotatingDrive, other };

/// The family of a chip by its kernel name: the `name` of a hardware monitor or the `type` of a thermal zone.
/// Batteries and rotating drives cannot always be told by name.
[[nodiscard]] SensorFamily familyOfChip(std::string_view name);

}  // namespace thermopix
