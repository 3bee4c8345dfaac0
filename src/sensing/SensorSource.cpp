#include "sensing/SensorSource.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "base/Unicode.h"

namespace thermopix {

namespace {

// Every list of patterns is a stretch of this table: the silicon of the machine, then every die, then the rest.
constexpr std::array<std::string_view, 21> patternTable{
    "pACC MTR Temp",
    "eACC MTR Temp",
    "CPU",
    "TC0P",
    "TCXC",
    "TCAD",  // cpu
    "GPU MTR Temp",
    "TG0P",
    "TGDD",  // gpu
    "SOC MTR Temp",
    "PMGR SOC Die",  // soc
    "MTR Temp",
    "tdie",  // any die
    "gas gauge battery",
    "battery",
    "TB0T",
    "TB1T",
    "TB2T",  // battery
    "NAND",
    "TH0P",
    "SSD",  // storage
};

constexpr NamePatterns patternsAt(std::size_t first, std::size_t count) {
    return NamePatterns(patternTable).subspan(first, count);
}

constexpr NamePatterns cpuPatterns = patternsAt(0, 6);
constexpr NamePatterns gpuPatterns = patternsAt(6, 3);
constexpr NamePatterns socPatterns = patternsAt(9, 2);
constexpr NamePatterns siliconPatterns = patternsAt(0, 11);
constexpr NamePatterns diePatterns = patternsAt(0, 13);
constexpr NamePatterns batteryPatterns = patternsAt(13, 5);
constexpr NamePatterns storagePatterns = patternsAt(18, 3);

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

constexpr std::array displayOrder{
    SensorSource::cpu,     SensorSource::gpu,     SensorSource::soc,
    SensorSource::hottest, SensorSource::battery, SensorSource::storage,
};
static_assert(displayOrder.size() == caseCount<SensorSource>);

constexpr bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

constexpr char asciiLowercased(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

/// A name in lower case; the usual name, short and ASCII, costs no allocation.
class LowercaseName {
public:
    explicit LowercaseName(std::string_view name) {
        if (name.size() > short_.size() || !std::all_of(name.begin(), name.end(), isAscii)) {
            long_ = lowercased(name);
            text_ = long_;
            return;
        }
        std::transform(name.begin(), name.end(), short_.begin(), asciiLowercased);
        text_ = std::string_view(short_.data(), name.size());
    }
    LowercaseName(const LowercaseName&) = delete;
    LowercaseName& operator=(const LowercaseName&) = delete;

    [[nodiscard]] bool contains(std::string_view pattern) const {
        if (!std::all_of(pattern.begin(), pattern.end(), isAscii)) {
            return text_.find(lowercased(pattern)) != std::string_view::npos;
        }
        const auto sameLetter = [](char own, char theirs) { return own == asciiLowercased(theirs); };
        return pattern.empty() ||
               std::search(text_.begin(), text_.end(), pattern.begin(), pattern.end(), sameLetter) != text_.end();
    }

private:
    std::array<char, 64> short_;
    std::string long_;
    std::string_view text_;
};

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
    const LowercaseName lowercase(name);
    return std::any_of(patterns.begin(), patterns.end(),
                       [&](std::string_view pattern) { return lowercase.contains(pattern); });
}

bool matches(SensorSource source, std::string_view name) {
    return matches(name, namePatterns(source));
}

std::optional<double> reduce(std::span<const SensorSample> samples, NamePatterns patterns) {
    std::optional<double> hottest;
    for (const auto& sample : samples) {
        if (matches(sample.name, patterns) && (!hottest || sample.celsius > *hottest)) {
            hottest = sample.celsius;
        }
    }
    return hottest;
}

std::optional<double> reduce(SensorSource source, std::span<const SensorSample> samples) {
    return reduce(samples, namePatterns(source));
}

}  // namespace thermopix
