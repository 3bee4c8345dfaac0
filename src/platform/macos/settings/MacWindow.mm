#include "platform/macos/settings/MacWindow.h"

#include <utility>

#include "platform/macos/system/Text.h"

/// Tells of what the user does with the window.
@interface ThermopixWindowDelegate : NSObject <NSWindowDelegate>
@property(nonatomic) std::function<void()> willClose;
@property(nonatomic) std::function<void()> visibilityChange;
@end

@implementation ThermopixWindowDelegate

- (void)windowWillClose:(NSNotification*)__unused notification {
    _willClose();
}

- (void)windowDidMiniaturize:(NSNotification*)__unused notification {
    _visibilityChange();
}

- (void)windowDidDeminiaturize:(NSNotification*)__unused notification {
    _visibilityChange();
}

@end

namespace thermopix {

namespace {

// No resizing, deliberately.
constexpr NSWindowStyleMask styleMask = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                        NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskFullSizeContentView;
static_assert(styleMask == 32775);

NSWindow* makeWindow(const WindowDescription& description, NSView* content) {
    const NSSize size = NSMakeSize(description.width, description.height);
    NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, size.width, size.height)
                                                   styleMask:styleMask
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    // First of all: ARC owns the window, and closing it must not release it once more.
    window.releasedWhenClosed = NO;
    window.title = nsString(description.title);
    window.titleVisibility = NSWindowTitleHidden;
    window.titlebarAppearsTransparent = YES;
    window.contentView = content;
    // Panes come and go; the Tab key follows what is there.
    window.autorecalculatesKeyViewLoop = YES;
    [window setContentSize:size];
    [window center];
    window.accessibilityIdentifier = nsString(description.identifier);
    return window;
}

}  // namespace

MacWindow::MacWindow(const WindowDescription& description, MainLoop& mainLoop)
    : mainLoop_(mainLoop),
      delegate_([[ThermopixWindowDelegate alloc] init]),
      tree_({description.width, description.height}, [this](const ViewEvent& event) { operated(event); }) {
    delegate_.willClose = [this] { willClose(); };
    delegate_.visibilityChange = [this] { reportVisibility(); };
    window_ = makeWindow(description, tree_.view());
    window_.delegate = delegate_;
}

MacWindow::~MacWindow() {
    window_.delegate = nil;
    [window_ close];
}

void MacWindow::show() {
    if (isMiniaturized()) {
        [window_ deminiaturize:nil];
    }
    makeKeyAndOrderFront();
}

void MacWindow::makeKeyAndOrderFront() {
    [window_ makeKeyAndOrderFront:nil];
    reportVisibility();
}

bool MacWindow::isVisible() const {
    return static_cast<bool>(window_.visible);
}

bool MacWindow::isMiniaturized() const {
    return static_cast<bool>(window_.miniaturized);
}

void MacWindow::setContent(const ViewNode& root) {
    tree_.show(root);
}

void MacWindow::willClose() {
    closeObservers.tell();
    // It counts as visible until it is gone.
    closing_ = mainLoop_.post([this] { reportVisibility(); });
}

void MacWindow::reportVisibility() {
    const bool isVisibleNow = isVisible() && !isMiniaturized();
    if (std::exchange(reportedVisible_, isVisibleNow) != isVisibleNow) {
        visibilityObservers.tell(isVisibleNow);
    }
}

void MacWindow::operated(const ViewEvent& event) {
    eventObservers.tell(event);
    // Where the program did not follow the user, the control goes back to what the program says.
    correction_ = mainLoop_.post([this] { tree_.showAgain(); });
}

}  // namespace thermopix
