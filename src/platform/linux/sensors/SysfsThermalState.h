#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "platform/linux/sensors/PacedChannel.h"
#include "platform/linux/sensors/SysfsFile.h"
#include "system/ThermalStateReader.h"

namespace thermopix {

/// The thermal state from the kernel's thermal zones and cooling devices: fair once a zone has reached an active trip
/// point, serious at a passive one or while the processor is being throttled, critical at a hot or critical one.
/// Costs one read for each zone with a usable trip point and for each cooling device of the processor; what fails or
/// sleeps says nothing. Zones and devices are looked for anew after each discovery of sensors.
class SysfsThermalState final : public ThermalStateReader {
public:
    /// `polling` and `access` outlive the reader.
    explicit SysfsThermalState(std::filesystem::path root, FileAccess& access = systemFileAccess(),
                               SensorPolling& polling = readingInPlace());

    [[nodiscard]] int thermalState() override;

private:
    /// Looks for zones and cooling devices anew.
    void rediscover();

    static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

    struct Zone {
        std::shared_ptr<SensorChannel> temperature;
        /// Where each state begins, in thousandths of a degree.
        std::array<std::int64_t, 4> bounds{never, never, never, never};
    };

    /// The state that a zone calls for; nominal when it sleeps or fails.
    [[nodiscard]] static int stateOf(const Zone& zone);

    std::filesystem::path root_;
    FileAccess& access_;
    SensorPolling& polling_;
    PacedChannels channels_;
    /// The discovery of sensors that the zones are as old as.
    std::optional<std::uint64_t> discovery_;
    std::vector<Zone> zones_;
    std::vector<SysfsFile> throttles_;
};

}  // namespace thermopix
