#include "platform/macos/system/MacThermalState.h"

#import <Foundation/Foundation.h>

namespace thermopix {

int MacThermalState::thermalState() {
    return static_cast<int>(NSProcessInfo.processInfo.thermalState);
}

}  // namespace thermopix
