#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "base/Enumeration.h"
#include "base/FunctionView.h"
#include "sensing/SensorSample.h"

namespace thermopix {

/// The family of sensors that the user wants to see.
enum class SensorSource { cpu, gpu, soc, battery, storage, hottest };

template <>
struct EnumerationTable<SensorSource> {
    struct Row {
        SensorSource value;
        std::string_view rawValue;
        std::string_view title;
        std::string_view subtitle;
    };
    static constexpr std::array rows{
        Row{SensorSource::cpu, "cpu", "CPU", "Average of the performance and efficiency core clusters."},
        Row{SensorSource::gpu, "gpu", "GPU", "Average of the GPU die sensors."},
        Row{SensorSource::soc, "soc", "SoC", "Average of the SoC die sensors."},
        Row{SensorSource::battery, "battery", "Battery", "Hottest battery cell sensor."},
        Row{SensorSource::storage, "storage", "Storage", "Hottest internal SSD sensor."},
        Row{SensorSource::hottest, "hottest", "Hottest sensor", "The hottest CPU, GPU or SoC sensor in the machine."},
    };
};
static_assert(isCompleteTable<SensorSource::hottest>());

/// Substrings of sensor names, tested without regard to case.
using NamePatterns = std::span<const std::string_view>;

/// The order of the source picker.
[[nodiscard]] std::span<const SensorSource> sensorSourceDisplayOrder();

[[nodiscard]] NamePatterns namePatterns(SensorSource source);

/// The patterns of `cpu`, `gpu` and `soc`, in that order.
[[nodiscard]] NamePatterns namedSiliconPatterns();

/// The pattern lists that a source tries, in order; the first that finds a reading answers.
[[nodiscard]] std::span<const NamePatterns> samplingStages(SensorSource source);

/// True when the name contains any of the patterns.
[[nodiscard]] bool matches(std::string_view name, NamePatterns patterns);
[[nodiscard]] bool matches(SensorSource source, std::string_view name);

/// The largest reading among the samples whose names match; none when none does. The first of equal readings
/// stays; NaN neither replaces nor is replaced.
[[nodiscard]] std::optional<double> reduce(std::span<const SensorSample> samples,
                                           FunctionView<bool(std::string_view)> isMatch);
[[nodiscard]] std::optional<double> reduce(std::span<const SensorSample> samples, NamePatterns patterns);
[[nodiscard]] std::optional<double> reduce(SensorSource source, std::span<const SensorSample> samples);

}  // namespace thermopix
