#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "base/Subscription.h"
#include "platform/linux/bus/BusConnection.h"
#include "platform/linux/glib/GLibMainLoop.h"
#include "platform/linux/windows/ApplicationWindows.h"
#include "shell/Application.h"
#include "system/DiagnosticLog.h"

namespace thermopix {

/// An instance without a display gives its name, and its place, to one that has a display.
enum class InstanceKind { withDisplay, withoutDisplay };

/// The program on the session bus: one owner of its name per session, spoken to as `org.freedesktop.Application`
/// (XDG desktop entries, "D-Bus Activation"). Without a bus it stands alone. Main thread.
class LinuxApplication final : public Application {
public:
    struct Services {
        WindowClient& windows;
        GLibMainLoop& mainLoop;
        DiagnosticLog& log;
    };

    /// `sessionBus` may be null; all outlive the application.
    LinuxApplication(GDBusConnection* sessionBus, Services services, InstanceKind kind);
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

    /// What the process is to end with.
    [[nodiscard]] int exitStatus() const { return exitStatus_; }

    /// Takes the bus name if it is free, or held by an instance that gives way; a run that never asks owns no name.
    /// False when a stranger or a process that is gone holds it.
    [[nodiscard]] bool hasOtherRunningInstance() override;
    /// One that does not answer makes this one a failure.
    [[nodiscard]] bool activateOtherRunningInstance() override;
    void terminate() override { mainLoop_.quit(); }
    void activateIgnoringOtherApps() override { windows_.activate(); }
    [[nodiscard]] ActivationPolicy activationPolicy() const override { return policy_; }
    void setActivationPolicy(ActivationPolicy policy) override;
    void setMainMenu(const Menu& menu) override { windows_.setMainMenu(menu); }
    void showAboutPanel(const AboutPanelContent& content) override { windows_.showAboutPanel(content); }

private:
    void exportObject();
    /// False when somebody else holds the name.
    [[nodiscard]] bool requestName();
    [[nodiscard]] bool isHeldByStranger() const;
    [[nodiscard]] std::optional<std::uint32_t> processOf(const char* name) const;
    void perform(MenuAction action);

    GDBusConnection* bus_;
    GLibMainLoop& mainLoop_;
    DiagnosticLog& log_;
    InstanceKind kind_;
    int exitStatus_ = EXIT_SUCCESS;
    guint registration_ = 0;
    Subscription closed_;
    Subscription nameLost_;
    ApplicationWindows windows_;
    ActivationPolicy policy_ = ActivationPolicy::accessory;
};

/// Whether the process runs another program than the file `program`, or is gone; false where nothing tells.
[[nodiscard]] bool isStranger(std::uint32_t process, const std::filesystem::path& program,
                              const std::filesystem::path& processRoot = "/proc");

}  // namespace thermopix
