#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "messages/Fields.h"
#include "messages/WindowEvent.h"
#include "messages/WindowRequest.h"

/// One message of each kind, in the order of the variants, in which no field has its default value.
namespace thermopix::Messages {

inline StatusImage image() {
    return {.bitmap = PixelBitmap(3, 2, {Ink::full, Ink::none, Ink::ghost, Ink::none, Ink::full, Ink::full}),
            .cell = 2,
            .inset = 0.5,
            .isRound = true,
            .isTemplate = true,
            .description = "52 degrees, “warm”"};
}

inline MenuItem menuItem() {
    MenuItem leaf;
    leaf.kind = MenuItemKind::separator;
    MenuItem item;
    item.kind = MenuItemKind::submenu;
    item.title = "Style";
    item.textStyle = MenuTextStyle::headline;
    item.key = "h";
    item.modifiers = KeyModifiers::commandOption;
    item.symbol = "gearshape";
    item.identifier = "menu.style";
    item.representedValue = "";
    item.isOn = true;
    item.isEnabled = false;
    item.isHidden = true;
    item.action = MenuAction::selectStyle;
    item.submenu = {.title = "Styles", .items = {leaf, MenuItem{}}, .listsWindows = true};
    return item;
}

inline Menu menu() {
    return {.title = "Thermopix", .items = {menuItem(), MenuItem{}}, .listsWindows = true};
}

inline ViewNode view() {
    ViewNode node;
    node.kind = ViewKind::picker;
    node.identifier = "prefs.unit";
    node.text = "Unit\n\"°\"";
    node.textStyle = {.points = 11, .isSemibold = true, .letterSpacing = 0.6, .lineSpacing = 2};
    node.color = RgbaColor{1, 2, 3, 4};
    node.wraps = true;
    node.axis = Axis::horizontal;
    node.alignment = Alignment::trailing;
    node.spacing = 22;
    node.padding = {.top = 1, .leading = 2, .bottom = 3, .trailing = 4};
    node.width = 0;
    node.height = 520;
    node.minHeight = 28;
    node.fillsWidth = true;
    node.background = {.fill = Gradient{.top = {250, 251, 252, 253}, .bottom = {5, 6, 7, 8}},
                       .hoverFill = RoleColor{.role = ColorRole::accent, .opacity = 0.06},
                       .cornerRadius = 6,
                       .border = RgbaColor{},
                       .borderWidth = 0.5};
    node.image = image();
    node.isOn = true;
    node.pickerStyle = PickerStyle::segmented;
    node.hidesLabel = true;
    node.items = {{.title = "Celsius (°C)", .value = "celsius"}, {}};
    node.selection = "celsius";
    node.accessibility = {.label = "Unit of the readout", .hidesChildren = true, .isSelected = true};
    ViewNode child;
    child.children.emplace_back().kind = ViewKind::spacer;
    node.children = {ViewNode{}, child};
    return node;
}

inline std::vector<WindowRequest> requests() {
    return {
        ShowWindow{7, {.title = "Settings", .width = 720, .height = 520.5, .identifier = "prefs.window"}},
        SetWindowContent{7, view()},
        OrderWindowFront{4294967295},
        DiscardWindow{7},
        SetMainMenu{menu()},
        SetActivationPolicy{ActivationPolicy::regular},
        ShowAboutPanel{
            {.applicationName = "Thermopix",
             .version = "1.2 (34)",
             .credits = "First.\nSecond — last.",
             .creditsStyle = {.fontSize = 12, .isSecondary = false, .isCentered = false, .extraLineSpacing = 3}}},
        UseActivationToken{"token_TIME42"},
        OpenPopupMenu{menu(), ScreenPoint{-1920, 24}},
        UpdatePopupMenu{menu()},
        SetStripReadout{image()},
        SetStripMenu{menu()},
        ShowStrip{ScreenPoint{}},
        HideStrip{},
    };
}

inline std::vector<WindowEvent> events() {
    return {
        Hello{-2147483648},
        ControlOperated{7, {.identifier = "prefs.unit", .value = "fahrenheit"}},
        WindowVisibilityChanged{7, true, true},
        WindowWillClose{7},
        MenuWillOpen{MenuPlace::strip},
        MenuDidClose{MenuPlace::strip},
        MenuItemChosen{MenuPlace::strip, menuItem()},
        MainMenuActionChosen{MenuAction::terminate},
        StripMoved{{2147483647, -1}},
        Reopened{},
    };
}

}  // namespace thermopix::Messages
