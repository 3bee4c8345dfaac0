#include "platform/linux/updates/LinuxUpdater.h"

namespace thermopix {

std::string packageOfThisBuild() {
    return THERMOPIX_PACKAGE_NAME;
}

}  // namespace thermopix
