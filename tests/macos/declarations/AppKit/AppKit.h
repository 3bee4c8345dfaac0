#pragma once

#import <Foundation/Foundation.h>
#import <QuartzCore/QuartzCore.h>

@class NSApplication, NSBezierPath, NSColor, NSEvent, NSFont, NSGraphicsContext, NSImage, NSMenu, NSMenuItem,
    NSPopUpButton, NSRunningApplication, NSStatusBar, NSStatusItem, NSTextField, NSTrackingArea, NSView, NSWindow;

typedef NSString* NSUserInterfaceItemIdentifier;
typedef NSString* NSAboutPanelOptionKey;
typedef NSString* NSAccessibilityRole;
typedef CGFloat NSFontWeight;

NS_ASSUME_NONNULL_BEGIN

// Application

typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
};
typedef NSUInteger NSApplicationActivationOptions;

NS_STRING_CONSTANT(NSAboutPanelOptionKey, NSAboutPanelOptionApplicationIcon);
NS_STRING_CONSTANT(NSAboutPanelOptionKey, NSAboutPanelOptionApplicationName);
NS_STRING_CONSTANT(NSAboutPanelOptionKey, NSAboutPanelOptionVersion);
NS_STRING_CONSTANT(NSAboutPanelOptionKey, NSAboutPanelOptionCredits);

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)hasVisibleWindows;
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)app;
@end

@interface NSResponder : NSObject
- (void)mouseEntered:(NSEvent*)event;
- (void)mouseExited:(NSEvent*)event;
@end

@interface NSApplication : NSResponder
@property(class, readonly, strong) NSApplication* sharedApplication;
- (void)setDelegate:(nullable id<NSApplicationDelegate>)delegate;
- (void)setMainMenu:(nullable NSMenu*)mainMenu;
- (void)setWindowsMenu:(nullable NSMenu*)windowsMenu;
@property(readonly, nullable, strong) NSImage* applicationIconImage;
- (void)run;
- (void)terminate:(nullable id)sender;
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (NSApplicationActivationPolicy)activationPolicy;
- (void)hide:(nullable id)sender;
- (void)hideOtherApplications:(nullable id)sender;
- (void)unhideAllApplications:(nullable id)sender;
- (void)arrangeInFront:(nullable id)sender;
- (void)orderFrontStandardAboutPanelWithOptions:(NSDictionary<NSAboutPanelOptionKey, id>*)optionsDictionary;
@end

@interface NSRunningApplication : NSObject
@property(class, readonly, strong) NSRunningApplication* currentApplication;
+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:(NSString*)bundleIdentifier;
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
@end

NS_STRING_CONSTANT(NSNotificationName, NSWorkspaceWillSleepNotification);
NS_STRING_CONSTANT(NSNotificationName, NSWorkspaceDidWakeNotification);
NS_STRING_CONSTANT(NSNotificationName, NSWorkspaceScreensDidSleepNotification);
NS_STRING_CONSTANT(NSNotificationName, NSWorkspaceScreensDidWakeNotification);

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@end

// Text

NS_STRING_CONSTANT(NSAttributedStringKey, NSFontAttributeName);
NS_STRING_CONSTANT(NSAttributedStringKey, NSForegroundColorAttributeName);
NS_STRING_CONSTANT(NSAttributedStringKey, NSKernAttributeName);
NS_STRING_CONSTANT(NSAttributedStringKey, NSParagraphStyleAttributeName);

#if defined(__aarch64__)
typedef NS_ENUM(NSInteger, NSTextAlignment) { NSTextAlignmentCenter = 1, NSTextAlignmentNatural = 4 };
#else
typedef NS_ENUM(NSInteger, NSTextAlignment) { NSTextAlignmentCenter = 2, NSTextAlignmentNatural = 4 };
#endif

@interface NSParagraphStyle : NSObject
@end

@interface NSMutableParagraphStyle : NSParagraphStyle
- (void)setLineSpacing:(CGFloat)lineSpacing;
- (void)setAlignment:(NSTextAlignment)alignment;
@end

extern "C" const NSFontWeight NSFontWeightRegular;
extern "C" const NSFontWeight NSFontWeightMedium;
extern "C" const NSFontWeight NSFontWeightSemibold;

@interface NSFont : NSObject
@property(class, readonly) CGFloat smallSystemFontSize;
+ (NSFont*)systemFontOfSize:(CGFloat)fontSize;
+ (NSFont*)systemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight;
+ (NSFont*)monospacedDigitSystemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight;
@end

// Drawing

typedef NS_ENUM(NSUInteger, NSCompositingOperation) { NSCompositingOperationSourceOver = 2 };

@interface NSColor : NSObject
@property(class, readonly, strong) NSColor* blackColor;
@property(class, readonly, strong) NSColor* clearColor;
@property(class, readonly, strong) NSColor* labelColor;
@property(class, readonly, strong) NSColor* secondaryLabelColor;
@property(class, readonly, strong) NSColor* tertiaryLabelColor;
@property(class, readonly, strong) NSColor* separatorColor;
@property(class, readonly, strong) NSColor* controlAccentColor;
@property(class, readonly, strong) NSColor* alternateSelectedControlTextColor;
@property(readonly) CGFloat alphaComponent;
@property(readonly) CGColorRef CGColor;
+ (NSColor*)colorWithSRGBRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
- (NSColor*)colorWithAlphaComponent:(CGFloat)alpha;
- (void)setFill;
- (void)setStroke;
@end

@interface NSGraphicsContext : NSObject
@property(class, readonly, nullable, strong) NSGraphicsContext* currentContext;
- (void)setShouldAntialias:(BOOL)shouldAntialias;
- (void)setCompositingOperation:(NSCompositingOperation)compositingOperation;
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@end

@interface NSBezierPath : NSObject
- (void)setLineWidth:(CGFloat)lineWidth;
+ (NSBezierPath*)bezierPathWithOvalInRect:(NSRect)rect;
+ (NSBezierPath*)bezierPathWithRoundedRect:(NSRect)rect xRadius:(CGFloat)xRadius yRadius:(CGFloat)yRadius;
+ (void)fillRect:(NSRect)rect;
- (void)fill;
- (void)stroke;
@end

@interface NSGradient : NSObject
- (nullable instancetype)initWithStartingColor:(NSColor*)startingColor endingColor:(NSColor*)endingColor;
- (void)drawInBezierPath:(NSBezierPath*)path angle:(CGFloat)angle;
@end

@interface NSImageSymbolConfiguration : NSObject
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

@interface NSImage : NSObject
- (void)setAccessibilityDescription:(nullable NSString*)accessibilityDescription;
+ (NSImage*)imageWithSize:(NSSize)size
                  flipped:(BOOL)drawingHandlerShouldBeCalledWithFlippedContext
           drawingHandler:(BOOL (^)(NSRect dstRect))drawingHandler;
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)symbolName
                          accessibilityDescription:(nullable NSString*)description;
- (nullable NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration;
- (void)setTemplate:(BOOL)isTemplate;
@end

// Views

typedef NS_OPTIONS(NSUInteger, NSAutoresizingMaskOptions) { NSViewWidthSizable = 2, NSViewHeightSizable = 16 };
typedef NS_ENUM(NSInteger, NSWindowOrderingMode) { NSWindowBelow = -1 };
typedef NS_OPTIONS(NSUInteger, NSTrackingAreaOptions) {
    NSTrackingMouseEnteredAndExited = 1,
    NSTrackingActiveInKeyWindow = 32,
    NSTrackingInVisibleRect = 512,
};

NS_STRING_CONSTANT(NSAccessibilityRole, NSAccessibilityGroupRole);

@interface NSTrackingArea : NSObject
- (instancetype)initWithRect:(NSRect)rect
                     options:(NSTrackingAreaOptions)options
                       owner:(nullable id)owner
                    userInfo:(nullable NSDictionary<id, id>*)userInfo;
@end

@interface NSView : NSResponder
- (void)setFrame:(NSRect)frame;
@property(readonly) NSRect bounds;
@property(getter=isHidden) BOOL hidden;
- (void)setAutoresizingMask:(NSAutoresizingMaskOptions)autoresizingMask;
- (void)setNeedsDisplay:(BOOL)needsDisplay;
- (void)setWantsLayer:(BOOL)wantsLayer;
@property(readonly) BOOL wantsUpdateLayer;
@property(readonly, nullable, strong) CALayer* layer;
@property(readonly, getter=isFlipped) BOOL flipped;
@property(nullable, readonly, unsafe_unretained) NSView* superview;
@property(readonly) NSSize intrinsicContentSize;
@property(readonly) NSRect focusRingMaskBounds;
@property(nullable, copy) NSUserInterfaceItemIdentifier identifier;
- (void)setAccessibilityIdentifier:(nullable NSString*)accessibilityIdentifier;
- (void)setAccessibilityLabel:(nullable NSString*)accessibilityLabel;
- (void)setAccessibilityRole:(nullable NSAccessibilityRole)accessibilityRole;
- (void)setAccessibilityChildren:(nullable NSArray*)accessibilityChildren;
- (void)setAccessibilityElement:(BOOL)accessibilityElement;
- (void)setAccessibilitySelected:(BOOL)accessibilitySelected;
- (instancetype)initWithFrame:(NSRect)frameRect NS_DESIGNATED_INITIALIZER;
- (void)addSubview:(NSView*)view;
- (void)addSubview:(NSView*)view positioned:(NSWindowOrderingMode)place relativeTo:(nullable NSView*)otherView;
- (void)removeFromSuperview;
- (void)setFrameSize:(NSSize)newSize;
- (NSRect)frameForAlignmentRect:(NSRect)alignmentRect;
- (nullable NSView*)hitTest:(NSPoint)point;
- (void)drawRect:(NSRect)dirtyRect;
- (void)updateLayer;
- (void)drawFocusRingMask;
- (void)addTrackingArea:(NSTrackingArea*)trackingArea;
- (void)removeTrackingArea:(NSTrackingArea*)trackingArea;
- (void)updateTrackingAreas;
@end

typedef NS_ENUM(NSInteger, NSVisualEffectMaterial) { NSVisualEffectMaterialSidebar = 7 };
typedef NS_ENUM(NSInteger, NSVisualEffectBlendingMode) { NSVisualEffectBlendingModeBehindWindow = 0 };
typedef NS_ENUM(NSInteger, NSVisualEffectState) { NSVisualEffectStateFollowsWindowActiveState = 0 };

@interface NSVisualEffectView : NSView
- (void)setMaterial:(NSVisualEffectMaterial)material;
- (void)setBlendingMode:(NSVisualEffectBlendingMode)blendingMode;
@property NSVisualEffectState state;
@end

@interface NSScrollView : NSView
@property(nullable, strong) NSView* documentView;
- (void)setDrawsBackground:(BOOL)drawsBackground;
- (void)setHasVerticalScroller:(BOOL)hasVerticalScroller;
- (void)setAutohidesScrollers:(BOOL)autohidesScrollers;
- (void)setAutomaticallyAdjustsContentInsets:(BOOL)automaticallyAdjustsContentInsets;
@end

// Controls

typedef NS_ENUM(NSUInteger, NSCellImagePosition) { NSImageOnly = 1 };
typedef NSInteger NSControlStateValue;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;

@interface NSControl : NSView
- (void)setTarget:(nullable id)target;
@property(nullable) SEL action;
- (void)setStringValue:(NSString*)stringValue;
- (void)setAttributedStringValue:(NSAttributedString*)attributedStringValue;
@end

@interface NSButton : NSControl
- (void)setTitle:(NSString*)title;
- (void)setImage:(nullable NSImage*)image;
- (void)setImagePosition:(NSCellImagePosition)imagePosition;
@property NSControlStateValue state;
- (void)setBordered:(BOOL)bordered;
+ (instancetype)buttonWithTitle:(NSString*)title target:(nullable id)target action:(nullable SEL)action;
+ (instancetype)checkboxWithTitle:(NSString*)title target:(nullable id)target action:(nullable SEL)action;
@end

@interface NSPopUpButton : NSButton
@property(readonly) NSInteger numberOfItems;
@property(readonly) NSInteger indexOfSelectedItem;
- (instancetype)initWithFrame:(NSRect)buttonFrame pullsDown:(BOOL)flag;
- (void)addItemWithTitle:(NSString*)title;
- (void)removeAllItems;
- (NSString*)itemTitleAtIndex:(NSInteger)index;
- (void)selectItemAtIndex:(NSInteger)index;
@end

typedef NS_ENUM(NSUInteger, NSSegmentSwitchTracking) { NSSegmentSwitchTrackingSelectOne = 0 };

@interface NSSegmentedControl : NSControl
@property NSInteger segmentCount;
@property NSInteger selectedSegment;
+ (instancetype)segmentedControlWithLabels:(NSArray<NSString*>*)labels
                              trackingMode:(NSSegmentSwitchTracking)trackingMode
                                    target:(nullable id)target
                                    action:(nullable SEL)action;
- (void)setLabel:(NSString*)label forSegment:(NSInteger)segment;
@end

@interface NSText : NSView
- (void)cut:(nullable id)sender;
- (void)copy:(nullable id)sender;
- (void)paste:(nullable id)sender;
- (void)selectAll:(nullable id)sender;
@end

@interface NSTextField : NSControl
- (void)setSelectable:(BOOL)selectable;
- (void)setPreferredMaxLayoutWidth:(CGFloat)preferredMaxLayoutWidth;
+ (instancetype)labelWithString:(NSString*)stringValue;
+ (instancetype)wrappingLabelWithString:(NSString*)stringValue;
@end

@interface NSImageView : NSControl
- (void)setImage:(nullable NSImage*)image;
- (void)setContentTintColor:(nullable NSColor*)contentTintColor;
@end

// Windows

typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
    NSWindowStyleMaskTitled = 1,
    NSWindowStyleMaskClosable = 2,
    NSWindowStyleMaskMiniaturizable = 4,
    NSWindowStyleMaskFullSizeContentView = 32768,
};
typedef NS_ENUM(NSUInteger, NSBackingStoreType) { NSBackingStoreBuffered = 2 };
typedef NS_ENUM(NSInteger, NSWindowTitleVisibility) { NSWindowTitleHidden = 1 };

@protocol NSWindowDelegate <NSObject>
@optional
- (void)windowWillClose:(NSNotification*)notification;
- (void)windowDidMiniaturize:(NSNotification*)notification;
- (void)windowDidDeminiaturize:(NSNotification*)notification;
@end

@interface NSWindow : NSResponder
+ (void)setAllowsAutomaticWindowTabbing:(BOOL)allowsAutomaticWindowTabbing;
- (void)setDelegate:(nullable id<NSWindowDelegate>)delegate;
- (void)setTitle:(NSString*)title;
- (void)setTitleVisibility:(NSWindowTitleVisibility)titleVisibility;
- (void)setTitlebarAppearsTransparent:(BOOL)titlebarAppearsTransparent;
- (void)setAutorecalculatesKeyViewLoop:(BOOL)recalculates;
- (void)setContentView:(nullable NSView*)contentView;
- (void)setReleasedWhenClosed:(BOOL)releasedWhenClosed;
@property(readonly, getter=isVisible) BOOL visible;
@property(readonly, getter=isMiniaturized) BOOL miniaturized;
- (void)setAccessibilityIdentifier:(nullable NSString*)accessibilityIdentifier;
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag NS_DESIGNATED_INITIALIZER;
+ (NSRect)frameRectForContentRect:(NSRect)cRect styleMask:(NSWindowStyleMask)style;
- (void)setContentSize:(NSSize)size;
- (void)center;
- (void)close;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)deminiaturize:(nullable id)sender;
- (void)performClose:(nullable id)sender;
- (void)performMiniaturize:(nullable id)sender;
@end

// Menus and the status bar

typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags) {
    NSEventModifierFlagShift = 131072,
    NSEventModifierFlagOption = 524288,
    NSEventModifierFlagCommand = 1048576,
};

@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuWillOpen:(NSMenu*)menu;
@end

@interface NSMenu : NSObject
- (void)setTitle:(NSString*)title;
- (void)setAutoenablesItems:(BOOL)autoenablesItems;
- (void)setDelegate:(nullable id<NSMenuDelegate>)delegate;
- (instancetype)initWithTitle:(NSString*)title NS_DESIGNATED_INITIALIZER;
- (void)addItem:(NSMenuItem*)newItem;
- (void)removeAllItems;
- (nullable NSMenuItem*)itemAtIndex:(NSInteger)index;
@end

@interface NSMenuItem : NSObject
- (void)setTitle:(NSString*)title;
- (void)setAttributedTitle:(nullable NSAttributedString*)attributedTitle;
- (void)setImage:(nullable NSImage*)image;
@property NSControlStateValue state;
- (void)setEnabled:(BOOL)enabled;
@property(getter=isHidden) BOOL hidden;
@property NSInteger tag;
- (void)setTarget:(nullable id)target;
@property(nullable) SEL action;
- (void)setRepresentedObject:(nullable id)representedObject;
- (void)setSubmenu:(nullable NSMenu*)submenu;
- (void)setKeyEquivalentModifierMask:(NSEventModifierFlags)keyEquivalentModifierMask;
@property(nullable, copy) NSUserInterfaceItemIdentifier identifier;
- (void)setAccessibilityIdentifier:(nullable NSString*)accessibilityIdentifier;
+ (NSMenuItem*)separatorItem;
+ (instancetype)sectionHeaderWithTitle:(NSString*)title API_AVAILABLE(macos(14.0));
- (instancetype)initWithTitle:(NSString*)string
                       action:(nullable SEL)selector
                keyEquivalent:(NSString*)charCode NS_DESIGNATED_INITIALIZER;
@end

static const CGFloat NSVariableStatusItemLength = -1.0;
typedef NSUInteger NSStatusItemBehavior;

@interface NSStatusBarButton : NSButton
@end

@interface NSStatusItem : NSObject
@property(nullable, readonly, strong) NSStatusBarButton* button;
- (void)setMenu:(nullable NSMenu*)menu;
- (void)setBehavior:(NSStatusItemBehavior)behavior;
@end

@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

NS_ASSUME_NONNULL_END
