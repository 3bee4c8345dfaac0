#pragma once

#include <optional>

#include "pixels/Rgba.h"
#include "tray/TrayChoices.h"
#include "tray/TrayHost.h"

/// The colours of the status item in trays, which tint no picture. Pure functions.
namespace thermopix {

/// How applications are asked to look.
enum class ColorScheme { noPreference, dark, light };

/// What is known about the look of the desktop.
struct DesktopColors {
    ColorScheme scheme = ColorScheme::noPreference;
    /// Whether the XFCE panel is dark whatever the applications look like; none when it does not say.
    std::optional<bool> hasDarkXfcePanel;

    friend bool operator==(const DesktopColors&, const DesktopColors&) = default;
};

/// Opaque colours of the inks.
struct TrayInk {
    RgbaColor full;
    /// None leaves unlit cells out: no colour is fainter than `mid` on light and on dark bars alike.
    std::optional<RgbaColor> ghost;

    friend bool operator==(const TrayInk&, const TrayInk&) = default;
};

[[nodiscard]] TrayInk trayInk(const TrayInkChoice& choice, TrayInkRule rule, const DesktopColors& colors);

/// Relative luminance, 0 to 1, and contrast ratio, 1 to 21, as WCAG 2 defines them; alpha is ignored.
[[nodiscard]] double relativeLuminance(RgbaColor color);
[[nodiscard]] double contrastRatio(RgbaColor a, RgbaColor b);

}  // namespace thermopix
