#import <Sparkle/Sparkle.h>

#include "platform/macos/application/MacPlatform.h"

namespace thermopix {

namespace {

/// The framework's standard controller with its own user interface, started at once.
class SparkleUpdater final : public UpdaterManaging {
public:
    [[nodiscard]] bool automaticallyChecksForUpdates() const override {
        return static_cast<bool>(controller_.updater.automaticallyChecksForUpdates);
    }

    void setAutomaticallyChecksForUpdates(bool checks) override {
        controller_.updater.automaticallyChecksForUpdates = checks ? YES : NO;
    }

    void checkForUpdates() override { [controller_ checkForUpdates:nil]; }

private:
    SPUStandardUpdaterController* controller_ = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                                              updaterDelegate:nil
                                                                                           userDriverDelegate:nil];
};

}  // namespace

std::unique_ptr<UpdaterManaging> MacPlatform::makeUpdater() {
    // The application's event loop, which has a pool of its own, is not running yet.
    @autoreleasepool {
        return std::make_unique<SparkleUpdater>();
    }
}

}  // namespace thermopix
