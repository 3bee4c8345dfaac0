#include "platform/linux/sensors/SensorNames.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "base/Enumeration.h"
#include "base/Unicode.h"
#include "sensing/SensorSource.h"

namespace thermopix {

namespace {

constexpr std::size_t longestName = 64;
constexpr std::string_view processorLabel = "cpu";

enum class ChipInName { always, withoutLabel };

struct FamilyRow {
    SensorFamily family;
    /// What makes the name match its source.
    std::string_view prefix;
    /// Where the label says it all, the chip's name is left out.
    ChipInName chip;
    std::optional<SensorSource> source;
};

constexpr std::array families{
    FamilyRow{SensorFamily::processor, "CPU", ChipInName::withoutLabel, SensorSource::cpu},
    FamilyRow{SensorFamily::graphics, "GPU MTR Temp", ChipInName::withoutLabel, SensorSource::gpu},
    FamilyRow{SensorFamily::chipset, "SOC MTR Temp", ChipInName::always, SensorSource::soc},
    FamilyRow{SensorFamily::battery, "Battery", ChipInName::always, SensorSource::battery},
    FamilyRow{SensorFamily::solidStateDrive, "SSD", ChipInName::always, SensorSource::storage},
    FamilyRow{SensorFamily::rotatingDrive, "HDD TH0P", ChipInName::always, SensorSource::storage},
    FamilyRow{SensorFamily::other, "", ChipInName::always, std::nullopt},
};
static_assert(families.size() == static_cast<std::size_t>(SensorFamily::other) + 1 &&
              families.back().family == SensorFamily::other);

static_assert(hasRowPerCase<SensorFamily::other>(families, &FamilyRow::family));

const FamilyRow& rowOf(SensorFamily family) {
    return families[static_cast<std::size_t>(family)];
}

/// Of a word of ASCII.
std::size_t findIgnoringCase(std::string_view text, std::string_view word) {
    const auto isSame = [](char a, char b) { return lowercasedAscii(a) == lowercasedAscii(b); };
    const auto* const found = std::search(text.begin(), text.end(), word.begin(), word.end(), isSame);
    return found == text.end() ? std::string_view::npos : static_cast<std::size_t>(found - text.begin());
}

/// Controls, line and paragraph separators, and what turns or hides text.
bool isUnprintable(std::string_view character) {
    const auto first = static_cast<unsigned char>(character.front());
    if (first < 0x20 || first == 0x7F) {
        return true;
    }
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 5> ranges{{
        {"\u0080", "\u009F"},
        {"\u200B", "\u200F"},
        {"\u2028", "\u202F"},
        {"\u2060", "\u206F"},
        {"\uFEFF", "\uFEFF"},
    }};
    return std::any_of(ranges.begin(), ranges.end(), [&](const auto& range) {
        return character.size() == range.first.size() && character >= range.first && character <= range.second;
    });
}

/// The kernel's bytes as text on one line.
std::string printable(std::string_view bytes) {
    const auto text = repairedUtf8(bytes);
    std::string clean;
    for (const auto character : characters(text)) {
        if (!isUnprintable(character) && character != " ") {
            clean += character;
        } else if (!clean.empty() && !clean.ends_with(' ')) {
            clean += ' ';
        }
    }
    while (clean.ends_with(' ')) {
        clean.pop_back();
    }
    return clean;
}

/// Puts a hyphen into every word by which a source other than `own` would take the sensor for one of its own.
void breakUp(std::string& text, std::optional<SensorSource> own) {
    const bool isSilicon = own == SensorSource::cpu || own == SensorSource::gpu || own == SensorSource::soc;
    for (const auto source : allCases<SensorSource>()) {
        if (source == own || (source == SensorSource::hottest && isSilicon)) {
            continue;
        }
        for (const auto pattern : namePatterns(source)) {
            for (auto found = findIgnoringCase(text, pattern); found != std::string::npos;
                 found = findIgnoringCase(text, pattern)) {
                text.insert(found + 1, 1, '-');
            }
        }
    }
}

std::string shortened(std::string_view text, std::size_t length) {
    std::string kept;
    for (const auto character : characters(text)) {
        if (length-- == 0) {
            break;
        }
        kept += character;
    }
    return kept;
}

std::string composed(const SensorDevice& device, const SensorDevice::Channel& channel, SensorFamily family,
                     std::size_t ordinal) {
    const auto& row = rowOf(family);
    auto label = printable(channel.label);
    std::string rest;
    if (label.empty() || row.chip == ChipInName::always || family != device.family) {
        rest = printable(device.chip);
        if (rest.empty()) {
            rest = "unnamed";
        }
    }
    if (ordinal > 1) {
        rest += fmt::format("{}{}", rest.empty() ? "" : " ", ordinal);
    }
    if (label.empty() && device.channels.size() > 1) {
        label = fmt::format("temp{}", channel.index);
    }
    if (!label.empty()) {
        rest += (rest.empty() ? "" : " ") + label;
    }
    breakUp(rest, row.source);
    return row.prefix.empty() ? rest : fmt::format("{} {}", row.prefix, rest);
}

/// The name, cut to length and different from all names given out before.
std::string distinct(const std::string& name, std::set<std::string>& taken) {
    auto candidate = shortened(name, longestName);
    for (int copy = 2; !taken.insert(candidate).second; ++copy) {
        const auto suffix = fmt::format(" #{}", copy);
        candidate = shortened(name, longestName - suffix.size()) + suffix;
    }
    return candidate;
}

}  // namespace

std::vector<NamedChannel> nameChannels(const std::vector<SensorDevice>& devices) {
    const bool hasProcessor = std::any_of(devices.begin(), devices.end(), [](const SensorDevice& device) {
        return device.family == SensorFamily::processor;
    });
    // Board chips mislabel: what they call the processor counts only where nothing measures the processor itself.
    const auto familyOf = [&](const SensorDevice& device, const SensorDevice::Channel& channel) {
        const bool standsIn = !hasProcessor && device.family == SensorFamily::other &&
                              findIgnoringCase(channel.label, processorLabel) != std::string_view::npos;
        return standsIn ? SensorFamily::processor : device.family;
    };

    std::vector<std::pair<SensorFamily, NamedChannel>> named;
    std::map<std::pair<SensorFamily, std::string>, std::size_t> ordinals;
    for (std::size_t i = 0; i < devices.size(); ++i) {
        const auto& device = devices[i];
        const auto ordinal = ++ordinals[{device.family, device.chip}];
        for (std::size_t j = 0; j < device.channels.size(); ++j) {
            const auto family = familyOf(device, device.channels[j]);
            named.push_back({family, {composed(device, device.channels[j], family, ordinal), i, j}});
        }
    }
    std::stable_sort(named.begin(), named.end(), [](const auto& a, const auto& b) { return a.first < b.first; });

    std::vector<NamedChannel> channels;
    std::set<std::string> taken;
    for (auto& [family, channel] : named) {
        channel.name = distinct(channel.name, taken);
        channels.push_back(std::move(channel));
    }
    return channels;
}

}  // namespace thermopix
