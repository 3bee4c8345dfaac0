#include "sensing/SensorSource.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
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

/// Which letters occur in a text, whatever their case, hashed into 32 bits. A text in ASCII that contains another has
/// all of the other's letters.
using LetterSet = std::uint32_t;

struct Letters {
    LetterSet present = 0;
    bool areAscii = true;
};

constexpr Letters lettersOf(std::string_view text) {
    Letters letters;
    unsigned seen = 0;
    for (const char letter : text) {
        const unsigned byte = static_cast<unsigned char>(letter);
        letters.present |= LetterSet{1} << (byte % 32);
        seen |= byte;
    }
    letters.areAscii = seen < 0x80;
    return letters;
}

/// The letters of each row of the pattern table; they rule out most patterns without a search.
constexpr auto patternLetters = [] {
    std::array<LetterSet, patternTable.size()> sets{};
    for (std::size_t i = 0; i < sets.size(); ++i) {
        sets[i] = lettersOf(patternTable[i]).present;
    }
    return sets;
}();

/// The letters of a list of patterns, in its order; null for a list that is not from the pattern table.
const LetterSet* lettersOfKnown(NamePatterns patterns) {
    const std::less<> before;
    const auto* const begin = patternTable.data();
    const bool isFromTable = !before(patterns.data(), begin) && before(patterns.data(), begin + patternTable.size());
    return isFromTable ? patternLetters.data() + (patterns.data() - begin) : nullptr;
}

constexpr auto asciiLowercase = [] {
    std::array<char, 256> lowercase{};
    for (std::size_t byte = 0; byte < lowercase.size(); ++byte) {
        const bool isCapital = byte >= 'A' && byte <= 'Z';
        lowercase[byte] = static_cast<char>(isCapital ? byte - 'A' + 'a' : byte);
    }
    return lowercase;
}();

constexpr char asciiLowercased(char letter) {
    return asciiLowercase[static_cast<unsigned char>(letter)];
}

bool containsAscii(std::string_view name, std::string_view pattern) {
    const auto isSameLetter = [](char a, char b) { return asciiLowercased(a) == asciiLowercased(b); };
    return pattern.empty() ||
           std::search(name.begin(), name.end(), pattern.begin(), pattern.end(), isSameLetter) != name.end();
}

bool containsUnicode(std::string_view name, std::string_view pattern) {
    return lowercased(name).find(lowercased(pattern)) != std::string::npos;
}

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
    const Letters letters = lettersOf(name);
    if (const LetterSet* const required = lettersOfKnown(patterns); required != nullptr && letters.areAscii) {
        for (std::size_t i = 0; i < patterns.size(); ++i) {
            const bool isRuledOut = (required[i] & ~letters.present) != 0;
            if (!isRuledOut && containsAscii(name, patterns[i])) {
                return true;
            }
        }
        return false;
    }
    const std::string lowercase = letters.areAscii ? std::string() : lowercased(name);
    const std::string_view text = letters.areAscii ? name : lowercase;
    return std::any_of(patterns.begin(), patterns.end(), [&](std::string_view pattern) {
        return lettersOf(pattern).areAscii ? containsAscii(text, pattern) : containsUnicode(name, pattern);
    });
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
