#include "sensing/SensorSource.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "base/Unicode.h"

namespace thermopix {

namespace {

using namespace std::string_view_literals;

template <std::size_t... counts>
constexpr auto joined(const std::array<std::string_view, counts>&... lists) {
    std::array<std::string_view, (counts + ...)> all{};
    auto next = all.begin();
    ((next = std::copy(lists.begin(), lists.end(), next)), ...);
    return all;
}

constexpr std::array cpuPatterns{"pACC MTR Temp"sv, "eACC MTR Temp"sv, "CPU"sv, "TC0P"sv, "TCXC"sv, "TCAD"sv};
constexpr std::array gpuPatterns{"GPU MTR Temp"sv, "TG0P"sv, "TGDD"sv};
constexpr std::array socPatterns{"SOC MTR Temp"sv, "PMGR SOC Die"sv};
constexpr std::array batteryPatterns{"gas gauge battery"sv, "battery"sv, "TB0T"sv, "TB1T"sv, "TB2T"sv};
constexpr std::array storagePatterns{"NAND"sv, "TH0P"sv, "SSD"sv};
constexpr auto siliconPatterns = joined(cpuPatterns, gpuPatterns, socPatterns);
constexpr auto diePatterns = joined(siliconPatterns, std::array{"MTR Temp"sv, "tdie"sv});

using WideningStages = std::array<NamePatterns, 3>;
constexpr WideningStages cpuStages{cpuPatterns, siliconPatterns, diePatterns};
constexpr WideningStages gpuStages{gpuPatterns, siliconPatterns, diePatterns};
constexpr WideningStages socStages{socPatterns, siliconPatterns, diePatterns};
constexpr WideningStages batteryStages{batteryPatterns, siliconPatterns, diePatterns};
constexpr WideningStages storageStages{storagePatterns, siliconPatterns, diePatterns};
constexpr std::array<NamePatterns, 2> hottestStages{siliconPatterns, diePatterns};

constexpr std::array<std::span<const NamePatterns>, caseCount<SensorSource>> stagesOfSources{
    cpuStages, gpuStages, socStages, batteryStages, storageStages, hottestStages,
};
static_assert(std::none_of(stagesOfSources.begin(), stagesOfSources.end(),
                           [](const auto& stages) { return stages.empty(); }));

constexpr std::array displayOrder{
    SensorSource::cpu,     SensorSource::gpu,     SensorSource::soc,
    SensorSource::hottest, SensorSource::battery, SensorSource::storage,
};
static_assert(displayOrder.size() == caseCount<SensorSource>);

}  // namespace

std::span<const SensorSource> sensorSourceDisplayOrder() {
    return displayOrder;
}

NamePatterns namePatterns(SensorSource source) {
    return source == SensorSource::hottest ? diePatterns : samplingStages(source).front();
}

NamePatterns namedSiliconPatterns() {
    return siliconPatterns;
}

std::span<const NamePatterns> samplingStages(SensorSource source) {
    return stagesOfSources[static_cast<std::size_t>(source)];
}

bool matches(std::string_view name, NamePatterns patterns) {
    const std::string text = lowercased(name);
    return std::any_of(patterns.begin(), patterns.end(),
                       [&](std::string_view pattern) { return text.find(lowercased(pattern)) != std::string::npos; });
}

bool matches(SensorSource source, std::string_view name) {
    return matches(name, namePatterns(source));
}

std::optional<double> reduce(std::span<const SensorSample> samples, FunctionView<bool(std::string_view)> isMatch) {
    std::optional<double> hottest;
    for (const auto& sample : samples) {
        if (isMatch(sample.name) && (!hottest || sample.celsius > *hottest)) {
            hottest = sample.celsius;
        }
    }
    return hottest;
}

std::optional<double> reduce(std::span<const SensorSample> samples, NamePatterns patterns) {
    return reduce(samples, [patterns](std::string_view name) { return matches(name, patterns); });
}

std::optional<double> reduce(SensorSource source, std::span<const SensorSample> samples) {
    return reduce(samples, namePatterns(source));
}

}  // namespace thermopix
