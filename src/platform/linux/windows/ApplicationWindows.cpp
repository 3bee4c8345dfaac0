#include "platform/linux/windows/ApplicationWindows.h"

#include <utility>
#include <variant>

namespace thermopix {

ApplicationWindows::ApplicationWindows(WindowClient& client)
    : client_(client),
      start_(client.onStart([this] { processStarted(); })),
      events_(client.onEvent([this](const WindowEvent& event) { handle(event); })),
      end_(client.onEnd([this](const WindowProcessEnd& /*end*/) { visible_.clear(); })) {}

void ApplicationWindows::setMainMenu(const Menu& menu) {
    mainMenu_ = menu;
    client_.send(SetMainMenu{menu});
}

void ApplicationWindows::setActivationPolicy(ActivationPolicy policy) {
    policy_ = policy;
    client_.send(SetActivationPolicy{policy});
}

void ApplicationWindows::activate() {
    if (client_.isRunning() && !activationToken_.empty()) {
        client_.send(UseActivationToken{std::exchange(activationToken_, {})});
    }
}

void ApplicationWindows::orderAllFront() {
    activate();
    for (const WindowId window : visible_) {
        client_.send(OrderWindowFront{window});
    }
}

void ApplicationWindows::processStarted() {
    activate();
    if (mainMenu_) {
        client_.send(SetMainMenu{*mainMenu_});
    }
    if (policy_) {
        client_.send(SetActivationPolicy{*policy_});
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
