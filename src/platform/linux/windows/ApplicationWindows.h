#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>

#include "platform/linux/windows/WindowClient.h"
#include "shell/Application.h"

namespace thermopix {

/// What the windows of the program have in common: menu bar, taskbar policy, About panel, and the way to the front. A
/// process that is started anew is told all of it. Main thread.
class ApplicationWindows {
public:
    /// `client` outlives the object.
    explicit ApplicationWindows(WindowClient& client);
    ApplicationWindows(const ApplicationWindows&) = delete;
    ApplicationWindows& operator=(const ApplicationWindows&) = delete;

    /// The user chose an action of the menu bar that the windows do not perform themselves.
    std::function<void(MenuAction)> onAction;
    /// The user opened the program again, from its entry in the taskbar.
    std::function<void()> onReopen;

    void setMainMenu(const Menu& menu);
    void setActivationPolicy(ActivationPolicy policy);
    void showAboutPanel(const AboutPanelContent& content) { client_.send(ShowAboutPanel{content}); }

    /// The token of the user's latest wish to see the program; it is used once.
    void useActivationToken(std::string token) { activationToken_ = std::move(token); }
    /// Lets the next window come to the front.
    void activate();

    /// The windows on the screen, as far as the window process has said.
    [[nodiscard]] bool hasVisibleWindows() const { return !visible_.empty(); }
    void orderAllFront();

private:
    void processStarted();
    void handle(const WindowEvent& event);

    WindowClient& client_;
    std::optional<Menu> mainMenu_;
    std::optional<ActivationPolicy> policy_;
    std::string activationToken_;
    std::set<WindowId> visible_;
    Subscription start_;
    Subscription events_;
    Subscription end_;
};

}  // namespace thermopix
