#include "diagnostics/SensorSections.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

#include "base/FunctionView.h"
#include "base/Unicode.h"

namespace thermopix {

namespace {

constexpr std::size_t nameColumns = 28;

std::vector<SensorSample> hottestFirst(std::span<const SensorSample> samples,
                                       FunctionView<bool(const SensorSample&)> belongs) {
    std::vector<SensorSample> chosen;
    std::copy_if(samples.begin(), samples.end(), std::back_inserter(chosen), belongs);
    std::stable_sort(chosen.begin(), chosen.end(), [](const auto& a, const auto& b) { return a.celsius > b.celsius; });
    return chosen;
}

void printSensorLines(std::span<const SensorSample> samples, StandardOutput& output) {
    for (const auto& sample : samples) {
        output.line(fmt::format("      {}{:6.2f}", paddedRight(sample.name, nameColumns), sample.celsius));
    }
}

std::string stageSuffix(SensorSource source, const AnsweringStage& stage) {
    if (stage.index == 0) {
        return "";
    }
    return fmt::format("  via fallback stage {} of {}", stage.index + 1, samplingStages(source).size());
}

void printLeftOverList(std::string_view label, std::span<const SensorSample> samples, StandardOutput& output) {
    if (samples.empty()) {
        return;
    }
    output.line("");
    output.line(fmt::format("--- {} ({})", label, samples.size()));
    printSensorLines(samples, output);
}

bool belongsToAnySource(const SensorSample& sample) {
    const auto sources = allCases<SensorSource>();
    return std::any_of(sources.begin(), sources.end(),
                       [&](auto source) { return matchesAnyStage(sample, samplingStages(source)); });
}

}  // namespace

std::optional<AnsweringStage> answeringStage(SensorSource source, std::span<const SensorSample> samples) {
    const auto stages = samplingStages(source);
    for (std::size_t index = 0; index < stages.size(); ++index) {
        const auto patterns = stages[index];
        if (std::any_of(samples.begin(), samples.end(),
                        [&](const auto& sample) { return matches(sample.name, patterns); })) {
            return AnsweringStage{index, patterns};
        }
    }
    return std::nullopt;
}

std::span<const NamePatterns> stagesRead(SensorSource source, std::span<const SensorSample> samples) {
    const auto stages = samplingStages(source);
    const auto answering = answeringStage(source, samples);
    return answering ? stages.first(answering->index + 1) : stages;
}

bool matchesAnyStage(const SensorSample& sample, std::span<const NamePatterns> stages) {
    return std::any_of(stages.begin(), stages.end(),
                       [&](const auto& patterns) { return matches(sample.name, patterns); });
}

std::string sensorCountText(std::size_t count) {
    return fmt::format("{} sensor{}", count, count == 1 ? "" : "s");
}

std::set<std::string> printSourceSections(std::span<const SensorSample> samples, StandardOutput& output) {
    std::set<std::string> shown;
    for (const auto source : allCases<SensorSource>()) {
        output.line("");
        const auto stage = answeringStage(source, samples);
        if (!stage) {
            output.line(fmt::format("--- {}  no match", title(source)));
            continue;
        }
        const auto read =
            hottestFirst(samples, [&](const auto& sample) { return matches(sample.name, stage->patterns); });
        output.line(fmt::format("--- {}  {:.1f} °C  ({}){}", title(source), read.front().celsius,
                                sensorCountText(read.size()), stageSuffix(source, *stage)));
        printSensorLines(read, output);
        for (const auto& sample : read) {
            shown.insert(sample.name);
        }
    }
    return shown;
}

void printLeftOverSensors(std::span<const SensorSample> samples, const std::set<std::string>& shown,
                          StandardOutput& output) {
    const auto unreached = hottestFirst(
        samples, [&](const auto& sample) { return !shown.contains(sample.name) && belongsToAnySource(sample); });
    const auto unmatched = hottestFirst(samples, [](const auto& sample) { return !belongsToAnySource(sample); });
    printLeftOverList("matched only by a stage this Mac never reaches", unreached, output);
    printLeftOverList("matched by no source", unmatched, output);
}

}  // namespace thermopix
