#pragma once

#include <functional>
#include <vector>

#include "base/Subscription.h"
#include "menubar/Application.h"
#include "platform/DiagnosticLog.h"
#include "platform/linux/bus/BusConnection.h"
#include "platform/linux/glib/GLibMainLoop.h"

namespace thermopix {

/// The program on the session bus: one owner of its name per session, spoken to as `org.freedesktop.Application`
/// (Desktop Entry Specification, "D-Bus Activation"). Without a bus it stands alone. Main thread.
class LinuxApplication final : public Application {
public:
    /// `sessionBus` may be null; all outlive the application.
    LinuxApplication(GDBusConnection* sessionBus, GLibMainLoop& mainLoop, DiagnosticLog& log);
    ~LinuxApplication() override;
    LinuxApplication(const LinuxApplication&) = delete;
    LinuxApplication& operator=(const LinuxApplication&) = delete;

    /// Called when another start of the program, or the desktop, activates this one.
    std::function<void()> onActivate;

    /// Takes the bus name if it is free; a run that never asks owns no name.
    [[nodiscard]] bool hasOtherRunningInstance() override;
    void activateOtherRunningInstance() override;
    void terminate() override;
    void activateIgnoringOtherApps() override;
    [[nodiscard]] ActivationPolicy activationPolicy() const override { return policy_; }
    void setActivationPolicy(ActivationPolicy policy) override { policy_ = policy; }
    void setMainMenu(const Menu& menu) override { mainMenu_ = menu; }
    void showAboutPanel(const AboutPanelContent& content) override;

private:
    void exportObject();

    GDBusConnection* bus_;
    GLibMainLoop& mainLoop_;
    DiagnosticLog& log_;
    guint registration_ = 0;
    Subscription closed_;
    Menu mainMenu_;
    ActivationPolicy policy_ = ActivationPolicy::accessory;
};

}  // namespace thermopix
