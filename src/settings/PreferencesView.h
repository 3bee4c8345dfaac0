#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "base/Subscription.h"
#include "environment/AppEnvironment.h"
#include "pixels/Blinking.h"
#include "sensing/Display.h"
#include "settings/Pane.h"
#include "shell/ViewNode.h"

namespace thermopix {

/// The content of the Settings window: the chosen pane beside the sidebar, drawn from the settings and from a copy of
/// the status bar's display that is at most a second old. Works only between `appear` and `disappear`. Main thread.
class PreferencesView {
public:
    /// `environment` outlives the view. The top of the content lies under a title bar of this many points.
    PreferencesView(AppEnvironment& environment, std::function<void()> terminate, double titleBarHeight = 0);

    /// Called when `node()` may have changed.
    std::function<void()> onChange;

    [[nodiscard]] ViewNode node();

    /// The user operated a control; identifiers and values that mean nothing are ignored.
    void handle(const ViewEvent& event);

    void appear();
    void disappear();

private:
    [[nodiscard]] ViewNode paneNode();
    bool handleToggle(const ViewEvent& event);
    bool handleChoice(const ViewEvent& event);
    void handleAction(std::string_view identifier);
    void refreshDisplay();
    void redraw();

    AppEnvironment& environment_;
    std::function<void()> terminate_;
    double titleBarHeight_;
    Pane pane_ = Pane::readout;
    Display display_;
    Blinking blinking_;
    Subscription previewTimer_;
    Subscription redrawing_;
    Subscription refreshing_;
    std::vector<Subscription> settings_;
};

}  // namespace thermopix
