#include "platform/macos/settings/BackgroundView.h"

#import <QuartzCore/QuartzCore.h>

#include <variant>

#include "platform/macos/settings/Palette.h"

namespace thermopix {

namespace {

constexpr CGFloat downwards = 90;

bool isSidebar(const Background& background) {
    const auto* color = std::get_if<RoleColor>(&background.fill);
    return color != nullptr && color->role == ColorRole::sidebar;
}

bool isEmpty(const Fill& fill) {
    return std::holds_alternative<std::monostate>(fill);
}

}  // namespace

bool isVisible(const Background& background) {
    return !isEmpty(background.fill) || !isEmpty(background.hoverFill) || background.border.has_value();
}

}  // namespace thermopix

@implementation ThermopixBackgroundView {
    thermopix::Background _background;
    NSVisualEffectView* _material;
    NSTrackingArea* _trackingArea;
    BOOL _hovering;
}

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self != nil) {
        self.wantsLayer = YES;
        self.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    }
    return self;
}

- (void)showBackground:(const thermopix::Background&)background {
    _background = background;
    if (!thermopix::isSidebar(background)) {
        [_material removeFromSuperview];
        _material = nil;
    } else if (_material == nil) {
        _material = [[NSVisualEffectView alloc] initWithFrame:self.bounds];
        _material.material = NSVisualEffectMaterialSidebar;
        _material.blendingMode = NSVisualEffectBlendingModeBehindWindow;
        _material.state = NSVisualEffectStateFollowsWindowActiveState;
        _material.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
        [self addSubview:_material];
    }
    [self updateTrackingAreas];
    self.needsDisplay = YES;
}

// A gradient is drawn; everything else is left to the layer, which knows continuous corners.
- (BOOL)wantsUpdateLayer {
    return std::holds_alternative<thermopix::Gradient>(_background.fill) ? NO : YES;
}

- (void)updateLayer {
    const bool isAtRest = !thermopix::isEmpty(_background.fill) || _hovering == NO;
    const auto* color = std::get_if<thermopix::RoleColor>(isAtRest ? &_background.fill : &_background.hoverFill);
    CALayer* layer = self.layer;
    layer.cornerRadius = _background.cornerRadius;
    layer.cornerCurve = kCACornerCurveContinuous;
    layer.backgroundColor = color != nullptr ? thermopix::nsColor(*color).CGColor : nullptr;
    layer.borderWidth = _background.border ? _background.borderWidth : 0;
    layer.borderColor = _background.border ? thermopix::nsColor(*_background.border).CGColor : nullptr;
}

- (void)drawRect:(NSRect)__unused dirtyRect {
    const auto* gradient = std::get_if<thermopix::Gradient>(&_background.fill);
    if (gradient == nullptr) {
        return;
    }
    // Half the outline lies on either side of its path.
    const CGFloat inset = _background.border ? _background.borderWidth / 2 : 0;
    NSBezierPath* path = [NSBezierPath bezierPathWithRoundedRect:NSInsetRect(self.bounds, inset, inset)
                                                         xRadius:_background.cornerRadius
                                                         yRadius:_background.cornerRadius];
    NSGradient* colors = [[NSGradient alloc] initWithStartingColor:thermopix::nsColor(gradient->top)
                                                       endingColor:thermopix::nsColor(gradient->bottom)];
    [colors drawInBezierPath:path angle:thermopix::downwards];
    if (_background.border) {
        [thermopix::nsColor(*_background.border) setStroke];
        path.lineWidth = _background.borderWidth;
        [path stroke];
    }
}

- (void)updateTrackingAreas {
    [super updateTrackingAreas];
    if (_trackingArea != nil) {
        [self removeTrackingArea:_trackingArea];
        _trackingArea = nil;
    }
    if (thermopix::isEmpty(_background.hoverFill)) {
        return;
    }
    _trackingArea = [[NSTrackingArea alloc]
        initWithRect:self.bounds
             options:NSTrackingMouseEnteredAndExited | NSTrackingActiveInKeyWindow | NSTrackingInVisibleRect
               owner:self
            userInfo:nil];
    [self addTrackingArea:_trackingArea];
}

- (void)mouseEntered:(NSEvent*)__unused event {
    _hovering = YES;
    self.needsDisplay = YES;
}

- (void)mouseExited:(NSEvent*)__unused event {
    _hovering = NO;
    self.needsDisplay = YES;
}

@end
