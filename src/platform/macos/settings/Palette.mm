#include "platform/macos/settings/Palette.h"

namespace thermopix {

namespace {

constexpr CGFloat cardOpacity = 0.05;

NSColor* roleColor(ColorRole role) {
    switch (role) {
        case ColorRole::primary:
            return NSColor.labelColor;
        case ColorRole::secondary:
            return NSColor.secondaryLabelColor;
        case ColorRole::tertiary:
            return NSColor.tertiaryLabelColor;
        case ColorRole::accent:
            return NSColor.controlAccentColor;
        case ColorRole::onAccent:
            return NSColor.alternateSelectedControlTextColor;
        case ColorRole::separator:
            return NSColor.separatorColor;
        case ColorRole::card:
            return [NSColor.labelColor colorWithAlphaComponent:cardOpacity];
        case ColorRole::sidebar:
            break;
    }
    // What shows through is the sidebar's material.
    return NSColor.clearColor;
}

CGFloat part(std::uint8_t component) {
    return component / CGFloat{255};
}

}  // namespace

NSColor* nsColor(const RoleColor& color) {
    NSColor* plain = roleColor(color.role);
    return color.opacity < 1 ? [plain colorWithAlphaComponent:plain.alphaComponent * color.opacity] : plain;
}

NSColor* nsColor(const RgbaColor& color) {
    return [NSColor colorWithSRGBRed:part(color.red)
                               green:part(color.green)
                                blue:part(color.blue)
                               alpha:part(color.alpha)];
}

NSColor* nsColor(const Color& color) {
    if (const auto* role = std::get_if<RoleColor>(&color)) {
        return nsColor(*role);
    }
    return nsColor(std::get<RgbaColor>(color));
}

}  // namespace thermopix
