#include "base/Fatal.h"

#include <cstdio>
#include <cstdlib>

namespace thermopix {

void fatalError(std::string_view message) {
    std::fprintf(stderr, "Fatal error: %.*s\n", static_cast<int>(message.size()), message.data());
    std::fflush(stderr);
    std::abort();
}

}  // namespace thermopix
