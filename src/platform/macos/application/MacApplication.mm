#include "platform/macos/application/MacApplication.h"

#import <AppKit/AppKit.h>

#include "platform/macos/drawing/AttributedText.h"
#include "platform/macos/system/Text.h"

/// Hands what AppKit tells the application to the program.
@interface ThermopixApplicationDelegate : NSObject <NSApplicationDelegate>
@property(nonatomic) thermopix::ApplicationDelegate* program;
@end

@implementation ThermopixApplicationDelegate

- (void)applicationDidFinishLaunching:(NSNotification*)__unused notification {
    _program->applicationDidFinishLaunching();
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)__unused sender hasVisibleWindows:(BOOL)hasVisibleWindows {
    return _program->applicationShouldHandleReopen(static_cast<bool>(hasVisibleWindows)) ? YES : NO;
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)__unused application {
    return YES;
}

@end

namespace thermopix {

namespace {

NSRunningApplication* otherRunningInstance() {
    NSString* identifier = NSBundle.mainBundle.bundleIdentifier;
    if (identifier == nil) {
        return nil;
    }
    NSRunningApplication* current = NSRunningApplication.currentApplication;
    for (NSRunningApplication* running in [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier]) {
        if (![running isEqual:current]) {
            return running;
        }
    }
    return nil;
}

NSAttributedString* creditsText(const AboutPanelContent& content) {
    const auto& style = content.creditsStyle;
    return attributedText(content.credits,
                          {.font = [NSFont systemFontOfSize:style.fontSize],
                           .color = style.isSecondary ? NSColor.secondaryLabelColor : NSColor.labelColor,
                           .lineSpacing = style.extraLineSpacing,
                           .isCentered = style.isCentered});
}

}  // namespace

MacApplication::MacApplication() {
    // Without a bundle, too, the program may have a status item and windows.
    [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyAccessory];
    NSWindow.allowsAutomaticWindowTabbing = NO;
}

void MacApplication::run(ApplicationDelegate& delegate) {
    delegate_ = &delegate;
    forwarder_ = [[ThermopixApplicationDelegate alloc] init];
    forwarder_.program = &delegate;
    NSApplication.sharedApplication.delegate = forwarder_;
    [NSApplication.sharedApplication run];
    NSApplication.sharedApplication.delegate = nil;
    delegate_ = nullptr;
}

bool MacApplication::hasOtherRunningInstance() {
    return otherRunningInstance() != nil;
}

bool MacApplication::activateOtherRunningInstance() {
    [otherRunningInstance() activateWithOptions:0];
    return true;
}

void MacApplication::terminate() {
    [NSApplication.sharedApplication performSelector:@selector(terminate:) withObject:nil afterDelay:0];
}

void MacApplication::activateIgnoringOtherApps() {
    [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
}

ActivationPolicy MacApplication::activationPolicy() const {
    return NSApplication.sharedApplication.activationPolicy == NSApplicationActivationPolicyRegular
               ? ActivationPolicy::regular
               : ActivationPolicy::accessory;
}

void MacApplication::setActivationPolicy(ActivationPolicy policy) {
    [NSApplication.sharedApplication setActivationPolicy:policy == ActivationPolicy::regular
                                                             ? NSApplicationActivationPolicyRegular
                                                             : NSApplicationActivationPolicyAccessory];
}

void MacApplication::setMainMenu(const Menu& menu) {
    mainMenu_ =
        std::make_unique<MacMenu>(MacMenu::Enabling::byResponder, [this](const MenuItem& item) { perform(item); });
    mainMenu_->show(menu);
    NSApplication.sharedApplication.mainMenu = mainMenu_->menu();
    NSApplication.sharedApplication.windowsMenu = mainMenu_->windowsMenu();
}

void MacApplication::showAboutPanel(const AboutPanelContent& content) {
    NSMutableDictionary<NSAboutPanelOptionKey, id>* options = [[NSMutableDictionary alloc] init];
    NSImage* icon = NSApplication.sharedApplication.applicationIconImage;
    if (icon != nil) {
        [options setObject:icon forKey:NSAboutPanelOptionApplicationIcon];
    }
    [options setObject:nsString(content.applicationName) forKey:NSAboutPanelOptionApplicationName];
    [options setObject:nsString(content.version) forKey:NSAboutPanelOptionVersion];
    [options setObject:creditsText(content) forKey:NSAboutPanelOptionCredits];
    [NSApplication.sharedApplication orderFrontStandardAboutPanelWithOptions:options];
}

void MacApplication::perform(const MenuItem& item) {
    if (item.action == MenuAction::showAboutPanel && delegate_ != nullptr) {
        delegate_->showAboutPanel();
    }
}

}  // namespace thermopix
