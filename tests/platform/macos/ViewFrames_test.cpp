#include "platform/macos/settings/ViewFrames.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

TEST(ViewFramesTest, AFrameIsCountedFromItsParentsTopLeft) {
    const ViewNode stack;
    const PlacedNode parent{&stack, {100, 40, 300, 200}, {}};
    const PlacedNode child{&stack, {112, 52, 50, 20}, {}};
    EXPECT_EQ(frameInParent(parent, child), (Frame{12, 12, 50, 20}));
}

TEST(ViewFramesTest, WhatAScrollHoldsKeepsItsFrameInTheContent) {
    ViewNode scroll;
    scroll.kind = ViewKind::scroll;
    const ViewNode content;
    const PlacedNode parent{&scroll, {180, 0, 540, 520}, {}};
    const PlacedNode child{&content, {0, 0, 540, 900}, {}};
    EXPECT_EQ(frameInParent(parent, child), (Frame{0, 0, 540, 900}));
}

TEST(ViewFramesTest, FramesOfALaidOutTreeAddUpToTheirPlaceInTheWindow) {
    ViewNode leaf;
    leaf.kind = ViewKind::text;
    ViewNode inner;
    inner.padding = Insets::all(10);
    inner.children = {leaf};
    ViewNode root;
    root.padding = {.top = 5, .leading = 7, .bottom = 0, .trailing = 0};
    root.children = {inner};
    const auto measure = [](const ViewNode&, double) { return Size{30, 12}; };
    const PlacedNode placed = layOut(root, {200, 100}, measure);

    const PlacedNode& first = placed.children.at(0);
    const PlacedNode& second = first.children.at(0);
    EXPECT_EQ(frameInParent(placed, first).x + frameInParent(first, second).x, 17);
    EXPECT_EQ(frameInParent(placed, first).y + frameInParent(first, second).y, 15);
}

}  // namespace
}  // namespace thermopix
