#include "sensing/AnsweringStage.h"

#include <fmt/format.h>

namespace thermopix {

std::string fallbackNote(const AnsweringStage& answering) {
    if (answering.stage == 0) {
        return {};
    }
    const auto wanted = answering.source == SensorSource::hottest ? "CPU, GPU or SoC" : title(answering.source);
    return answering.others == 1 ? fmt::format("No {} sensor answers: one other does", wanted)
                                 : fmt::format("No {} sensor answers: hottest of {} others", wanted, answering.others);
}

}  // namespace thermopix
