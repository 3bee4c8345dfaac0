#include "platform/macos/drawing/AppKitCanvas.h"

#include <memory>

#include "platform/macos/drawing/StatusImageDrawing.h"
#include "platform/macos/system/Text.h"

namespace thermopix {

void drawInCurrentContext(const StatusImage& image, NSColor* color) {
    NSGraphicsContext* context = NSGraphicsContext.currentContext;
    if (context == nil) {
        return;
    }
    [color setFill];
    context.shouldAntialias = image.isRound ? YES : NO;
    fillCells(image, [&](const Frame& cell, double opacity) {
        // The colour of full ink stays set; fainter ink is the exception.
        const bool isFaint = opacity < 1;
        if (isFaint) {
            [NSGraphicsContext saveGraphicsState];
            context.compositingOperation = NSCompositingOperationSourceOver;
            [[color colorWithAlphaComponent:color.alphaComponent * opacity] setFill];
        }
        const NSRect square = NSMakeRect(cell.x, cell.y, cell.width, cell.height);
        if (image.isRound) {
            [[NSBezierPath bezierPathWithOvalInRect:square] fill];
        } else {
            [NSBezierPath fillRect:square];
        }
        if (isFaint) {
            [NSGraphicsContext restoreGraphicsState];
        }
    });
}

NSImage* nsImage(const StatusImage& picture) {
    const NSSize size = NSMakeSize(picture.width(), picture.height());
    const auto recipe = std::make_shared<const StatusImage>(picture);
    NSImage* image = [NSImage imageWithSize:size
                                    flipped:YES
                             drawingHandler:^BOOL(NSRect) {
                               drawInCurrentContext(*recipe, NSColor.blackColor);
                               return YES;
                             }];
    [image setTemplate:picture.isTemplate ? YES : NO];
    if (picture.description) {
        image.accessibilityDescription = nsString(*picture.description);
    }
    return image;
}

}  // namespace thermopix
