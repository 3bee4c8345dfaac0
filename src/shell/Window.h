#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "base/Observers.h"
#include "shell/ViewNode.h"

namespace thermopix {

/// A window of fixed content size, centred when first shown, kept when closed. Sizes are in points.
struct WindowDescription {
    std::string title;
    double width = 0;
    double height = 0;
    /// For assistive technology and interface tests.
    std::string identifier;

    friend bool operator==(const WindowDescription&, const WindowDescription&) = default;
};

/// One window of the program; closing only hides it. Main thread.
class Window {
public:
    virtual ~Window() = default;

    virtual void show() = 0;
    virtual void makeKeyAndOrderFront() = 0;
    [[nodiscard]] virtual bool isVisible() const = 0;
    [[nodiscard]] virtual bool isMiniaturized() const = 0;

    /// Shows this tree; controls that are there already are brought up to date in place.
    virtual void setContent(const ViewNode& root) = 0;

    /// Called while the window still counts as visible, each time it is about to close.
    [[nodiscard]] Subscription onWillClose(std::function<void()> handler) {
        return closeObservers.add(std::move(handler));
    }

    /// Called after the window has become visible (true), or was closed or miniaturised (false).
    [[nodiscard]] Subscription onVisibilityChange(std::function<void(bool)> handler) {
        return visibilityObservers.add(std::move(handler));
    }

    /// The user operated a control.
    [[nodiscard]] Subscription onEvent(std::function<void(const ViewEvent&)> handler) {
        return eventObservers.add(std::move(handler));
    }

protected:
    Observers<> closeObservers;
    Observers<bool> visibilityObservers;
    Observers<ViewEvent> eventObservers;
};

class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    /// How much of a window's content lies under its own, transparent title bar, in points.
    [[nodiscard]] virtual double titleBarHeight() const { return 0; }

    [[nodiscard]] virtual std::unique_ptr<Window> makeWindow(const WindowDescription& description) = 0;
};

}  // namespace thermopix
