#include "platform/macos/settings/BackgroundView.h"

#import <QuartzCore/QuartzCore.h>

#include <optional>
#include <variant>

#include "platform/macos/settings/Palette.h"

namespace thermopix {

namespace {

constexpr CGFloat downwards = 90;

std::optional<RoleColor> roleOf(const Fill& fill) {
    const auto* role = std::get_if<RoleColor>(&fill);
    return role != nullptr ? std::optional(*role) : std::nullopt;
}

bool isSidebar(const Background& background) {
    const auto role = roleOf(background.fill);
    return role && role->role == ColorRole::sidebar;
}

void drawGradient(const Gradient& gradient, NSBezierPath* path) {
    NSGradient* colors = [[NSGradient alloc] initWithStartingColor:nsColor(gradient.top)
                                                       endingColor:nsColor(gradient.bottom)];
    [colors drawInBezierPath:path angle:downwards];
}

}  // namespace

bool isVisible(const Background& background) {
    return !std::holds_alternative<std::monostate>(background.fill) ||
           !std::holds_alternative<std::monostate>(background.hoverFill) || background.border.has_value();
}

}  // namespace thermopix

@interface ThermopixBackgroundView ()
- (void)showMaterial:(bool)isShown;
@end

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
    [self showMaterial:thermopix::isSidebar(background)];
    [self updateTrackingAreas];
    self.needsDisplay = YES;
}

- (void)showMaterial:(bool)isShown {
    if (isShown && _material == nil) {
        _material = [[NSVisualEffectView alloc] initWithFrame:self.bounds];
        _material.material = NSVisualEffectMaterialSidebar;
        _material.blendingMode = NSVisualEffectBlendingModeBehindWindow;
        _material.state = NSVisualEffectStateFollowsWindowActiveState;
        _material.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
        [self addSubview:_material];
    } else if (!isShown && _material != nil) {
        [_material removeFromSuperview];
        _material = nil;
    }
}

- (BOOL)isFlipped {
    return YES;
}

// A gradient is drawn; everything else is left to the layer, which knows continuous corners.
- (BOOL)wantsUpdateLayer {
    return std::holds_alternative<thermopix::Gradient>(_background.fill) ? NO : YES;
}

- (void)updateLayer {
    const bool isAtRest = !std::holds_alternative<std::monostate>(_background.fill) || _hovering == NO;
    const auto role = thermopix::roleOf(isAtRest ? _background.fill : _background.hoverFill);
    CALayer* layer = self.layer;
    layer.cornerRadius = _background.cornerRadius;
    layer.cornerCurve = kCACornerCurveContinuous;
    layer.backgroundColor = role ? thermopix::nsColor(*role).CGColor : nullptr;
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
    thermopix::drawGradient(*gradient, path);
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
    if (std::holds_alternative<std::monostate>(_background.hoverFill)) {
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
