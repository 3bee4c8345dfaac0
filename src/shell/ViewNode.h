#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "base/Enumeration.h"
#include "pixels/Rgba.h"
#include "pixels/StatusImage.h"

namespace thermopix {

/// A view as a value: what a window shows, free of any toolkit. Sizes are in points.
enum class ViewKind {
    /// Children one after another along `axis`.
    stack,
    text,
    /// A system symbol, by name.
    symbol,
    /// Pixel art, tinted with the node's colour.
    pixelImage,
    /// With children it is plain and they are its label; without it is the platform's push button.
    button,
    toggle,
    picker,
    /// A hairline across its stack.
    divider,
    /// Takes up what its stack has left.
    spacer,
    /// Scrolls its one child vertically.
    scroll,
};

template <>
struct EnumerationTable<ViewKind> : CaseNames<ViewKind::scroll> {};

enum class Axis { horizontal, vertical };

template <>
struct EnumerationTable<Axis> : CaseNames<Axis::vertical> {};

/// Across a stack's axis.
enum class Alignment { leading, center, trailing };

template <>
struct EnumerationTable<Alignment> : CaseNames<Alignment::trailing> {};

enum class PickerStyle { segmented, menu };

template <>
struct EnumerationTable<PickerStyle> : CaseNames<PickerStyle::menu> {};

/// A colour by its purpose; the platform's palette says what it is.
enum class ColorRole { primary, secondary, tertiary, accent, onAccent, separator, sidebar, card };

template <>
struct EnumerationTable<ColorRole> : CaseNames<ColorRole::card> {};

struct RoleColor {
    ColorRole role = ColorRole::primary;
    /// 0 to 1, of the role's own opacity.
    double opacity = 1;

    friend bool operator==(const RoleColor&, const RoleColor&) = default;
};

/// From top to bottom.
struct Gradient {
    RgbaColor top;
    RgbaColor bottom;

    friend bool operator==(const Gradient&, const Gradient&) = default;
};

/// A colour by purpose, or one that is the same on every palette.
using Color = std::variant<RoleColor, RgbaColor>;
using Fill = std::variant<std::monostate, RoleColor, Gradient>;

struct Background {
    Fill fill;
    /// Shown while the pointer is over the node, in place of an empty `fill`.
    Fill hoverFill;
    double cornerRadius = 0;
    std::optional<RgbaColor> border;
    double borderWidth = 0;

    friend bool operator==(const Background&, const Background&) = default;
};

struct TextStyle {
    double points = 13;
    bool isSemibold = false;
    double letterSpacing = 0;
    double lineSpacing = 0;

    friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

struct Insets {
    double top = 0;
    double leading = 0;
    double bottom = 0;
    double trailing = 0;

    [[nodiscard]] static constexpr Insets all(double points) { return {points, points, points, points}; }

    friend bool operator==(const Insets&, const Insets&) = default;
};

struct PickerItem {
    std::string title;
    std::string value;

    friend bool operator==(const PickerItem&, const PickerItem&) = default;
};

/// What assistive technology hears of a node beyond its text.
struct Accessibility {
    /// In place of the text; empty to keep the text.
    std::string label;
    /// One element that speaks for all its children.
    bool hidesChildren = false;
    bool isSelected = false;

    friend bool operator==(const Accessibility&, const Accessibility&) = default;
};

struct ViewNode {
    ViewKind kind = ViewKind::stack;
    /// Names the node to tests, to assistive technology and in its events; empty for none.
    std::string identifier;
    /// The text, a control's title, or the symbol's name.
    std::string text;
    TextStyle textStyle;
    Color color = RoleColor{};
    /// Text takes as many lines as its width asks for.
    bool wraps = false;

    Axis axis = Axis::vertical;
    Alignment alignment = Alignment::leading;
    double spacing = 0;
    Insets padding;
    std::optional<double> width;
    std::optional<double> height;
    double minHeight = 0;
    /// As wide as its stack allows.
    bool fillsWidth = false;
    Background background;

    StatusImage image;
    bool isOn = false;
    PickerStyle pickerStyle = PickerStyle::menu;
    /// The title stays with assistive technology only.
    bool hidesLabel = false;
    std::vector<PickerItem> items;
    /// The value of the chosen item.
    std::string selection;

    Accessibility accessibility;
    std::vector<ViewNode> children;

    friend bool operator==(const ViewNode&, const ViewNode&) = default;
};

/// The user operated a control: a button without value, a toggle with "true" or "false", a picker with the value of
/// the chosen item.
struct ViewEvent {
    std::string identifier;
    std::string value;

    friend bool operator==(const ViewEvent&, const ViewEvent&) = default;
};

}  // namespace thermopix
