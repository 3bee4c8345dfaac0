#pragma once

#include <vector>

#include "base/FunctionView.h"
#include "shell/ViewNode.h"

namespace thermopix {

struct Size {
    double width = 0;
    double height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

/// A rectangle in points, origin top left.
struct Frame {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    friend bool operator==(const Frame&, const Frame&) = default;
};

/// How large a leaf (text, symbol, native control) wants to be when it may be `width` points wide.
using MeasureLeaf = FunctionView<Size(const ViewNode& leaf, double width)>;

/// A node with its place. The frame of a scroll's child, and of everything in it, is relative to the scroll's content;
/// all other frames are relative to the window's content.
struct PlacedNode {
    const ViewNode* node = nullptr;
    Frame frame;
    std::vector<PlacedNode> children;
};

/// Places the tree in a window's content of this size. The nodes stay the caller's and outlive the result.
[[nodiscard]] PlacedNode layOut(const ViewNode& root, Size size, MeasureLeaf measure);

}  // namespace thermopix
