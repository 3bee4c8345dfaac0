#include "messages/LineReader.h"

namespace thermopix {

void LineReader::append(std::string_view bytes) {
    if (hasFailed_) {
        return;
    }
    // Taken lines are dropped all at once, when there is nothing or much to move.
    if (start_ == bytes_.size() || start_ > maximumBytes_) {
        bytes_.erase(0, start_);
        searched_ -= start_;
        start_ = 0;
    }
    bytes_ += bytes;
}

std::optional<std::string> LineReader::takeLine() {
    if (hasFailed_) {
        return std::nullopt;
    }
    const std::size_t end = bytes_.find('\n', searched_);
    searched_ = end == std::string::npos ? bytes_.size() : end;
    if (searched_ - start_ > maximumBytes_) {
        hasFailed_ = true;
        bytes_ = {};
        return std::nullopt;
    }
    if (end == std::string::npos) {
        return std::nullopt;
    }
    std::string line = bytes_.substr(start_, end - start_);
    start_ = searched_ = end + 1;
    return line;
}

}  // namespace thermopix
