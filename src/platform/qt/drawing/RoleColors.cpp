#include "platform/qt/drawing/RoleColors.h"

namespace thermopix::RoleColors {

namespace {

constexpr double secondaryOpacity = 0.66;
constexpr double tertiaryOpacity = 0.5;
constexpr double separatorOpacity = 0.12;
constexpr double sidebarShade = 0.05;
constexpr double darkCardTint = 0.06;
constexpr double darkButtonTint = 0.18;

QColor shade(const QPalette& palette, QPalette::ColorRole role) {
    return palette.color(QPalette::Active, role);
}

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(color.alphaF() * static_cast<float>(opacity));
    return color;
}

QColor mixed(const QColor& ground, const QColor& top, double share) {
    const auto channel = [share](int from, int to) { return static_cast<int>(from + (to - from) * share); };
    return {channel(ground.red(), top.red()), channel(ground.green(), top.green()), channel(ground.blue(), top.blue())};
}

// A ground above the window's.
QColor raised(const QPalette& palette, double darkTint) {
    return isDark(palette) ? mixed(shade(palette, QPalette::Window), shade(palette, QPalette::WindowText), darkTint)
                           : shade(palette, QPalette::Base);
}

}  // namespace

bool isDark(const QPalette& palette) {
    return shade(palette, QPalette::Window).lightness() < shade(palette, QPalette::WindowText).lightness();
}

QColor color(ColorRole role, const QPalette& palette) {
    const QColor text = shade(palette, QPalette::WindowText);
    const QColor window = shade(palette, QPalette::Window);
    switch (role) {
        case ColorRole::primary:
            return text;
        case ColorRole::secondary:
            return withOpacity(text, secondaryOpacity);
        case ColorRole::tertiary:
            return withOpacity(text, tertiaryOpacity);
        case ColorRole::accent:
            return shade(palette, QPalette::Highlight);
        case ColorRole::onAccent:
            return shade(palette, QPalette::HighlightedText);
        case ColorRole::separator:
            return withOpacity(text, separatorOpacity);
        case ColorRole::sidebar:
            return mixed(window, text, sidebarShade);
        case ColorRole::card:
            return raised(palette, darkCardTint);
    }
    return text;
}

QColor color(const RoleColor& color, const QPalette& palette) {
    return faded(color.role, color.opacity, palette);
}

QColor color(RgbaColor color) {
    return {color.red, color.green, color.blue, color.alpha};
}

QColor color(const Color& color, const QPalette& palette) {
    if (const auto* role = std::get_if<RoleColor>(&color)) {
        return RoleColors::color(*role, palette);
    }
    return RoleColors::color(std::get<RgbaColor>(color));
}

QColor faded(ColorRole role, double opacity, const QPalette& palette) {
    return withOpacity(color(role, palette), opacity);
}

QColor button(const QPalette& palette) {
    return raised(palette, darkButtonTint);
}

}  // namespace thermopix::RoleColors
