#import <Foundation/Foundation.h>
#import <ServiceManagement/ServiceManagement.h>

#include "platform/macos/application/MacPlatform.h"
#include "platform/macos/system/Text.h"

namespace thermopix {

namespace {

/// The main application as a service of the system's login items; nothing is cached.
class MacLoginItem final : public LoginItemManaging {
public:
    [[nodiscard]] bool isEnabled() const override {
        return SMAppService.mainAppService.status == SMAppServiceStatusEnabled;
    }

    [[nodiscard]] std::optional<ServiceError> setEnabled(bool enabled) override {
        SMAppService* service = SMAppService.mainAppService;
        NSError* error = nil;
        const bool isDone = enabled ? static_cast<bool>([service registerAndReturnError:&error])
                                    : static_cast<bool>([service unregisterAndReturnError:&error]);
        return isDone ? std::nullopt : std::optional(ServiceError{utf8(error.localizedDescription)});
    }
};

}  // namespace

std::unique_ptr<LoginItemManaging> MacPlatform::makeLoginItem() {
    return std::make_unique<MacLoginItem>();
}

}  // namespace thermopix
