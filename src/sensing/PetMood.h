#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "base/Enumeration.h"
#include "sensing/ThermalPressure.h"

namespace thermopix {

/// How the pet feels, from cold to hot.
enum class PetMood { chilly, content, warm, scorching };

template <>
struct EnumerationTable<PetMood> {
    struct Row {
        PetMood value;
        std::string_view rawValue;
        std::string_view title;
        /// The title inside a sentence.
        std::string_view lowercaseTitle;
        std::string_view caption;
    };
    static constexpr std::array rows{
        Row{PetMood::chilly, "chilly", "Cold", "cold", "Barely awake."},
        Row{PetMood::content, "content", "Comfy", "comfy", "Perfectly comfortable."},
        Row{PetMood::warm, "warm", "Toasty", "toasty", "Getting a bit toasty."},
        Row{PetMood::scorching, "scorching", "Burning", "burning", "Everything is fine. Everything is FINE."},
    };
};
static_assert(isCompleteTable<PetMood::scorching>());

struct MoodThreshold {
    PetMood mood;
    /// Degrees Celsius, exclusive.
    double upperBound;
};

/// The moods below `scorching` with their upper bounds, coolest first.
[[nodiscard]] std::span<const MoodThreshold> moodThresholds();

/// The mood at a temperature. Rises at once; falls only 3 degrees below the bound of the mood last shown; an
/// elevated pressure is `scorching` whatever the temperature.
[[nodiscard]] PetMood mood(double celsius, ThermalPressure pressure, std::optional<PetMood> previous);

}  // namespace thermopix
