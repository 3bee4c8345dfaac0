#pragma once

#include <functional>
#include <string>
#include <utility>

#include "base/Subscription.h"
#include "platform/linux/bus/BusConnection.h"
#include "platform/linux/glib/GLibMainLoop.h"
#include "platform/linux/windows/ApplicationWindows.h"
#include "shell/Application.h"
#include "system/DiagnosticLog.h"

namespace thermopix {

/// The program on the session bus: one owner of its name per session, spoken to as `org.freedesktop.Application`
/// (XDG desktop entries, "D-Bus Activation"). Without a bus it stands alone. Main thread.
class LinuxApplication final : public Application {
public:
    /// `sessionBus` may be null; all outlive the application.
    LinuxApplication(GDBusConnection* sessionBus, WindowClient& windows, GLibMainLoop& mainLoop, DiagnosticLog& log);
    ~LinuxApplication() override;
    LinuxApplication(const LinuxApplication&) = delete;
    LinuxApplication& operator=(const LinuxApplication&) = delete;

    /// Called when another start of the program, or the desktop, activates this one.
    std::function<void()> onActivate;
    /// Called when the user asks for the About panel in the menu bar.
    std::function<void()> onShowAboutPanel;

    /// The desktop's leave for the next window to come to the front.
    void useActivationToken(std::string token) { windows_.useActivationToken(std::move(token)); }

    /// Windows on the screen, the About panel among them.
    [[nodiscard]] bool hasVisibleWindows() const { return windows_.hasVisibleWindows(); }
    void orderWindowsFront() { windows_.orderAllFront(); }

    /// Takes the bus name if it is free; a run that never asks owns no name.
    [[nodiscard]] bool hasOtherRunningInstance() override;
    void activateOtherRunningInstance() override;
    void terminate() override { mainLoop_.quit(); }
    void activateIgnoringOtherApps() override { windows_.activate(); }
    [[nodiscard]] ActivationPolicy activationPolicy() const override { return policy_; }
    void setActivationPolicy(ActivationPolicy policy) override;
    void setMainMenu(const Menu& menu) override { windows_.setMainMenu(menu); }
    void showAboutPanel(const AboutPanelContent& content) override { windows_.showAboutPanel(content); }

private:
    void exportObject();
    void perform(MenuAction action);

    GDBusConnection* bus_;
    GLibMainLoop& mainLoop_;
    DiagnosticLog& log_;
    guint registration_ = 0;
    Subscription closed_;
    ApplicationWindows windows_;
    ActivationPolicy policy_ = ActivationPolicy::accessory;
};

}  // namespace thermopix
