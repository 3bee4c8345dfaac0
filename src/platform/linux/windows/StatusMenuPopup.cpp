#include "platform/linux/windows/StatusMenuPopup.h"

#include <utility>
#include <variant>

namespace thermopix {

StatusMenuPopup::StatusMenuPopup(WindowClient& client)
    : client_(client),
      events_(client.onEvent([this](const WindowEvent& event) { handle(event); })),
      end_(client.onEnd([this](const WindowProcessEnd& end) { processEnded(end); })) {}

void StatusMenuPopup::setMenu(MenuSource* menu) {
    changes_.cancel();
    isOpen_ = false;
    menu_ = menu;
}

void StatusMenuPopup::open(std::optional<ScreenPoint> position) {
    if (menu_ == nullptr) {
        return;
    }
    position_ = position;
    mayOpenAgain_ = true;
    menu_->menuWillOpen();
    request();
}

void StatusMenuPopup::request() {
    isOpen_ = true;
    isAnswered_ = false;
    // The first delivery is the menu as it is.
    changes_ = menu_->observe([this, isFirst = true](const Menu& menu) mutable {
        if (std::exchange(isFirst, false)) {
            client_.send(OpenPopupMenu{menu, position_});
        } else {
            client_.send(UpdatePopupMenu{menu});
        }
    });
}

void StatusMenuPopup::handle(const WindowEvent& event) {
    if (const auto* opening = std::get_if<MenuWillOpen>(&event);
        opening != nullptr && opening->place == MenuPlace::popup) {
        isAnswered_ = true;
    } else if (const auto* closing = std::get_if<MenuDidClose>(&event);
               closing != nullptr && closing->place == MenuPlace::popup && isAnswered_) {
        isOpen_ = false;
        changes_.cancel();
    } else if (const auto* chosen = std::get_if<MenuItemChosen>(&event);
               chosen != nullptr && chosen->place == MenuPlace::popup && menu_ != nullptr) {
        menu_->perform(chosen->item);
    }
}

void StatusMenuPopup::processEnded(const WindowProcessEnd& end) {
    const bool wasMissed = isOpen_ && !isAnswered_;
    isOpen_ = false;
    changes_.cancel();
    if (wasMissed && !end.isFailure() && std::exchange(mayOpenAgain_, false)) {
        // The process was about to end with its last window when it was asked for the popup.
        request();
    }
}

}  // namespace thermopix
