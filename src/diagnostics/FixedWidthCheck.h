#pragma once

#include <cstdint>
#include <set>
#include <string_view>

#include "base/FunctionView.h"
#include "diagnostics/Checklist.h"
#include "sensing/Display.h"
#include "sensing/TemperatureUnit.h"

namespace thermopix {

/// The width in cells of the readout of a display.
using ReadoutWidth = FunctionView<std::int64_t(const Display&)>;

/// Checks that the readout keeps one width over the unit's whole range, in steps of half a degree Celsius.
void checkFixedWidth(std::string_view styleTitle, TemperatureUnit unit, ReadoutWidth width, Checklist& checklist);

}  // namespace thermopix
