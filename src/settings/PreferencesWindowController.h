#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/Subscription.h"
#include "environment/AppEnvironment.h"
#include "settings/PreferencesView.h"
#include "shell/Window.h"

namespace thermopix {

/// Owns the Settings window for the life of the process and draws it while it is visible. Main thread.
class PreferencesWindowController {
public:
    static constexpr double contentWidth = 720;
    static constexpr double contentHeight = 520;

    /// Both outlive the controller.
    PreferencesWindowController(AppEnvironment& environment, WindowSystem& windows, std::function<void()> terminate);

    [[nodiscard]] Window& window() { return *window_; }

    /// Visible or miniaturised: the window is still the user's business.
    [[nodiscard]] bool isShown() const { return window_->isVisible() || window_->isMiniaturized(); }

private:
    void draw();

    std::unique_ptr<Window> window_;
    PreferencesView view_;
    std::optional<ViewNode> drawn_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace thermopix
