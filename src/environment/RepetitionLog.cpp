#include "environment/RepetitionLog.h"

#include <fmt/core.h>

#include <utility>

namespace thermopix {

void RepetitionLog::diag(std::string_view category, std::string_view message) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (category == category_ && message == message_) {
        ++repetitions_;
        return;
    }
    sayCount();
    category_ = category;
    message_ = message;
    log_.diag(category, message);
}

void RepetitionLog::sayCount() {
    if (const auto count = std::exchange(repetitions_, 0); count > 0) {
        log_.diag(category_, fmt::format("{} (repeated: {})", message_, count));
    }
}

}  // namespace thermopix
