#include "platform/macos/settings/LeafSizes.h"

#include <gtest/gtest.h>

#include <string>

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
    int wanted = 1;
    const auto expectMeasured = [&] {
        (void)size(leaf, 100);
        EXPECT_EQ(measured, wanted++);
    };
    expectMeasured();
    leaf.text = "Style";
    expectMeasured();
    leaf.textStyle.points = 22;
    expectMeasured();
    leaf.textStyle.isSemibold = true;
    expectMeasured();
    leaf.textStyle.letterSpacing = 0.6;
    expectMeasured();
    leaf.textStyle.lineSpacing = 2;
    expectMeasured();
    leaf.kind = ViewKind::picker;
    expectMeasured();
    leaf.pickerStyle = PickerStyle::segmented;
    expectMeasured();
    leaf.items = {{"Compact", "compact"}};
    expectMeasured();
    leaf.items = {{"Comp", "compact"}, {"act", "large"}};
    expectMeasured();
    leaf.hidesLabel = true;
    expectMeasured();
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
