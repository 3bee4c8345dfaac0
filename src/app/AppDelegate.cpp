#include "app/AppDelegate.h"

#include <string>

#include "environment/AppInfo.h"
#include "menubar/AboutPanel.h"
#include "menubar/MainMenu.h"

namespace thermopix {

AppDelegate::AppDelegate(Arguments arguments, const EnvironmentVariables& variables, Platform& platform,
                         Desktop& desktop)
    : platform_(platform),
      desktop_(desktop),
      environment_(arguments, variables, platform),
      isRunningUnitTests_(AppEnvironment::isRunningUnitTests(variables, platform)) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    if (isRunningUnitTests_ || endsForOtherInstance()) {
        return;
    }
    installMainMenu();
    statusController_ =
        std::make_unique<StatusItemController>(environment_, desktop_.statusBar(),
                                               StatusMenuController::Actions{
                                                   .openPreferences = [this] { showPreferences(); },
                                                   .showAbout = [this] { showAboutPanel(); },
                                                   .terminate = [this] { desktop_.application().terminate(); },
                                               });
    environment_.refreshLoginItemState();
    observePreferences();
    applyActivationPolicy();
    if (environment_.shouldShowPreferencesOnLaunch() || environment_.preferences().showPreferencesOnLaunch) {
        showPreferences();
    }
}

bool AppDelegate::applicationShouldHandleReopen(bool hasVisibleWindows) {
    if (!hasVisibleWindows) {
        showPreferences();
    }
    return true;
}

void AppDelegate::showPreferences() {
    if (!preferencesController_) {
        preferencesController_ = std::make_unique<PreferencesWindowController>(
            environment_, desktop_.windows(), [this] { desktop_.application().terminate(); });
        cancellables_.push_back(preferencesController_->window().onWillClose([this] { applyActivationPolicyLater(); }));
    }
    preferencesController_->window().show();
    applyActivationPolicy();
    desktop_.application().activateIgnoringOtherApps();
    preferencesController_->window().makeKeyAndOrderFront();
}

void AppDelegate::showAboutPanel() {
    desktop_.application().activateIgnoringOtherApps();
    desktop_.application().showAboutPanel(aboutPanelContent(platform_.systemInformation()));
}

bool AppDelegate::endsForOtherInstance() {
    auto& application = desktop_.application();
    if (environment_.isUITest() || !application.hasOtherRunningInstance() ||
        !application.activateOtherRunningInstance()) {
        return false;
    }
    application.terminate();
    return true;
}

void AppDelegate::installMainMenu() {
    Menu menu;
    menu.items = {MainMenu::appMenuItem(AppInfo::name), MainMenu::editMenuItem(), MainMenu::windowMenuItem()};
    desktop_.application().setMainMenu(menu);
}

void AppDelegate::observePreferences() {
    cancellables_.push_back(environment_.store().subscribeDistinct(
        [](const Preferences& preferences) { return preferences.checkForUpdatesAutomatically; },
        [this](bool checks) { environment_.updater().setAutomaticallyChecksForUpdates(checks); }));
    cancellables_.push_back(
        environment_.store().subscribeDistinct([](const Preferences& preferences) { return preferences.showInDock; },
                                               [this](bool) { applyActivationPolicyLater(); }));
}

void AppDelegate::applyActivationPolicy() {
    const bool isSettingsShown = preferencesController_ && preferencesController_->isShown();
    const auto wanted = environment_.preferences().showInDock || isSettingsShown ? ActivationPolicy::regular
                                                                                 : ActivationPolicy::accessory;
    auto& application = desktop_.application();
    if (application.activationPolicy() != wanted) {
        application.setActivationPolicy(wanted);
    }
}

void AppDelegate::applyActivationPolicyLater() {
    policyChange_ = platform_.mainLoop().post([this] { applyActivationPolicy(); });
}

}  // namespace thermopix
