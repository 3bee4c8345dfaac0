#include "platform/macos/drawing/AppKitCanvas.h"

#include <memory>

#include "platform/macos/drawing/StatusImageDrawing.h"
#include "platform/macos/system/Text.h"

namespace thermopix {

namespace {

class AppKitCanvas final : public StatusImageCanvas {
public:
    AppKitCanvas(NSGraphicsContext* context, NSColor* color) : context_(context), color_(color) { [color_ setFill]; }

    void setAntialiasing(bool antialiases) override { context_.shouldAntialias = antialiases ? YES : NO; }

    void fillRectangle(const Frame& frame, double opacity) override {
        withInk(opacity, [&] { [NSBezierPath fillRect:NSMakeRect(frame.x, frame.y, frame.width, frame.height)]; });
    }

    void fillOval(const Frame& frame, double opacity) override {
        withInk(opacity, [&] {
            [[NSBezierPath bezierPathWithOvalInRect:NSMakeRect(frame.x, frame.y, frame.width, frame.height)] fill];
        });
    }

private:
    // The colour of full ink stays set; fainter ink is the exception.
    template <typename Fill>
    void withInk(double opacity, Fill fill) {
        if (opacity >= 1) {
            fill();
            return;
        }
        [NSGraphicsContext saveGraphicsState];
        context_.compositingOperation = NSCompositingOperationSourceOver;
        [[color_ colorWithAlphaComponent:color_.alphaComponent * opacity] setFill];
        fill();
        [NSGraphicsContext restoreGraphicsState];
    }

    NSGraphicsContext* context_;
    NSColor* color_;
};

}  // namespace

void drawInCurrentContext(const StatusImage& image, NSColor* color) {
    NSGraphicsContext* context = NSGraphicsContext.currentContext;
    if (context != nil) {
        AppKitCanvas canvas(context, color);
        drawStatusImage(image, canvas);
    }
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
