#include "fakes/TestFiles.h"

namespace thermopix {

std::filesystem::path testFile(std::string_view path) {
    return std::filesystem::path(THERMOPIX_TEST_ROOT) / path;
}

}  // namespace thermopix
