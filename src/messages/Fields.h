#pragma once

#include <array>
#include <string_view>
#include <tuple>
#include <variant>

#include "base/NameOf.h"
#include "messages/WindowEvent.h"
#include "messages/WindowRequest.h"

/// The names under which the values of messages travel: a row for each member of a record, a name for each
/// alternative of a variant.
namespace thermopix {

template <typename Member>
struct Field {
    std::string_view name;
    Member member;
};

/// A row for each member, under its own name.
template <auto... members>
struct FieldsOf {
    static constexpr std::tuple rows{Field<decltype(members)>{nameOf<members>(), members}...};
};

template <typename Record>
struct Fields;

/// Records of which nothing else says so are equal when all their members are.
template <typename Record, typename = decltype(Fields<Record>::rows)>
bool operator==(const Record& a, const Record& b) {
    return std::apply([&](const auto&... field) { return ((a.*field.member == b.*field.member) && ...); },
                      Fields<Record>::rows);
}

template <typename Variant>
struct Alternatives;

template <typename Variant>
inline constexpr bool namesEveryAlternative = Alternatives<Variant>::names.size() == std::variant_size_v<Variant>;

template <>
struct Fields<RgbaColor> : FieldsOf<&RgbaColor::red, &RgbaColor::green, &RgbaColor::blue, &RgbaColor::alpha> {};

template <>
struct Fields<RoleColor> : FieldsOf<&RoleColor::role, &RoleColor::opacity> {};

template <>
struct Fields<Gradient> : FieldsOf<&Gradient::top, &Gradient::bottom> {};

template <>
struct Alternatives<Color> {
    static constexpr std::array<std::string_view, 2> names{"role", "rgba"};
};
static_assert(namesEveryAlternative<Color>);

template <>
struct Fields<std::monostate> : FieldsOf<> {};

template <>
struct Alternatives<Fill> {
    static constexpr std::array<std::string_view, 3> names{"none", "role", "gradient"};
};
static_assert(namesEveryAlternative<Fill>);

template <>
struct Fields<Background> : FieldsOf<&Background::fill, &Background::hoverFill, &Background::cornerRadius,
                                     &Background::border, &Background::borderWidth> {};

template <>
struct Fields<TextStyle>
    : FieldsOf<&TextStyle::points, &TextStyle::isSemibold, &TextStyle::letterSpacing, &TextStyle::lineSpacing> {};

template <>
struct Fields<Insets> : FieldsOf<&Insets::top, &Insets::leading, &Insets::bottom, &Insets::trailing> {};

template <>
struct Fields<PickerItem> : FieldsOf<&PickerItem::title, &PickerItem::value> {};

template <>
struct Fields<Accessibility>
    : FieldsOf<&Accessibility::label, &Accessibility::hidesChildren, &Accessibility::isSelected> {};

template <>
struct Fields<StatusImage> : FieldsOf<&StatusImage::bitmap, &StatusImage::cell, &StatusImage::inset,
                                      &StatusImage::isRound, &StatusImage::isTemplate, &StatusImage::description> {};

template <>
struct Fields<ViewNode>
    : FieldsOf<&ViewNode::kind, &ViewNode::identifier, &ViewNode::text, &ViewNode::textStyle, &ViewNode::color,
               &ViewNode::wraps, &ViewNode::axis, &ViewNode::alignment, &ViewNode::spacing, &ViewNode::padding,
               &ViewNode::width, &ViewNode::height, &ViewNode::minHeight, &ViewNode::fillsWidth, &ViewNode::background,
               &ViewNode::image, &ViewNode::isOn, &ViewNode::pickerStyle, &ViewNode::hidesLabel, &ViewNode::items,
               &ViewNode::selection, &ViewNode::accessibility, &ViewNode::children> {};

template <>
struct Fields<ViewEvent> : FieldsOf<&ViewEvent::identifier, &ViewEvent::value> {};

template <>
struct Fields<WindowDescription> : FieldsOf<&WindowDescription::title, &WindowDescription::width,
                                            &WindowDescription::height, &WindowDescription::identifier> {};

template <>
struct Fields<Menu> : FieldsOf<&Menu::title, &Menu::items, &Menu::listsWindows> {};

template <>
struct Fields<MenuItem>
    : FieldsOf<&MenuItem::kind, &MenuItem::title, &MenuItem::textStyle, &MenuItem::key, &MenuItem::modifiers,
               &MenuItem::symbol, &MenuItem::identifier, &MenuItem::representedValue, &MenuItem::isOn,
               &MenuItem::isEnabled, &MenuItem::isHidden, &MenuItem::action, &MenuItem::submenu> {};

template <>
struct Fields<AboutCreditsStyle> : FieldsOf<&AboutCreditsStyle::fontSize, &AboutCreditsStyle::isSecondary,
                                            &AboutCreditsStyle::isCentered, &AboutCreditsStyle::extraLineSpacing> {};

template <>
struct Fields<AboutPanelContent> : FieldsOf<&AboutPanelContent::applicationName, &AboutPanelContent::version,
                                            &AboutPanelContent::credits, &AboutPanelContent::creditsStyle> {};

template <>
struct Fields<ScreenPoint> : FieldsOf<&ScreenPoint::x, &ScreenPoint::y> {};

template <>
struct Fields<ShowWindow> : FieldsOf<&ShowWindow::window, &ShowWindow::description> {};

template <>
struct Fields<SetWindowContent> : FieldsOf<&SetWindowContent::window, &SetWindowContent::root> {};

template <>
struct Fields<OrderWindowFront> : FieldsOf<&OrderWindowFront::window> {};

template <>
struct Fields<DiscardWindow> : FieldsOf<&DiscardWindow::window> {};

template <>
struct Fields<SetMainMenu> : FieldsOf<&SetMainMenu::menu> {};

template <>
struct Fields<SetActivationPolicy> : FieldsOf<&SetActivationPolicy::policy> {};

template <>
struct Fields<ShowAboutPanel> : FieldsOf<&ShowAboutPanel::content> {};

template <>
struct Fields<UseActivationToken> : FieldsOf<&UseActivationToken::token> {};

template <>
struct Fields<OpenPopupMenu> : FieldsOf<&OpenPopupMenu::menu, &OpenPopupMenu::position> {};

template <>
struct Fields<UpdatePopupMenu> : FieldsOf<&UpdatePopupMenu::menu> {};

template <>
struct Fields<SetStripReadout> : FieldsOf<&SetStripReadout::image, &SetStripReadout::note> {};

template <>
struct Fields<SetStripMenu> : FieldsOf<&SetStripMenu::menu> {};

template <>
struct Fields<ShowStrip> : FieldsOf<&ShowStrip::position> {};

template <>
struct Fields<HideStrip> : FieldsOf<> {};

template <>
struct Alternatives<WindowRequest> {
    static constexpr std::array<std::string_view, 14> names{
        "showWindow",          "setWindowContent", "orderWindowFront",   "discardWindow", "setMainMenu",
        "setActivationPolicy", "showAboutPanel",   "useActivationToken", "openPopupMenu", "updatePopupMenu",
        "setStripReadout",     "setStripMenu",     "showStrip",          "hideStrip",
    };
};
static_assert(namesEveryAlternative<WindowRequest>);

template <>
struct Fields<Hello> : FieldsOf<&Hello::version> {};

template <>
struct Fields<ControlOperated> : FieldsOf<&ControlOperated::window, &ControlOperated::event> {};

template <>
struct Fields<WindowVisibilityChanged> : FieldsOf<&WindowVisibilityChanged::window, &WindowVisibilityChanged::isVisible,
                                                  &WindowVisibilityChanged::isMiniaturized> {};

template <>
struct Fields<WindowWillClose> : FieldsOf<&WindowWillClose::window> {};

template <>
struct Fields<MenuWillOpen> : FieldsOf<&MenuWillOpen::place> {};

template <>
struct Fields<MenuDidClose> : FieldsOf<&MenuDidClose::place> {};

template <>
struct Fields<MenuItemChosen> : FieldsOf<&MenuItemChosen::place, &MenuItemChosen::item> {};

template <>
struct Fields<MainMenuActionChosen> : FieldsOf<&MainMenuActionChosen::action> {};

template <>
struct Fields<StripMoved> : FieldsOf<&StripMoved::position> {};

template <>
struct Fields<Reopened> : FieldsOf<> {};

template <>
struct Alternatives<WindowEvent> {
    static constexpr std::array<std::string_view, 10> names{
        "hello",        "controlOperated", "windowVisibilityChanged", "windowWillClose", "menuWillOpen",
        "menuDidClose", "menuItemChosen",  "mainMenuActionChosen",    "stripMoved",      "reopened",
    };
};
static_assert(namesEveryAlternative<WindowEvent>);

}  // namespace thermopix
