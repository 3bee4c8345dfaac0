#include "shell/ViewLayout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace thermopix {

namespace {

constexpr double hairline = 1;

class Layout {
public:
    explicit Layout(MeasureLeaf measure) : measure_(measure) {}

    [[nodiscard]] PlacedNode place(const ViewNode& node, const Frame& frame) {
        PlacedNode placed{&node, frame, {}};
        const Frame content = inset(frame, node.padding);
        switch (node.kind) {
            case ViewKind::scroll:
                placeScrolled(node, content, placed);
                break;
            case ViewKind::stack:
            case ViewKind::button:
                placeChildren(node, content, placed);
                break;
            default:
                break;
        }
        return placed;
    }

private:
    static Frame inset(const Frame& frame, const Insets& insets) {
        return {frame.x + insets.leading, frame.y + insets.top,
                std::max(0.0, frame.width - insets.leading - insets.trailing),
                std::max(0.0, frame.height - insets.top - insets.bottom)};
    }

    // A stack is as greedy along its own axis as what is in it.
    static bool takesWhatIsLeft(const ViewNode& node, Axis axis) {
        if (node.kind == ViewKind::stack && axis == Axis::vertical) {
            return node.axis == Axis::vertical && !node.height &&
                   std::any_of(node.children.begin(), node.children.end(),
                               [](const ViewNode& child) { return takesWhatIsLeft(child, Axis::vertical); });
        }
        if (node.kind == ViewKind::spacer) {
            return true;
        }
        if (node.kind == ViewKind::scroll) {
            return axis == Axis::vertical ? !node.height : !node.width;
        }
        return axis == Axis::horizontal && !node.width && (node.fillsWidth || node.wraps);
    }

    // The size that the node asks for when it may be this wide.
    [[nodiscard]] Size wanted(const ViewNode& node, double available) {
        const double outer = node.width.value_or(available);
        const double inner = std::max(0.0, outer - node.padding.leading - node.padding.trailing);
        Size size = contentSize(node, inner);
        size.width += node.padding.leading + node.padding.trailing;
        size.height += node.padding.top + node.padding.bottom;
        if (node.width || node.fillsWidth) {
            size.width = outer;
        }
        size.height = std::max(node.height.value_or(size.height), node.minHeight);
        return size;
    }

    [[nodiscard]] Size contentSize(const ViewNode& node, double available) {
        switch (node.kind) {
            case ViewKind::stack:
                return stackSize(node, available);
            case ViewKind::button:
                return node.children.empty() ? leafSize(node, available) : stackSize(node, available);
            case ViewKind::pixelImage:
                return {node.image.width(), node.image.height()};
            case ViewKind::divider:
                return {hairline, hairline};
            case ViewKind::spacer:
            case ViewKind::scroll:
                return {};
            case ViewKind::text:
            case ViewKind::symbol:
            case ViewKind::toggle:
            case ViewKind::picker:
                return leafSize(node, available);
        }
        return {};
    }

    // Whole points, so that nothing is drawn between device pixels.
    [[nodiscard]] Size leafSize(const ViewNode& leaf, double available) {
        const Size size = measure_(leaf, available);
        return {std::ceil(size.width), std::ceil(size.height)};
    }

    [[nodiscard]] Size stackSize(const ViewNode& stack, double available) {
        const auto widths = childWidths(stack, available);
        Size size;
        for (std::size_t i = 0; i < stack.children.size(); ++i) {
            const Size child = wanted(stack.children[i], widths[i]);
            const double childWidth = stack.axis == Axis::horizontal ? widths[i] : child.width;
            if (stack.axis == Axis::horizontal) {
                size.width += childWidth;
                size.height = std::max(size.height, child.height);
            } else {
                size.width = std::max(size.width, childWidth);
                size.height += child.height;
            }
        }
        const double gaps = stack.children.empty() ? 0 : stack.spacing * static_cast<double>(stack.children.size() - 1);
        (stack.axis == Axis::horizontal ? size.width : size.height) += gaps;
        return size;
    }

    // How wide each child of a stack may be: all of it in a vertical stack; in a horizontal one what it asks for, and
    // an equal share of the rest for those that take what is left.
    [[nodiscard]] std::vector<double> childWidths(const ViewNode& stack, double available) {
        std::vector<double> widths(stack.children.size(), available);
        if (stack.axis == Axis::vertical) {
            return widths;
        }
        double left = available;
        std::size_t sharing = 0;
        for (std::size_t i = 0; i < stack.children.size(); ++i) {
            left -= i == 0 ? 0 : stack.spacing;
            if (takesWhatIsLeft(stack.children[i], Axis::horizontal)) {
                ++sharing;
            } else {
                widths[i] = wanted(stack.children[i], available).width;
                left -= widths[i];
            }
        }
        for (std::size_t i = 0; i < stack.children.size(); ++i) {
            if (takesWhatIsLeft(stack.children[i], Axis::horizontal)) {
                widths[i] = std::floor(std::max(0.0, left) / static_cast<double>(sharing));
            }
        }
        return widths;
    }

    void placeChildren(const ViewNode& stack, const Frame& content, PlacedNode& placed) {
        const auto widths = childWidths(stack, content.width);
        const double heightLeft = stack.axis == Axis::vertical ? heightToShare(stack, content, widths) : 0;
        double along = stack.axis == Axis::horizontal ? content.x : content.y;
        for (std::size_t i = 0; i < stack.children.size(); ++i) {
            const ViewNode& child = stack.children[i];
            Size size = wanted(child, widths[i]);
            Frame frame;
            if (stack.axis == Axis::horizontal) {
                size.width = widths[i];
                const bool fills = child.kind == ViewKind::divider ||
                                   (child.kind != ViewKind::spacer && takesWhatIsLeft(child, Axis::vertical));
                size.height = fills ? content.height : size.height;
                frame = {along, across(stack.alignment, content.y, content.height, size.height), size.width,
                         size.height};
                along += size.width + stack.spacing;
            } else {
                const bool fills = child.kind == ViewKind::divider || child.kind == ViewKind::scroll;
                size.width = fills ? content.width : std::min(size.width, content.width);
                size.height += takesWhatIsLeft(child, Axis::vertical) ? heightLeft : 0;
                frame = {across(stack.alignment, content.x, content.width, size.width), along, size.width, size.height};
                along += size.height + stack.spacing;
            }
            placed.children.push_back(place(child, frame));
        }
    }

    // How much taller than on its own each child becomes that takes what is left.
    [[nodiscard]] double heightToShare(const ViewNode& stack, const Frame& content, const std::vector<double>& widths) {
        double left = content.height;
        std::size_t sharing = 0;
        for (std::size_t i = 0; i < stack.children.size(); ++i) {
            left -= wanted(stack.children[i], widths[i]).height + (i == 0 ? 0 : stack.spacing);
            sharing += takesWhatIsLeft(stack.children[i], Axis::vertical) ? 1U : 0U;
        }
        return sharing == 0 ? 0 : std::floor(std::max(0.0, left) / static_cast<double>(sharing));
    }

    static double across(Alignment alignment, double start, double room, double size) {
        switch (alignment) {
            case Alignment::leading:
                return start;
            case Alignment::center:
                return start + std::floor((room - size) / 2);
            case Alignment::trailing:
                return start + room - size;
        }
        return start;
    }

    void placeScrolled(const ViewNode& scroll, const Frame& content, PlacedNode& placed) {
        for (const ViewNode& child : scroll.children) {
            const double height = std::max(wanted(child, content.width).height, content.height);
            placed.children.push_back(place(child, {0, 0, content.width, height}));
        }
    }

    MeasureLeaf measure_;
};

}  // namespace

PlacedNode layOut(const ViewNode& root, Size size, MeasureLeaf measure) {
    return Layout(measure).place(root, {0, 0, size.width, size.height});
}

}  // namespace thermopix
