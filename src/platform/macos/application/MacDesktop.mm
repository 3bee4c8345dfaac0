#include "platform/macos/application/MacDesktop.h"

#include <cstdlib>

namespace thermopix {

int MacDesktop::run(ApplicationDelegate& delegate) {
    application_.run(delegate);
    return EXIT_SUCCESS;
}

std::unique_ptr<Desktop> makeDesktop(Platform& platform, Arguments /*arguments*/,
                                     const EnvironmentVariables& /*variables*/) {
    @autoreleasepool {
        return std::make_unique<MacDesktop>(platform.mainLoop());
    }
}

}  // namespace thermopix
