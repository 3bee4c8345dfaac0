#include "platform/macos/settings/LeafSizes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace thermopix {
namespace {

class LeafSizesTest : public testing::Test {
protected:
    Size size(const ViewNode& leaf, double width) {
        return sizes.size(leaf, width, [this](const ViewNode& node, double room) {
            ++measured;
            return Size{static_cast<double>(node.text.size()), room};
        });
    }

    static ViewNode text(std::string words) {
        ViewNode leaf;
        leaf.kind = ViewKind::text;
        leaf.text = std::move(words);
        return leaf;
    }

    LeafSizes sizes;
    int measured = 0;
};

TEST_F(LeafSizesTest, ALeafIsMeasuredOnce) {
    EXPECT_EQ(size(text("Readout"), 100), (Size{7, 100}));
    EXPECT_EQ(size(text("Readout"), 100), (Size{7, 100}));
    EXPECT_EQ(measured, 1);
}

TEST_F(LeafSizesTest, OnlyTextThatWrapsDependsOnItsWidth) {
    EXPECT_EQ(size(text("General"), 100), size(text("General"), 50));
    ViewNode wrapping = text("General");
    wrapping.wraps = true;
    EXPECT_EQ(size(wrapping, 100).height, 100);
    EXPECT_EQ(size(wrapping, 50).height, 50);
    EXPECT_EQ(measured, 3);
}

TEST_F(LeafSizesTest, EverythingThatChangesTheSizeIsMeasuredAnew) {
    ViewNode leaf = text("Unit");
    (void)size(leaf, 100);
    const std::vector<std::function<void()>> changes{
        [&] { leaf.text = "Style"; },
        [&] { leaf.textStyle.points = 22; },
        [&] { leaf.textStyle.isSemibold = true; },
        [&] { leaf.textStyle.letterSpacing = 0.6; },
        [&] { leaf.textStyle.lineSpacing = 2; },
        [&] { leaf.kind = ViewKind::picker; },
        [&] { leaf.pickerStyle = PickerStyle::segmented; },
        [&] {
            leaf.items = {{"Compact", "compact"}};
        },
        [&] {
            leaf.items = {{"Comp", "compact"}, {"act", "large"}};
        },
        [&] { leaf.hidesLabel = true; },
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        changes[i]();
        (void)size(leaf, 100);
        EXPECT_EQ(measured, static_cast<int>(i) + 2) << "after change " << i;
    }
}

TEST_F(LeafSizesTest, WhatDoesNotChangeTheSizeIsNotMeasuredAgain) {
    ViewNode leaf = text("Unit");
    (void)size(leaf, 100);
    leaf.color = RoleColor{ColorRole::accent};
    leaf.identifier = "prefs.unit";
    (void)size(leaf, 100);
    EXPECT_EQ(measured, 1);
}

TEST_F(LeafSizesTest, TextsThatChangeForeverDoNotFillTheMemory) {
    for (int i = 0; i < 2000; ++i) {
        (void)size(text(std::to_string(i)), 100);
    }
    EXPECT_EQ(measured, 2000);
    EXPECT_EQ(size(text("1999"), 100).width, 4);
    EXPECT_EQ(measured, 2000) << "the newest is still remembered";
}

}  // namespace
}  // namespace thermopix
