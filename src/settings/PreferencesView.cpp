#include "settings/PreferencesView.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include "environment/AppInfo.h"
#include "settings/CasePicker.h"
#include "settings/Identifiers.h"
#include "settings/Panes.h"
#include "settings/SettingsSidebar.h"
#include "settings/Toggles.h"
#include "settings/ViewBuilding.h"

namespace thermopix {

namespace {

using namespace std::chrono_literals;

constexpr auto previewInterval = 1s;
constexpr auto previewLeeway = 100ms;
constexpr double panePadding = 28;
/// Less than the padding: the title bar is clear ground.
constexpr double belowTitleBar = 12;

std::optional<std::string_view> suffixOf(std::string_view identifier, std::string_view prefix) {
    return identifier.starts_with(prefix) ? std::optional(identifier.substr(prefix.size())) : std::nullopt;
}

template <typename Case>
bool choose(PreferencesStore& store, Case Preferences::*field, std::optional<std::string_view> raw) {
    const auto chosen = raw ? fromEventValue<Case>(*raw) : std::nullopt;
    if (chosen) {
        store.set(field, *chosen);
    }
    return chosen.has_value();
}

}  // namespace

PreferencesView::PreferencesView(AppEnvironment& environment, std::function<void()> terminate, double titleBarHeight)
    : environment_(environment),
      terminate_(std::move(terminate)),
      titleBarHeight_(titleBarHeight),
      blinking_(environment.mainLoop(), [this] { redraw(); }) {}

ViewNode PreferencesView::node() {
    const auto& system = environment_.platform().systemInformation();
    ViewNode pane = paneNode();
    pane.padding = Insets::all(panePadding);
    pane.padding.top = std::max(panePadding, titleBarHeight_ + belowTitleBar);
    pane.fillsWidth = true;
    ViewNode scroll;
    scroll.kind = ViewKind::scroll;
    // Another pane is another list, which starts at its top.
    scroll.identifier = "prefs.scroll." + std::string(rawValue(pane_));
    scroll.children.push_back(std::move(pane));
    ViewNode root = Views::horizontal(0, {settingsSidebar(pane_, AppInfo::shortVersion(system), titleBarHeight_),
                                          Views::divider(), std::move(scroll)});
    root.alignment = Alignment::leading;
    return root;
}

ViewNode PreferencesView::paneNode() {
    const auto& preferences = environment_.preferences();
    switch (pane_) {
        case Pane::readout:
            return Panes::readout(preferences, display_, blinking_.areEyesClosed());
        case Pane::general:
            return Panes::general(preferences);
        case Pane::about:
            return Panes::about(environment_, environment_.platform().systemInformation());
    }
    return {};
}

void PreferencesView::handle(const ViewEvent& event) {
    if (const auto raw = suffixOf(event.identifier, Identifiers::pane)) {
        pane_ = fromRawValue<Pane>(*raw).value_or(pane_);
        redraw();
    } else if (!handleToggle(event) && !handleChoice(event)) {
        handleAction(event.identifier);
    }
}

bool PreferencesView::handleToggle(const ViewEvent& event) {
    if (event.value != "true" && event.value != "false") {
        return false;
    }
    const bool isOn = event.value == "true";
    for (const Toggle& toggle : toggles) {
        if (event.identifier != toggle.identifier) {
            continue;
        }
        if (toggle.field == &Preferences::openAtLogin) {
            environment_.setOpenAtLogin(isOn);  // the system decides that one
        } else {
            environment_.store().set(toggle.field, isOn);
        }
        return true;
    }
    return false;
}

bool PreferencesView::handleChoice(const ViewEvent& event) {
    auto& store = environment_.store();
    const std::string_view value = event.value;
    if (event.identifier == Identifiers::size) {
        return choose(store, &Preferences::size, value);
    }
    if (event.identifier == Identifiers::unit) {
        return choose(store, &Preferences::unit, value);
    }
    if (event.identifier == Identifiers::source) {
        return choose(store, &Preferences::source, value);
    }
    if (event.identifier == Identifiers::interval) {
        return choose(store, &Preferences::refreshInterval, value);
    }
    return choose(store, &Preferences::pet, suffixOf(event.identifier, Identifiers::pet)) ||
           choose(store, &Preferences::style, suffixOf(event.identifier, Identifiers::style));
}

void PreferencesView::handleAction(std::string_view identifier) {
    if (identifier == Identifiers::checkNow) {
        environment_.updater().checkForUpdates();
    } else if (identifier == Identifiers::quit) {
        terminate_();
    }
}

void PreferencesView::appear() {
    if (previewTimer_.isActive()) {
        return;
    }
    previewTimer_ = environment_.mainLoop().repeating(previewInterval, previewInterval, previewLeeway,
                                                      [this] { refreshDisplay(); });
    // Subscribers hear of a change before it is made; what is drawn is the record as it will be.
    settings_.push_back(environment_.store().subscribe(
        [this](const Preferences&) { redrawing_ = environment_.mainLoop().post([this] { redraw(); }); }));
    settings_.push_back(environment_.store().subscribeDistinct(
        [](const Preferences& record) { return std::tuple(record.unit, record.source); },
        [this](const auto&) { refreshing_ = environment_.mainLoop().post([this] { refreshDisplay(); }); }));
    blinking_.start();
    refreshDisplay();
}

void PreferencesView::disappear() {
    settings_.clear();
    redrawing_.cancel();
    refreshing_.cancel();
    previewTimer_.cancel();
    blinking_.stop();
}

void PreferencesView::refreshDisplay() {
    display_ = environment_.currentDisplay();
    redraw();
}

void PreferencesView::redraw() {
    if (onChange) {
        onChange();
    }
}

}  // namespace thermopix
