#include "settings/ViewOutline.h"

#include <fmt/format.h>

#include <string>

namespace thermopix {

namespace {

std::string_view name(ColorRole role) {
    switch (role) {
        case ColorRole::primary:
            return "primary";
        case ColorRole::secondary:
            return "secondary";
        case ColorRole::tertiary:
            return "tertiary";
        case ColorRole::accent:
            return "accent";
        case ColorRole::onAccent:
            return "onAccent";
        case ColorRole::separator:
            return "separator";
        case ColorRole::sidebar:
            return "sidebar";
        case ColorRole::card:
            return "card";
    }
    return "?";
}

std::string describe(const RoleColor& color) {
    return color.opacity < 1 ? fmt::format("{}@{}", name(color.role), color.opacity) : std::string(name(color.role));
}

std::string describe(const RgbaColor& color) {
    return fmt::format("#{:02x}{:02x}{:02x}{:02x}", color.red, color.green, color.blue, color.alpha);
}

std::string describe(const Gradient& gradient) {
    return describe(gradient.top) + ".." + describe(gradient.bottom);
}

std::string describe(std::monostate) {
    return "none";
}

template <typename Choice>
std::string describeChoice(const Choice& choice) {
    return std::visit([](const auto& held) { return describe(held); }, choice);
}

class Line {
public:
    explicit Line(const ViewNode& node) : node_(node) {}

    [[nodiscard]] std::string text() {
        line_ = rawValue(node_.kind);
        addContent();
        addLayout();
        addBackground();
        addAccessibility();
        return line_;
    }

private:
    void add(std::string_view word) { line_ += fmt::format(" {}", word); }
    void add(std::string_view key, std::string_view value) { line_ += fmt::format(" {}={}", key, value); }
    void addNumber(std::string_view key, double value) { add(key, fmt::format("{}", value)); }
    void addFlag(std::string_view key, bool value) {
        if (value) {
            add(key);
        }
    }

    void addContent() {
        const ViewNode fresh;
        if (!node_.identifier.empty()) {
            add("id", node_.identifier);
        }
        if (!node_.text.empty()) {
            add(fmt::format("\"{}\"", node_.text));
            addNumber("pt", node_.textStyle.points);
        }
        addFlag("semibold", node_.textStyle.isSemibold);
        if (node_.textStyle.letterSpacing != 0) {
            addNumber("tracking", node_.textStyle.letterSpacing);
        }
        if (node_.color != fresh.color) {
            add("color", describeChoice(node_.color));
        }
        addFlag("wraps", node_.wraps);
        if (node_.kind == ViewKind::pixelImage) {
            add(fmt::format("{}x{}@{}{}", node_.image.bitmap.width(), node_.image.bitmap.height(), node_.image.cell,
                            node_.image.isRound ? " round" : ""));
            add(fmt::format("\"{}\"", node_.image.description.value_or("")));
        }
        if (node_.kind == ViewKind::toggle) {
            add(node_.isOn ? "on" : "off");
        }
        if (node_.kind == ViewKind::picker) {
            add(node_.pickerStyle == PickerStyle::segmented ? "segmented" : "menu");
            addFlag("labelHidden", node_.hidesLabel);
            for (const auto& item : node_.items) {
                add(fmt::format("[{}{}:{}]", item.value == node_.selection ? "*" : "", item.value, item.title));
            }
        }
    }

    void addLayout() {
        addFlag("horizontal", node_.axis == Axis::horizontal);
        addFlag("centered", node_.alignment == Alignment::center);
        if (node_.spacing != 0) {
            addNumber("spacing", node_.spacing);
        }
        if (node_.padding != Insets{}) {
            add("padding", fmt::format("{},{},{},{}", node_.padding.top, node_.padding.leading, node_.padding.bottom,
                                       node_.padding.trailing));
        }
        if (node_.width) {
            addNumber("width", *node_.width);
        }
        if (node_.height) {
            addNumber("height", *node_.height);
        }
        if (node_.minHeight != 0) {
            addNumber("minHeight", node_.minHeight);
        }
        addFlag("fillsWidth", node_.fillsWidth);
    }

    void addBackground() {
        const auto& background = node_.background;
        if (background.fill != Fill{}) {
            add("fill", describeChoice(background.fill));
        }
        if (background.hoverFill != Fill{}) {
            add("hover", describeChoice(background.hoverFill));
        }
        if (background.cornerRadius != 0) {
            addNumber("radius", background.cornerRadius);
        }
        if (background.border) {
            add("border", fmt::format("{}/{}", describe(*background.border), background.borderWidth));
        }
    }

    void addAccessibility() {
        if (!node_.accessibility.label.empty()) {
            add(fmt::format("says \"{}\"", node_.accessibility.label));
        }
        addFlag("childrenHidden", node_.accessibility.hidesChildren);
        addFlag("selected", node_.accessibility.isSelected);
    }

    const ViewNode& node_;
    std::string line_;
};

void append(std::string& text, const ViewNode& node, std::size_t depth) {
    text += std::string(2 * depth, ' ') + Line(node).text() + "\n";
    for (const auto& child : node.children) {
        append(text, child, depth + 1);
    }
}

}  // namespace

std::string outline(const ViewNode& node) {
    std::string text;
    append(text, node, 0);
    return text;
}

}  // namespace thermopix
