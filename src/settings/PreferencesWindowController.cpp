#include "settings/PreferencesWindowController.h"

#include <string>
#include <utility>

#include "environment/AppInfo.h"
#include "settings/Identifiers.h"

namespace thermopix {

PreferencesWindowController::PreferencesWindowController(AppEnvironment& environment, WindowSystem& windows,
                                                         std::function<void()> terminate)
    : window_(windows.makeWindow({.title = std::string(AppInfo::name) + " Settings",
                                  .width = contentWidth,
                                  .height = contentHeight,
                                  .identifier = std::string(Identifiers::window)})),
      view_(environment, std::move(terminate), windows.titleBarHeight()) {
    view_.onChange = [this] { draw(); };
    subscriptions_.push_back(window_->onEvent([this](const ViewEvent& event) {
        view_.handle(event);
        // The control shows what the user did to it, which may not be what came of it.
        drawn_.reset();
        draw();
    }));
    subscriptions_.push_back(window_->onVisibilityChange([this](bool isVisible) {
        if (isVisible) {
            // A window process that was started anew knows nothing of what was drawn before.
            drawn_.reset();
            view_.appear();
        } else {
            view_.disappear();
        }
    }));
}

void PreferencesWindowController::draw() {
    ViewNode node = view_.node();
    if (drawn_ != node) {
        drawn_ = std::move(node);
        window_->setContent(*drawn_);
    }
}

}  // namespace thermopix
