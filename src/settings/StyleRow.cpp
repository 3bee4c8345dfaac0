#include "settings/StyleRow.h"

#include <algorithm>
#include <string>

#include "pixels/StatusImageRenderer.h"
#include "settings/ChoiceRow.h"
#include "settings/Identifiers.h"
#include "settings/ViewBuilding.h"

namespace thermopix {

ViewNode StyleRow::node() const {
    const auto preview = [this](PixelStyle shown) {
        Appearance look = appearance;
        look.style = shown;
        return StatusImageRenderer::image(display, look);
    };
    double widest = 0;
    for (const PixelStyle each : allCases<PixelStyle>()) {
        widest = std::max(widest, preview(each).width());
    }
    return ChoiceRow{.identifier = std::string(Identifiers::style) + std::string(rawValue(style)),
                     .picture = Views::pixelImage(preview(style), RoleColor{ColorRole::primary}),
                     .pictureWidth = widest,
                     .title = title(style),
                     .subtitle = subtitle(style),
                     .isSelected = style == appearance.style}
        .node();
}

}  // namespace thermopix
