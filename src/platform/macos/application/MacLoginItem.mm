#include "platform/macos/application/MacLoginItem.h"

#import <Foundation/Foundation.h>
#import <ServiceManagement/ServiceManagement.h>

#include "platform/macos/system/Text.h"

namespace thermopix {

bool MacLoginItem::isEnabled() const {
    return SMAppService.mainAppService.status == SMAppServiceStatusEnabled;
}

std::optional<ServiceError> MacLoginItem::setEnabled(bool enabled) {
    SMAppService* service = SMAppService.mainAppService;
    NSError* error = nil;
    const bool isDone = enabled ? static_cast<bool>([service registerAndReturnError:&error])
                                : static_cast<bool>([service unregisterAndReturnError:&error]);
    return isDone ? std::nullopt : std::optional(ServiceError{utf8(error.localizedDescription)});
}

}  // namespace thermopix
