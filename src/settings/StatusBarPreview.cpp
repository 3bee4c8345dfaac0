#include "settings/StatusBarPreview.h"

#include <string>

#include "pixels/PixelRasterizer.h"
#include "pixels/StatusImageRenderer.h"
#include "settings/Identifiers.h"
#include "settings/ViewBuilding.h"

namespace thermopix {

namespace {

struct Bar {
    Gradient gradient;
    RgbaColor outline;
    RgbaColor ink;
};

constexpr Bar lightBar{{{250, 250, 252, 255}, {232, 232, 238, 255}}, {0, 0, 0, 46}, {0, 0, 0, 217}};
constexpr Bar darkBar{{{58, 58, 64, 255}, {38, 38, 43, 255}}, {255, 255, 255, 46}, {255, 255, 255, 235}};

constexpr double barSpacing = 10;
constexpr double barCornerRadius = 6;
constexpr double outlineWidth = 0.5;

ViewNode barNode(const Bar& bar, const StatusImage& image) {
    ViewNode node = Views::horizontal(0, {Views::spacer(), Views::pixelImage(image, bar.ink), Views::spacer()});
    node.height = menuBarThickness;
    node.fillsWidth = true;
    node.background = {.fill = bar.gradient,
                       .hoverFill = {},
                       .cornerRadius = barCornerRadius,
                       .border = bar.outline,
                       .borderWidth = outlineWidth};
    return node;
}

}  // namespace

ViewNode StatusBarPreview::node() const {
    const auto image = StatusImageRenderer::image(display, appearance);
    ViewNode preview = Views::horizontal(barSpacing, {barNode(lightBar, image), barNode(darkBar, image)});
    preview.identifier = Identifiers::preview;
    preview.fillsWidth = true;
    const bool includesFlame = !sprite(appearance.pet, display.mood, false).has_value();
    preview.accessibility.label =
        "Preview: " + PixelRasterizer::text(display, appearance.showsUnitLetter, includesFlame);
    preview.accessibility.hidesChildren = true;
    return preview;
}

}  // namespace thermopix
