#include "platform/posix/StandardOutputStream.h"

#include <string>
#include <utility>

namespace thermopix {

StandardOutputStream::StandardOutputStream(int descriptor, WriteFunction write)
    : descriptor_(descriptor), write_(std::move(write)) {}

void StandardOutputStream::line(std::string_view text) {
    static_cast<void>(writeAll(descriptor_, std::string(text) + '\n', write_));
}

}  // namespace thermopix
