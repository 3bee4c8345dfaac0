#include "platform/macos/application/MacPlatform.h"

#import <Foundation/Foundation.h>
#include <unistd.h>

#include "platform/macos/application/MacLoginItem.h"
#include "platform/macos/application/MacUpdater.h"

namespace thermopix {

MacPlatform::MacPlatform() : standardOutput_(STDOUT_FILENO), standardError_(STDERR_FILENO) {}

std::unique_ptr<LoginItemManaging> MacPlatform::makeLoginItem() {
    return std::make_unique<MacLoginItem>();
}

std::unique_ptr<UpdaterManaging> MacPlatform::makeUpdater() {
    // The application's event loop, which has a pool of its own, is not running yet.
    @autoreleasepool {
        return makeMacUpdater(log_);
    }
}

bool MacPlatform::isInsideUnitTestHost() const {
    return NSClassFromString(@"XCTestCase") != Nil;
}

std::unique_ptr<Platform> makePlatform(const EnvironmentVariables& /*variables*/) {
    return std::make_unique<MacPlatform>();
}

}  // namespace thermopix
