#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "base/Subscription.h"
#include "environment/AppEnvironment.h"
#include "menubar/StatusItemController.h"
#include "settings/PreferencesWindowController.h"
#include "shell/Application.h"
#include "shell/Desktop.h"

namespace thermopix {

/// Brings the program up in a fixed order, keeps the updater and the Dock presence in step with the settings, and
/// opens Settings on request. One per process, main thread.
class AppDelegate final : public ApplicationDelegate {
public:
    /// Builds the environment. `platform` and `desktop` outlive the delegate.
    AppDelegate(Arguments arguments, const EnvironmentVariables& variables, Platform& platform, Desktop& desktop);
    ~AppDelegate() override;

    void applicationDidFinishLaunching() override;
    bool applicationShouldHandleReopen(bool hasVisibleWindows) override;

    void showAboutPanel() override;

    void showPreferences();

    [[nodiscard]] AppEnvironment& environment() { return environment_; }

private:
    [[nodiscard]] bool endsForOtherInstance();
    void installMainMenu();
    void observePreferences();
    void applyActivationPolicy();
    void applyActivationPolicyLater();

    Platform& platform_;
    Desktop& desktop_;
    AppEnvironment environment_;
    bool isRunningUnitTests_;
    std::unique_ptr<StatusItemController> statusController_;
    std::unique_ptr<PreferencesWindowController> preferencesController_;
    std::vector<Subscription> cancellables_;
    Subscription policyChange_;
};

}  // namespace thermopix
