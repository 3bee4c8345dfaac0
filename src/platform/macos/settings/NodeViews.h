#pragma once

#import <AppKit/AppKit.h>

#include "pixels/StatusImage.h"

NS_ASSUME_NONNULL_BEGIN

/// Holds views at frames with their origin at the top left.
@interface ThermopixContainerView : NSView
@end

/// A plain button: what it shows are the views in it.
@interface ThermopixRowButton : NSButton
/// The corner radius of the outline that shows the keyboard's focus.
@property(nonatomic) CGFloat cornerRadius;
@end

/// Pixel art in one colour.
@interface ThermopixPixelView : ThermopixContainerView
- (void)showImage:(const thermopix::StatusImage&)image color:(NSColor*)color;
@end

/// A pop-up button with its title before it.
@interface ThermopixMenuPicker : ThermopixContainerView
@property(nonatomic, readonly) NSTextField* label;
@property(nonatomic, readonly) NSPopUpButton* button;
@end

NS_ASSUME_NONNULL_END
