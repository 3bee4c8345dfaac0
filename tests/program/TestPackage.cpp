// The package of a test, in place of the one that a build is made for.
#include <cstdlib>

#include "platform/linux/updates/LinuxUpdater.h"

namespace thermopix {

std::string packageOfThisBuild() {
    const char* const package = std::getenv("THERMOPIX_TEST_PACKAGE");
    return package == nullptr ? "" : package;
}

}  // namespace thermopix
