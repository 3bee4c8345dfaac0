#include "platform/macos/system/MacMonotonicClock.h"

#import <Foundation/Foundation.h>

namespace thermopix {

std::chrono::nanoseconds MacMonotonicClock::now() const {
    const std::chrono::duration<double> uptime(NSProcessInfo.processInfo.systemUptime);
    return std::chrono::duration_cast<std::chrono::nanoseconds>(uptime);
}

}  // namespace thermopix
