#pragma once

#include <cstddef>
#include <string>

#include "sensing/SensorSource.h"

namespace thermopix {

/// What a reading comes from: the stage of the source's widening that answered.
struct ReadingOrigin {
    SensorSource source = SensorSource::cpu;
    /// Zero while the source's own sensors answer.
    std::size_t stage = 0;
    /// How many sensors answered in place of the source's own.
    std::size_t others = 0;

    friend bool operator==(const ReadingOrigin&, const ReadingOrigin&) = default;
};

/// Says that other sensors than the source's own answer; empty while its own do.
[[nodiscard]] std::string fallbackNote(const ReadingOrigin& origin);

}  // namespace thermopix
