#include "platform/posix/StandardOutputStream.h"

#include <string>
#include <utility>

namespace thermopix {

StandardOutputStream::StandardOutputStream(int descriptor, WriteFunction write)
    : descriptor_(descriptor), write_(std::move(write)) {}

void StandardOutputStream::line(std::string_view text) {
    if (writeAll(descriptor_, std::string(text) + '\n', write_)) {
        hasFailed_ = true;
    }
}

}  // namespace thermopix
