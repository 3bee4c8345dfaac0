#include "platform/linux/windows/ApplicationWindows.h"

#include <utility>
#include <variant>

namespace thermopix {

ApplicationWindows::ApplicationWindows(WindowProcess& process)
    : process_(process),
      start_(process.onStart([this] { processStarted(); })),
      events_(process.onEvent([this](const WindowEvent& event) { handle(event); })),
      end_(process.onEnd([this](const WindowProcessEnd& /*end*/) { visible_.clear(); })) {}

void ApplicationWindows::setMainMenu(const Menu& menu) {
    mainMenu_ = menu;
    process_.send(SetMainMenu{menu});
}

void ApplicationWindows::setActivationPolicy(ActivationPolicy policy) {
    policy_ = policy;
    process_.send(SetActivationPolicy{policy});
}

void ApplicationWindows::showAboutPanel(const AboutPanelContent& content) {
    process_.send(ShowAboutPanel{content});
}

void ApplicationWindows::useActivationToken(std::string token) {
    activationToken_ = std::move(token);
}

void ApplicationWindows::activate() {
    if (process_.isRunning() && !activationToken_.empty()) {
        process_.send(UseActivationToken{std::exchange(activationToken_, {})});
    }
}

void ApplicationWindows::orderAllFront() {
    activate();
    for (const WindowId window : visible_) {
        process_.send(OrderWindowFront{window});
    }
}

void ApplicationWindows::processStarted() {
    activate();
    if (mainMenu_) {
        process_.send(SetMainMenu{*mainMenu_});
    }
    if (policy_) {
        process_.send(SetActivationPolicy{*policy_});
    }
}

void ApplicationWindows::handle(const WindowEvent& event) {
    if (const auto* change = std::get_if<WindowVisibilityChanged>(&event)) {
        if (change->isVisible) {
            visible_.insert(change->window);
        } else {
            visible_.erase(change->window);
        }
    } else if (const auto* chosen = std::get_if<MainMenuActionChosen>(&event)) {
        if (onAction) {
            onAction(chosen->action);
        }
    } else if (std::holds_alternative<Reopened>(event) && onReopen) {
        onReopen();
    }
}

}  // namespace thermopix
