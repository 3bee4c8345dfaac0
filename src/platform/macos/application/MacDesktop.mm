#import <AppKit/AppKit.h>

#include <cstdlib>

#include "platform/macos/application/MacApplication.h"
#include "platform/macos/menubar/MacStatusItem.h"
#include "platform/macos/settings/MacWindow.h"
#include "shell/Desktop.h"

namespace thermopix {

namespace {

/// The menu bar, the Dock and the windows of a Mac. Main thread.
class MacDesktop final : public Desktop, StatusBar, WindowSystem {
public:
    /// `mainLoop` outlives the desktop.
    explicit MacDesktop(MainLoop& mainLoop) : mainLoop_(mainLoop) {}

    [[nodiscard]] Application& application() override { return application_; }
    [[nodiscard]] StatusBar& statusBar() override { return *this; }
    [[nodiscard]] WindowSystem& windows() override { return *this; }

    [[nodiscard]] int run(ApplicationDelegate& delegate) override {
        application_.run(delegate);
        return EXIT_SUCCESS;
    }

private:
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override { return std::make_unique<MacStatusItem>(); }

    [[nodiscard]] std::unique_ptr<Window> makeWindow(const WindowDescription& description) override {
        return std::make_unique<MacWindow>(description, mainLoop_);
    }

    [[nodiscard]] double titleBarHeight() const override {
        return [NSWindow frameRectForContentRect:NSZeroRect styleMask:NSWindowStyleMaskTitled].size.height;
    }

    MainLoop& mainLoop_;
    MacApplication application_;
};

}  // namespace

std::unique_ptr<Desktop> makeDesktop(Platform& platform, Arguments /*arguments*/,
                                     const EnvironmentVariables& /*variables*/) {
    @autoreleasepool {
        return std::make_unique<MacDesktop>(platform.mainLoop());
    }
}

}  // namespace thermopix
