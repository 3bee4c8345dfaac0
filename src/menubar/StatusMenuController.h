#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>

#include "base/Published.h"
#include "environment/AppEnvironment.h"
#include "sensing/Display.h"
#include "shell/Menu.h"

namespace thermopix {

/// Owns the menu of the status item: the reading in words, the quick choices, and the ways into the rest of the
/// program. Main thread.
class StatusMenuController final : public MenuSource {
public:
    /// What lies outside the menu's own reach.
    struct Actions {
        std::function<void()> openPreferences;
        std::function<void()> showAbout;
        std::function<void()> terminate;
    };

    /// `environment` outlives the controller.
    StatusMenuController(AppEnvironment& environment, Actions actions);

    [[nodiscard]] const Menu& menu() const { return menu_.value(); }

    /// Brings the three information items up to date.
    void update(const Display& display);

    Subscription observe(std::function<void(const Menu&)> handler) override;
    void menuWillOpen() override;
    void perform(const MenuItem& item) override;

    /// Which sensors answered, in one caption line.
    [[nodiscard]] std::string detailText(const Display& display);
    [[nodiscard]] static std::string detailText(SensorSource source, const Display& display, std::size_t samplesRead,
                                                bool isSensorAvailable);

private:
    void publish(Menu menu);

    AppEnvironment& environment_;
    Actions actions_;
    Published<Menu> menu_;
};

}  // namespace thermopix
