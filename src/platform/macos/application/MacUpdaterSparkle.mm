#import <Sparkle/Sparkle.h>

#include "platform/macos/application/MacUpdater.h"

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

std::unique_ptr<UpdaterManaging> makeMacUpdater(DiagnosticLog&) {
    return std::make_unique<SparkleUpdater>();
}

}  // namespace thermopix
