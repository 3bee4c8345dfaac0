#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/settings/MacViewTree.h"
#include "shell/Window.h"
#include "system/MainLoop.h"

@class ThermopixWindowDelegate;

namespace thermopix {

/// A window of fixed size whose content reaches under its transparent title bar. Main thread.
class MacWindow final : public Window {
public:
    /// `mainLoop` outlives the window.
    MacWindow(const WindowDescription& description, MainLoop& mainLoop);
    ~MacWindow() override;
    MacWindow(const MacWindow&) = delete;
    MacWindow& operator=(const MacWindow&) = delete;

    void show() override;
    void makeKeyAndOrderFront() override;
    [[nodiscard]] bool isVisible() const override;
    [[nodiscard]] bool isMiniaturized() const override;
    void setContent(const ViewNode& root) override;

private:
    void willClose();
    void reportVisibility();
    void operated(const ViewEvent& event);

    MainLoop& mainLoop_;
    NSWindow* window_;
    ThermopixWindowDelegate* delegate_;
    MacViewTree tree_;
    bool reportedVisible_ = false;
    Subscription closing_;
    Subscription correction_;
};

}  // namespace thermopix
