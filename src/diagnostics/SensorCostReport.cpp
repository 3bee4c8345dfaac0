#include "diagnostics/SensorCostReport.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/Unicode.h"
#include "diagnostics/SensorSections.h"
#include "sensing/SensorSource.h"

namespace thermopix {

namespace {

constexpr std::size_t labelColumns = 18;

std::string readOnceText(const ReadCost::Cost& cost) {
    return cost.readOnce > 0 ? fmt::format(", {} slow, read once", cost.readOnce) : std::string();
}

std::string costLine(std::string_view label, const ReadCost::Cost& cost, std::string_view details) {
    return fmt::format("      {}{:6.2f} ms  ({}{})", paddedRight(label, labelColumns), cost.milliseconds, details,
                       readOnceText(cost));
}

void printCostBySource(std::span<const SensorSample> samples, ReadCost& cost, StandardOutput& output) {
    output.line("");
    output.line("--- cost per refresh tick, by source");
    for (const auto source : allCases<SensorSource>()) {
        const auto stages = stagesRead(source, samples);
        const auto count = std::count_if(samples.begin(), samples.end(),
                                         [&](const auto& sample) { return matchesAnyStage(sample, stages); });
        auto details = sensorCountText(static_cast<std::size_t>(count));
        if (stages.size() != 1) {
            details += fmt::format(", {} stages", stages.size());
        }
        output.line(costLine(title(source), cost.ofTick(stages), details));
    }
}

bool isNamedSilicon(std::string_view name) {
    return matches(name, namedSiliconPatterns());
}
bool isBattery(std::string_view name) {
    return matches(SensorSource::battery, name);
}
bool isStorage(std::string_view name) {
    return matches(SensorSource::storage, name);
}
bool isCatchAll(std::string_view name) {
    return matches(SensorSource::hottest, name);
}
bool isAnything(std::string_view /*name*/) {
    return true;
}

struct Family {
    std::string_view label;
    bool (*holds)(std::string_view name);
};

/// In the order in which they take their sensors: each only from what the earlier ones left.
constexpr std::array families{
    Family{"named silicon", isNamedSilicon}, Family{"battery cells", isBattery},    Family{"internal SSD", isStorage},
    Family{"catch-all only", isCatchAll},    Family{"everything else", isAnything},
};

/// Prints a line for each family that has sensors; returns the sum of their costs.
double printCostByFamily(std::span<const SensorSample> samples, ReadCost& cost, StandardOutput& output) {
    output.line("");
    output.line("--- cost by sensor family");
    double sum = 0;
    std::set<std::string> taken;
    for (const auto& family : families) {
        std::set<std::string> names;
        std::size_t count = 0;
        for (const auto& sample : samples) {
            if (!taken.contains(sample.name) && family.holds(sample.name)) {
                names.insert(sample.name);
                ++count;
            }
        }
        if (count == 0) {
            continue;
        }
        const auto ofFamily = cost.ofSensors(names);
        const auto details = fmt::format("{}, {:.2f} ms each", sensorCountText(count),
                                         ofFamily.milliseconds / static_cast<double>(count));
        output.line(costLine(family.label, ofFamily, details));
        sum += ofFamily.milliseconds;
        taken.merge(names);
    }
    return sum;
}

void printTotals(const ReadCost::Cost& everySensor, double sumOfFamilies, StandardOutput& output) {
    output.line("");
    output.line(fmt::format("every sensor (Settings' count, --sensors, never the tick): {:.2f} ms{}",
                            everySensor.milliseconds, readOnceText(everySensor)));
    output.line(fmt::format("the five families above, summed:                           {:.2f} ms", sumOfFamilies));
}

}  // namespace

void printSensorCosts(std::span<const SensorSample> samples, ReadCost& cost, StandardOutput& output) {
    printCostBySource(samples, cost, output);
    const double sumOfFamilies = printCostByFamily(samples, cost, output);
    printTotals(cost.ofEverySensor(), sumOfFamilies, output);
}

}  // namespace thermopix
