#include "tray/TrayInk.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "pixels/Ink.h"

namespace thermopix {
namespace {

constexpr RgbaColor white{255, 255, 255};
constexpr RgbaColor black{0, 0, 0};
/// As far from black as from white: more than 4.5 to 1 from either.
constexpr RgbaColor midGray{118, 118, 118};

/// The grounds that ghost ink is mixed for: bars as they come.
constexpr RgbaColor darkBar{43, 43, 43};
constexpr RgbaColor lightBar{235, 235, 235};

std::uint8_t mixed(std::uint8_t top, std::uint8_t ground, double opacity) {
    return static_cast<std::uint8_t>(std::lround(top * opacity + ground * (1 - opacity)));
}

RgbaColor ghostOf(RgbaColor ink, RgbaColor ground) {
    const double opacity = alpha(Ink::ghost);
    return {mixed(ink.red, ground.red, opacity), mixed(ink.green, ground.green, opacity),
            mixed(ink.blue, ground.blue, opacity)};
}

TrayInk inkOf(RgbaColor color) {
    const bool isForDarkBars = contrastRatio(color, black) > contrastRatio(color, white);
    return {color, ghostOf(color, isForDarkBars ? darkBar : lightBar)};
}

TrayInkTone tone(TrayInkRule rule, const DesktopColors& colors) {
    const bool isDarkBar = rule == TrayInkRule::light ||
                           (rule == TrayInkRule::xfcePanel && colors.hasDarkXfcePanel.value_or(true)) ||
                           colors.scheme == ColorScheme::dark;
    if (isDarkBar) {
        return TrayInkTone::light;
    }
    return colors.scheme == ColorScheme::light ? TrayInkTone::dark : TrayInkTone::mid;
}

double linear(std::uint8_t channel) {
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

}  // namespace

TrayInk trayInk(const TrayInkChoice& choice, TrayInkRule rule, const DesktopColors& colors) {
    if (choice.color) {
        return inkOf(*choice.color);
    }
    switch (choice.tone == TrayInkTone::automatic ? tone(rule, colors) : choice.tone) {
        case TrayInkTone::light:
            return inkOf(white);
        case TrayInkTone::dark:
            return inkOf(black);
        case TrayInkTone::mid:
        case TrayInkTone::automatic:
            break;
    }
    return {midGray, std::nullopt};
}

double relativeLuminance(RgbaColor color) {
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

double contrastRatio(RgbaColor a, RgbaColor b) {
    const auto [darker, lighter] = std::minmax({relativeLuminance(a), relativeLuminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace thermopix
