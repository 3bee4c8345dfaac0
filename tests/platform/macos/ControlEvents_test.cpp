#include "platform/macos/settings/ControlEvents.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

ViewNode control(ViewKind kind, std::string identifier) {
    ViewNode node;
    node.kind = kind;
    node.identifier = std::move(identifier);
    return node;
}

ViewNode picker() {
    ViewNode node = control(ViewKind::picker, "prefs.unit");
    node.items = {{"Celsius", "celsius"}, {"Fahrenheit", "fahrenheit"}};
    node.selection = "fahrenheit";
    return node;
}

TEST(ControlEventsTest, AButtonSaysItsNameAlone) {
    EXPECT_EQ(controlEvent(control(ViewKind::button, "prefs.quit"), {}), (ViewEvent{"prefs.quit", ""}));
}

TEST(ControlEventsTest, AToggleSaysHowItStandsNow) {
    const ViewNode toggle = control(ViewKind::toggle, "prefs.showInDock");
    EXPECT_EQ(controlEvent(toggle, {.isOn = true, .selectedItem = {}}), (ViewEvent{"prefs.showInDock", "true"}));
    EXPECT_EQ(controlEvent(toggle, {.isOn = false, .selectedItem = {}}), (ViewEvent{"prefs.showInDock", "false"}));
}

TEST(ControlEventsTest, APickerSaysTheValueOfItsItem) {
    EXPECT_EQ(controlEvent(picker(), {.isOn = false, .selectedItem = 0}), (ViewEvent{"prefs.unit", "celsius"}));
}

TEST(ControlEventsTest, APickerWithoutAnItemSaysNothing) {
    EXPECT_EQ(controlEvent(picker(), {}), std::nullopt);
    EXPECT_EQ(controlEvent(picker(), {.isOn = false, .selectedItem = 2}), std::nullopt);
}

TEST(ControlEventsTest, WhatIsNoControlSaysNothing) {
    EXPECT_EQ(controlEvent(control(ViewKind::text, "words"), {}), std::nullopt);
}

TEST(ControlEventsTest, TheChosenItemIsFoundByItsValue) {
    EXPECT_EQ(selectedItem(picker()), 1U);
    ViewNode unknown = picker();
    unknown.selection = "kelvin";
    EXPECT_EQ(selectedItem(unknown), std::nullopt);
}

TEST(ControlEventsTest, ANodeIsFoundByNameAnywhereInTheTree) {
    ViewNode inner;
    inner.children = {picker()};
    ViewNode root;
    root.children = {control(ViewKind::toggle, "prefs.showInDock"), inner};
    const ViewNode* found = findNode(root, "prefs.unit");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->items.size(), 2U);
    EXPECT_EQ(findNode(root, "prefs.size"), nullptr);
    EXPECT_EQ(findNode(root, ""), nullptr) << "nodes without a name are nobody's";
}

}  // namespace
}  // namespace thermopix
