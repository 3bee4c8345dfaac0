#pragma once

#include <array>
#include <string_view>
#include <tuple>
#include <variant>

#include "messages/WindowEvent.h"
#include "messages/WindowRequest.h"

/// The names under which the values of messages travel: a row for each member of a record, a name for each
/// alternative of a variant.
namespace thermopix {

template <typename Record, typename Member>
struct Field {
    constexpr Field(std::string_view fieldName, Member Record::*fieldMember) : name(fieldName), member(fieldMember) {}

    std::string_view name;
    Member Record::*member;
};

template <typename Record>
struct Fields;

template <typename Variant>
struct Alternatives;

template <typename Variant>
inline constexpr bool namesEveryAlternative = Alternatives<Variant>::names.size() == std::variant_size_v<Variant>;

template <>
struct Fields<RgbaColor> {
    static constexpr std::tuple rows{Field{"red", &RgbaColor::red}, Field{"green", &RgbaColor::green},
                                     Field{"blue", &RgbaColor::blue}, Field{"alpha", &RgbaColor::alpha}};
};

template <>
struct Fields<RoleColor> {
    static constexpr std::tuple rows{Field{"role", &RoleColor::role}, Field{"opacity", &RoleColor::opacity}};
};

template <>
struct Fields<Gradient> {
    static constexpr std::tuple rows{Field{"top", &Gradient::top}, Field{"bottom", &Gradient::bottom}};
};

template <>
struct Alternatives<Color> {
    static constexpr std::array<std::string_view, 2> names{"role", "rgba"};
};
static_assert(namesEveryAlternative<Color>);

template <>
struct Fields<std::monostate> {
    static constexpr std::tuple<> rows{};
};

template <>
struct Alternatives<Fill> {
    static constexpr std::array<std::string_view, 3> names{"none", "role", "gradient"};
};
static_assert(namesEveryAlternative<Fill>);

template <>
struct Fields<Background> {
    static constexpr std::tuple rows{Field{"fill", &Background::fill}, Field{"hoverFill", &Background::hoverFill},
                                     Field{"cornerRadius", &Background::cornerRadius},
                                     Field{"border", &Background::border},
                                     Field{"borderWidth", &Background::borderWidth}};
};

template <>
struct Fields<TextStyle> {
    static constexpr std::tuple rows{Field{"points", &TextStyle::points}, Field{"isSemibold", &TextStyle::isSemibold},
                                     Field{"letterSpacing", &TextStyle::letterSpacing},
                                     Field{"lineSpacing", &TextStyle::lineSpacing}};
};

template <>
struct Fields<Insets> {
    static constexpr std::tuple rows{Field{"top", &Insets::top}, Field{"leading", &Insets::leading},
                                     Field{"bottom", &Insets::bottom}, Field{"trailing", &Insets::trailing}};
};

template <>
struct Fields<PickerItem> {
    static constexpr std::tuple rows{Field{"title", &PickerItem::title}, Field{"value", &PickerItem::value}};
};

template <>
struct Fields<Accessibility> {
    static constexpr std::tuple rows{Field{"label", &Accessibility::label},
                                     Field{"hidesChildren", &Accessibility::hidesChildren},
                                     Field{"isSelected", &Accessibility::isSelected}};
};

template <>
struct Fields<StatusImage> {
    static constexpr std::tuple rows{
        Field{"bitmap", &StatusImage::bitmap},         Field{"cell", &StatusImage::cell},
        Field{"inset", &StatusImage::inset},           Field{"isRound", &StatusImage::isRound},
        Field{"isTemplate", &StatusImage::isTemplate}, Field{"description", &StatusImage::description}};
};

template <>
struct Fields<ViewNode> {
    static constexpr std::tuple rows{
        Field{"kind", &ViewNode::kind},
        Field{"identifier", &ViewNode::identifier},
        Field{"text", &ViewNode::text},
        Field{"textStyle", &ViewNode::textStyle},
        Field{"color", &ViewNode::color},
        Field{"wraps", &ViewNode::wraps},
        Field{"axis", &ViewNode::axis},
        Field{"alignment", &ViewNode::alignment},
        Field{"spacing", &ViewNode::spacing},
        Field{"padding", &ViewNode::padding},
        Field{"width", &ViewNode::width},
        Field{"height", &ViewNode::height},
        Field{"minHeight", &ViewNode::minHeight},
        Field{"fillsWidth", &ViewNode::fillsWidth},
        Field{"background", &ViewNode::background},
        Field{"image", &ViewNode::image},
        Field{"isOn", &ViewNode::isOn},
        Field{"pickerStyle", &ViewNode::pickerStyle},
        Field{"hidesLabel", &ViewNode::hidesLabel},
        Field{"items", &ViewNode::items},
        Field{"selection", &ViewNode::selection},
        Field{"accessibility", &ViewNode::accessibility},
        Field{"children", &ViewNode::children},
    };
};

template <>
struct Fields<ViewEvent> {
    static constexpr std::tuple rows{Field{"identifier", &ViewEvent::identifier}, Field{"value", &ViewEvent::value}};
};

template <>
struct Fields<WindowDescription> {
    static constexpr std::tuple rows{
        Field{"title", &WindowDescription::title}, Field{"width", &WindowDescription::width},
        Field{"height", &WindowDescription::height}, Field{"identifier", &WindowDescription::identifier}};
};

template <>
struct Fields<Menu> {
    static constexpr std::tuple rows{Field{"title", &Menu::title}, Field{"items", &Menu::items},
                                     Field{"listsWindows", &Menu::listsWindows}};
};

template <>
struct Fields<MenuItem> {
    static constexpr std::tuple rows{
        Field{"kind", &MenuItem::kind},
        Field{"title", &MenuItem::title},
        Field{"textStyle", &MenuItem::textStyle},
        Field{"key", &MenuItem::key},
        Field{"modifiers", &MenuItem::modifiers},
        Field{"symbol", &MenuItem::symbol},
        Field{"identifier", &MenuItem::identifier},
        Field{"representedValue", &MenuItem::representedValue},
        Field{"isOn", &MenuItem::isOn},
        Field{"isEnabled", &MenuItem::isEnabled},
        Field{"isHidden", &MenuItem::isHidden},
        Field{"action", &MenuItem::action},
        Field{"submenu", &MenuItem::submenu},
    };
};

template <>
struct Fields<AboutCreditsStyle> {
    static constexpr std::tuple rows{Field{"fontSize", &AboutCreditsStyle::fontSize},
                                     Field{"isSecondary", &AboutCreditsStyle::isSecondary},
                                     Field{"isCentered", &AboutCreditsStyle::isCentered},
                                     Field{"extraLineSpacing", &AboutCreditsStyle::extraLineSpacing}};
};

template <>
struct Fields<AboutPanelContent> {
    static constexpr std::tuple rows{
        Field{"applicationName", &AboutPanelContent::applicationName}, Field{"version", &AboutPanelContent::version},
        Field{"credits", &AboutPanelContent::credits}, Field{"creditsStyle", &AboutPanelContent::creditsStyle}};
};

template <>
struct Fields<ScreenPoint> {
    static constexpr std::tuple rows{Field{"x", &ScreenPoint::x}, Field{"y", &ScreenPoint::y}};
};

template <>
struct Fields<ShowWindow> {
    static constexpr std::tuple rows{Field{"window", &ShowWindow::window},
                                     Field{"description", &ShowWindow::description}};
};

template <>
struct Fields<SetWindowContent> {
    static constexpr std::tuple rows{Field{"window", &SetWindowContent::window},
                                     Field{"root", &SetWindowContent::root}};
};

template <>
struct Fields<OrderWindowFront> {
    static constexpr std::tuple rows{Field{"window", &OrderWindowFront::window}};
};

template <>
struct Fields<DiscardWindow> {
    static constexpr std::tuple rows{Field{"window", &DiscardWindow::window}};
};

template <>
struct Fields<SetMainMenu> {
    static constexpr std::tuple rows{Field{"menu", &SetMainMenu::menu}};
};

template <>
struct Fields<SetActivationPolicy> {
    static constexpr std::tuple rows{Field{"policy", &SetActivationPolicy::policy}};
};

template <>
struct Fields<ShowAboutPanel> {
    static constexpr std::tuple rows{Field{"content", &ShowAboutPanel::content}};
};

template <>
struct Fields<UseActivationToken> {
    static constexpr std::tuple rows{Field{"token", &UseActivationToken::token}};
};

template <>
struct Fields<OpenPopupMenu> {
    static constexpr std::tuple rows{Field{"menu", &OpenPopupMenu::menu}, Field{"position", &OpenPopupMenu::position}};
};

template <>
struct Fields<UpdatePopupMenu> {
    static constexpr std::tuple rows{Field{"menu", &UpdatePopupMenu::menu}};
};

template <>
struct Fields<SetStripReadout> {
    static constexpr std::tuple rows{Field{"image", &SetStripReadout::image}};
};

template <>
struct Fields<SetStripMenu> {
    static constexpr std::tuple rows{Field{"menu", &SetStripMenu::menu}};
};

template <>
struct Fields<ShowStrip> {
    static constexpr std::tuple rows{Field{"position", &ShowStrip::position}};
};

template <>
struct Fields<HideStrip> {
    static constexpr std::tuple<> rows{};
};

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
struct Fields<Hello> {
    static constexpr std::tuple rows{Field{"version", &Hello::version}};
};

template <>
struct Fields<ControlOperated> {
    static constexpr std::tuple rows{Field{"window", &ControlOperated::window},
                                     Field{"event", &ControlOperated::event}};
};

template <>
struct Fields<WindowVisibilityChanged> {
    static constexpr std::tuple rows{Field{"window", &WindowVisibilityChanged::window},
                                     Field{"isVisible", &WindowVisibilityChanged::isVisible},
                                     Field{"isMiniaturized", &WindowVisibilityChanged::isMiniaturized}};
};

template <>
struct Fields<WindowWillClose> {
    static constexpr std::tuple rows{Field{"window", &WindowWillClose::window}};
};

template <>
struct Fields<MenuWillOpen> {
    static constexpr std::tuple rows{Field{"place", &MenuWillOpen::place}};
};

template <>
struct Fields<MenuDidClose> {
    static constexpr std::tuple rows{Field{"place", &MenuDidClose::place}};
};

template <>
struct Fields<MenuItemChosen> {
    static constexpr std::tuple rows{Field{"place", &MenuItemChosen::place}, Field{"item", &MenuItemChosen::item}};
};

template <>
struct Fields<MainMenuActionChosen> {
    static constexpr std::tuple rows{Field{"action", &MainMenuActionChosen::action}};
};

template <>
struct Fields<StripMoved> {
    static constexpr std::tuple rows{Field{"position", &StripMoved::position}};
};

template <>
struct Fields<Reopened> {
    static constexpr std::tuple<> rows{};
};

template <>
struct Alternatives<WindowEvent> {
    static constexpr std::array<std::string_view, 10> names{
        "hello",        "controlOperated", "windowVisibilityChanged", "windowWillClose", "menuWillOpen",
        "menuDidClose", "menuItemChosen",  "mainMenuActionChosen",    "stripMoved",      "reopened",
    };
};
static_assert(namesEveryAlternative<WindowEvent>);

}  // namespace thermopix
