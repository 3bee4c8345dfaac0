#pragma once

#include <memory>

#include "platform/macos/menubar/MacMenu.h"
#include "shell/Application.h"

@class ThermopixApplicationDelegate;

namespace thermopix {

/// The shared application object. Main thread.
class MacApplication final : public Application {
public:
    MacApplication();

    /// Serves events until the program ends; the process ends with it.
    void run(ApplicationDelegate& delegate);

    [[nodiscard]] bool hasOtherRunningInstance() override;
    [[nodiscard]] bool activateOtherRunningInstance() override;
    void terminate() override;
    void activateIgnoringOtherApps() override;
    [[nodiscard]] ActivationPolicy activationPolicy() const override;
    void setActivationPolicy(ActivationPolicy policy) override;
    void setMainMenu(const Menu& menu) override;
    void showAboutPanel(const AboutPanelContent& content) override;

private:
    void perform(const MenuItem& item);

    ApplicationDelegate* delegate_ = nullptr;
    /// The application holds its delegate weakly, so it is held here.
    ThermopixApplicationDelegate* forwarder_ = nil;
    std::unique_ptr<MacMenu> mainMenu_;
};

}  // namespace thermopix
