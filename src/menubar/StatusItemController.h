#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "environment/AppEnvironment.h"
#include "menubar/StatusMenuController.h"
#include "pixels/Appearance.h"
#include "pixels/Blinking.h"
#include "sensing/Display.h"
#include "shell/StatusItem.h"

namespace thermopix {

/// Owns the one status item: asks for a reading on each tick, redraws only what has changed, blinks, and hands each
/// new display to the menu. Main thread.
class StatusItemController {
public:
    /// Creates the item and starts ticking. `environment` and `statusBar` outlive the controller.
    StatusItemController(AppEnvironment& environment, StatusBar& statusBar, StatusMenuController::Actions actions);
    ~StatusItemController();
    StatusItemController(const StatusItemController&) = delete;
    StatusItemController& operator=(const StatusItemController&) = delete;

    [[nodiscard]] StatusMenuController& menuController() { return menuController_; }

    /// A fresh reading, drawn if it changes anything.
    void refresh();

private:
    /// Does `work` in a later turn, whenever what `project` makes of the settings has changed from now on.
    template <typename Projection>
    void onChange(Projection project, std::function<void()> work);
    void observePreferences();
    void startTicking();
    void startBlinking();
    void redraw();

    AppEnvironment& environment_;
    StatusMenuController menuController_;
    std::unique_ptr<StatusItem> statusItem_;
    std::vector<Subscription> subscriptions_;
    Blinking blinking_;
    std::optional<Display> lastDrawn_;
    std::optional<Display> lastRendered_;
    std::optional<Appearance> lastAppearance_;
    std::optional<ReadingOrigin> lastOrigin_;
};

}  // namespace thermopix
