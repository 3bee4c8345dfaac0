#include "platform/macos/application/MacPlatform.h"

#import <Foundation/Foundation.h>
#include <unistd.h>

namespace thermopix {

MacPlatform::MacPlatform() : standardOutput_(STDOUT_FILENO), standardError_(STDERR_FILENO) {}

bool MacPlatform::isInsideUnitTestHost() const {
    return NSClassFromString(@"XCTestCase") != Nil;
}

std::unique_ptr<Platform> makePlatform(const EnvironmentVariables& /*variables*/) {
    return std::make_unique<MacPlatform>();
}

}  // namespace thermopix
