#include "platform/macos/settings/NodeViews.h"

#include <algorithm>

#include "platform/macos/drawing/AppKitCanvas.h"

@implementation ThermopixContainerView

- (BOOL)isFlipped {
    return YES;
}

@end

@implementation ThermopixRowButton

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self != nil) {
        self.title = @"";
        self.bordered = NO;
    }
    return self;
}

- (BOOL)isFlipped {
    return YES;
}

- (void)drawRect:(NSRect)__unused dirtyRect {
}

- (NSView*)hitTest:(NSPoint)point {
    return [super hitTest:point] != nil ? self : nil;
}

- (void)drawFocusRingMask {
    [[NSBezierPath bezierPathWithRoundedRect:self.bounds xRadius:_cornerRadius yRadius:_cornerRadius] fill];
}

- (NSRect)focusRingMaskBounds {
    return self.bounds;
}

@end

@implementation ThermopixPixelView {
    thermopix::StatusImage _image;
    NSColor* _color;
}

- (void)showImage:(const thermopix::StatusImage&)image color:(NSColor*)color {
    _image = image;
    _color = color;
    self.needsDisplay = YES;
}

- (void)drawRect:(NSRect)__unused dirtyRect {
    if (_color != nil) {
        thermopix::drawInCurrentContext(_image, _color);
    }
}

@end

namespace {

constexpr CGFloat labelSpacing = 8;

void place(NSView* view, CGFloat x, NSSize size, CGFloat height) {
    view.frame = [view frameForAlignmentRect:NSMakeRect(x, (height - size.height) / 2, size.width, size.height)];
}

// With the space up to the button; nothing when the title is hidden.
NSSize spaceOf(NSTextField* label) {
    if (label.hidden) {
        return NSZeroSize;
    }
    const NSSize size = label.intrinsicContentSize;
    return NSMakeSize(size.width + labelSpacing, size.height);
}

}  // namespace

@implementation ThermopixMenuPicker

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self != nil) {
        _label = [NSTextField labelWithString:@""];
        _button = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO];
        [self addSubview:_label];
        [self addSubview:_button];
    }
    return self;
}

- (NSSize)intrinsicContentSize {
    const NSSize label = spaceOf(_label);
    const NSSize button = _button.intrinsicContentSize;
    return NSMakeSize(label.width + button.width, std::max(label.height, button.height));
}

- (void)setFrameSize:(NSSize)size {
    [super setFrameSize:size];
    const NSSize label = spaceOf(_label);
    place(_label, 0, NSMakeSize(std::max(CGFloat{0}, label.width - labelSpacing), label.height), size.height);
    place(_button, label.width, _button.intrinsicContentSize, size.height);
}

@end
