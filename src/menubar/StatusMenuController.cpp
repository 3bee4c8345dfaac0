#include "menubar/StatusMenuController.h"

#include <fmt/format.h>

#include <utility>

#include "base/Enumeration.h"
#include "environment/AppInfo.h"
#include "menubar/MenuItems.h"

namespace thermopix {

namespace {

constexpr std::size_t readingIndex = 0;
constexpr std::size_t detailIndex = 1;
constexpr std::size_t sensorIndex = 2;

constexpr std::string_view petPrefix = "menu.pet.";
constexpr std::string_view unitPrefix = "menu.unit.";
constexpr std::string_view stylePrefix = "menu.style.";

MenuItem symbolAction(std::string title, MenuAction action, std::string symbol, std::string key = {}) {
    auto item = MenuItems::action(std::move(title), action, std::move(key));
    item.symbol = std::move(symbol);
    return item;
}

/// One section: a header and an item for each case.
template <typename Case>
void appendChoices(std::vector<MenuItem>& items, std::string_view header, std::string_view prefix, MenuAction action) {
    items.push_back(MenuItems::sectionHeader(std::string(header)));
    for (const auto value : allCases<Case>()) {
        auto item = MenuItems::action(std::string(title(value)), action);
        item.identifier = fmt::format("{}{}", prefix, rawValue(value));
        item.representedValue = std::string(rawValue(value));
        items.push_back(std::move(item));
    }
    items.push_back(MenuItems::separator());
}

Menu build() {
    Menu menu;
    auto& items = menu.items;
    items = {
        MenuItems::information("—", MenuTextStyle::headline),
        MenuItems::information("Reading sensors…", MenuTextStyle::caption),
        MenuItems::information("", MenuTextStyle::caption),
        MenuItems::separator(),
    };
    appendChoices<PixelPet>(items, "Pet", petPrefix, MenuAction::selectPet);
    appendChoices<TemperatureUnit>(items, "Unit", unitPrefix, MenuAction::selectUnit);
    appendChoices<PixelStyle>(items, "Style", stylePrefix, MenuAction::selectStyle);
    items.push_back(symbolAction("Settings…", MenuAction::openPreferencesItem, "gearshape", ","));
    items.push_back(symbolAction("Check for Updates…", MenuAction::checkForUpdates, "arrow.triangle.2.circlepath"));
    items.push_back(symbolAction(MenuItems::aboutTitle(AppInfo::name), MenuAction::showAbout, "info.circle"));
    items.push_back(MenuItems::action(MenuItems::quitTitle(AppInfo::name), MenuAction::quit, "q"));
    return menu;
}

std::string readingText(const Display& display, PixelPet pet) {
    if (!display.value) {
        return "No reading";
    }
    const auto temperature = fmt::format("{}{}", *display.value, symbol(display.unit));
    return pet == PixelPet::none ? temperature : fmt::format("{} — {}", title(display.mood), temperature);
}

template <typename Case>
void markChoice(MenuItem& item, std::string_view prefix, Case current) {
    if (item.representedValue && item.identifier.starts_with(prefix)) {
        item.isOn = *item.representedValue == rawValue(current);
    }
}

template <typename Case>
void choose(const MenuItem& item, Case Preferences::*field, PreferencesStore& store) {
    if (!item.representedValue) {
        return;
    }
    if (const auto value = fromRawValue<Case>(*item.representedValue)) {
        store.set(field, *value);
    }
}

void run(const std::function<void()>& action) {
    if (action) {
        action();
    }
}

}  // namespace

StatusMenuController::StatusMenuController(AppEnvironment& environment, Actions actions)
    : environment_(environment), actions_(std::move(actions)), menu_(build()) {}

void StatusMenuController::update(const Display& display) {
    const auto pet = environment_.preferences().pet;
    const auto details = detailText(display);
    Menu changed = menu();
    changed.items[readingIndex].title = readingText(display, pet);
    changed.items[detailIndex].title = pet == PixelPet::none ? details : std::string(caption(display.mood));
    changed.items[sensorIndex].title = details;
    changed.items[sensorIndex].isHidden = pet == PixelPet::none;
    publish(std::move(changed));
}

Subscription StatusMenuController::observe(std::function<void(const Menu&)> handler) {
    return menu_.subscribe(std::move(handler));
}

void StatusMenuController::menuWillOpen() {
    const auto& preferences = environment_.preferences();
    Menu marked = menu();
    for (auto& item : marked.items) {
        markChoice(item, unitPrefix, preferences.unit);
        markChoice(item, stylePrefix, preferences.style);
        markChoice(item, petPrefix, preferences.pet);
    }
    publish(std::move(marked));
}

void StatusMenuController::perform(const MenuItem& item) {
    auto& store = environment_.store();
    switch (item.action) {
        case MenuAction::selectPet:
            return choose(item, &Preferences::pet, store);
        case MenuAction::selectUnit:
            return choose(item, &Preferences::unit, store);
        case MenuAction::selectStyle:
            return choose(item, &Preferences::style, store);
        case MenuAction::openPreferencesItem:
            return run(actions_.openPreferences);
        case MenuAction::checkForUpdates:
            return environment_.updater().checkForUpdates();
        case MenuAction::showAbout:
            return run(actions_.showAbout);
        case MenuAction::quit:
            return run(actions_.terminate);
        default:
            return;
    }
}

std::string StatusMenuController::detailText(const Display& display) {
    return detailText(environment_.preferences().source, display, environment_.monitor().lastSamples().size(),
                      environment_.sensor().isAvailable());
}

std::string StatusMenuController::detailText(SensorSource source, const Display& display, std::size_t samplesRead,
                                             bool isSensorAvailable) {
    const auto pressure = row(display.pressure).lowercaseTitle;
    if (display.value) {
        return fmt::format("{} · hottest of {} sensor{} · thermal state {}", title(source), samplesRead,
                           samplesRead == 1 ? "" : "s", pressure);
    }
    return isSensorAvailable ? fmt::format("No sensor matched · thermal state {}", pressure)
                             : std::string("No readable thermal sensor on this Mac");
}

void StatusMenuController::publish(Menu menu) {
    if (menu != menu_.value()) {
        menu_.send(std::move(menu));
    }
}

}  // namespace thermopix
