#include "sensing/ReadingOrigin.h"

#include <fmt/format.h>

namespace thermopix {

std::string fallbackNote(const ReadingOrigin& origin) {
    if (origin.stage == 0) {
        return {};
    }
    const auto wanted = origin.source == SensorSource::hottest ? "CPU, GPU or SoC" : title(origin.source);
    return origin.others == 1 ? fmt::format("No {} sensor answers: one other does", wanted)
                              : fmt::format("No {} sensor answers: hottest of {} others", wanted, origin.others);
}

}  // namespace thermopix
