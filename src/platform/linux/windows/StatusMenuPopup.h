#pragma once

#include <optional>

#include "platform/linux/windows/WindowClient.h"
#include "shell/Menu.h"

namespace thermopix {

/// The status item's menu as a popup of the window process, for trays that cannot show it themselves. Main thread.
class StatusMenuPopup {
public:
    /// `client` outlives the popup.
    explicit StatusMenuPopup(WindowClient& client);
    StatusMenuPopup(const StatusMenuPopup&) = delete;
    StatusMenuPopup& operator=(const StatusMenuPopup&) = delete;

    /// `menu` outlives the popup, unless null replaces it.
    void setMenu(MenuSource* menu);

    /// Without a menu, nothing happens.
    void open(std::optional<ScreenPoint> position);

private:
    void handle(const WindowEvent& event);
    void processEnded(const WindowProcessEnd& end);
    void request();

    WindowClient& client_;
    MenuSource* menu_ = nullptr;
    std::optional<ScreenPoint> position_;
    /// True from the request until the popup has gone.
    bool isOpen_ = false;
    bool isAnswered_ = false;
    bool mayOpenAgain_ = false;
    Subscription events_;
    Subscription end_;
    /// While it is open.
    Subscription changes_;
};

}  // namespace thermopix
