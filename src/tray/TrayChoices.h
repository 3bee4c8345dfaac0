#pragma once

#include <optional>
#include <string_view>

#include "base/Enumeration.h"
#include "pixels/Rgba.h"

/// What the user decides about the status item on a Linux desktop, beside the settings that every desktop shares.
namespace thermopix {

enum class TrayPlace { automatic, tray, strip, terminal };

template <>
struct EnumerationTable<TrayPlace> : CaseNames<TrayPlace::terminal> {};

enum class TrayShapeChoice { automatic, wide, square };

template <>
struct EnumerationTable<TrayShapeChoice> : CaseNames<TrayShapeChoice::square> {};

/// `mid` shows on light and on dark bars alike.
enum class TrayInkTone { automatic, light, dark, mid };

template <>
struct EnumerationTable<TrayInkTone> : CaseNames<TrayInkTone::mid> {};

struct TrayInkChoice {
    TrayInkTone tone = TrayInkTone::automatic;
    /// Overrules the tone.
    std::optional<RgbaColor> color;

    friend bool operator==(const TrayInkChoice&, const TrayInkChoice&) = default;
};

struct TrayChoices {
    TrayPlace place = TrayPlace::automatic;
    TrayShapeChoice shape = TrayShapeChoice::automatic;
    TrayInkChoice ink;

    friend bool operator==(const TrayChoices&, const TrayChoices&) = default;
};

/// A tone by its raw value, or a colour as #RRGGBB; none for anything else.
[[nodiscard]] std::optional<TrayInkChoice> trayInkChoice(std::string_view text);

}  // namespace thermopix
