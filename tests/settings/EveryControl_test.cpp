#include <gtest/gtest.h>

#include <array>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/FakePlatform.h"
#include "settings/PreferencesView.h"

namespace thermopix {
namespace {

using Json = nlohmann::json;

struct Control {
    std::string_view identifier;
    /// The field of the settings, or the effect, that takes the value of the control's event.
    std::string_view changes;
};

/// What every control is for; one whose identifier ends in a dot is a row for each value.
constexpr std::array controls{
    Control{"prefs.pane.", "pane"},
    Control{"prefs.pet.", "pet"},
    Control{"prefs.style.", "style"},
    Control{"prefs.size", "size"},
    Control{"prefs.unit", "unit"},
    Control{"prefs.unitLetter", "showsUnitLetter"},
    Control{"prefs.source", "source"},
    Control{"prefs.interval", "refreshInterval"},
    Control{"prefs.openAtLogin", "openAtLogin"},
    Control{"prefs.showPrefsOnLaunch", "showPreferencesOnLaunch"},
    Control{"prefs.showInDock", "showInDock"},
    Control{"prefs.autoUpdate", "checkForUpdatesAutomatically"},
    Control{"prefs.checkNow", "checks for updates"},
    Control{"prefs.quit", "ends the program"},
};

const Control* controlOf(std::string_view identifier) {
    for (const Control& control : controls) {
        if (identifier == control.identifier ||
            (control.identifier.back() == '.' && identifier.starts_with(control.identifier))) {
            return &control;
        }
    }
    return nullptr;
}

/// All that can be done in the tree.
std::vector<ViewEvent> events(const ViewNode& node) {
    std::vector<ViewEvent> all;
    if (node.kind == ViewKind::button) {
        all.push_back({node.identifier, ""});
    } else if (node.kind == ViewKind::toggle) {
        all = {{node.identifier, "true"}, {node.identifier, "false"}};
    }
    for (const auto& item : node.items) {
        all.push_back({node.identifier, item.value});
    }
    for (const auto& child : node.children) {
        const auto inner = events(child);
        all.insert(all.end(), inner.begin(), inner.end());
    }
    return all;
}

class EveryControl : public testing::Test {
protected:
    EveryControl() { view.appear(); }

    [[nodiscard]] ViewNode sidebar() { return view.node().children.front(); }
    [[nodiscard]] ViewNode pane() { return view.node().children.back(); }

    /// The settings, and what else a control can change.
    [[nodiscard]] Json state() {
        Json state = Json::parse(encodePreferences(environment.preferences()));
        state["pane"] = pane().identifier.substr(std::string_view("prefs.scroll.").size());
        state["checks for updates"] = dynamic_cast<FakeUpdater&>(environment.updater()).checkForUpdatesCallCount;
        state["ends the program"] = terminations;
        return state;
    }

    /// Does it, and expects that the one thing changes that the control is for.
    void expectEffect(const ViewEvent& event) {
        const Control* control = controlOf(event.identifier);
        ASSERT_NE(control, nullptr) << event.identifier << " has no row in `controls`";
        operated.insert(control);
        Json expected = state();
        Json& changed = expected[control->changes];
        if (control->identifier.back() == '.') {
            changed = event.identifier.substr(control->identifier.size());
        } else if (event.value.empty()) {
            changed = changed.get<int>() + 1;
        } else {
            changed = changed.is_string() ? Json(event.value) : Json::parse(event.value);
        }
        view.handle(event);
        platform.manualMainLoop.runPending();
        EXPECT_EQ(Json::diff(expected, state()), Json::array()) << event.identifier << " " << event.value;
    }

    FakePlatform platform;
    std::vector<std::string> arguments{"thermopix", "--uitest-fake-sensor"};
    AppEnvironment environment{arguments, {}, platform};
    int terminations = 0;
    std::set<const Control*> operated;
    PreferencesView view{environment, [this] { ++terminations; }};
};

TEST_F(EveryControl, DoesTheOneThingThatItIsFor) {
    // Twice: then also the choice that stood at first is arrived at from another.
    for (int round = 0; round < 2; ++round) {
        for (const ViewEvent& choice : events(sidebar())) {
            expectEffect(choice);
            for (const ViewEvent& event : events(pane())) {
                expectEffect(event);
            }
        }
    }
    Json withoutControl = state();
    for (const Control& control : controls) {
        EXPECT_EQ(operated.count(&control), 1U) << control.identifier << " is in no pane";
        withoutControl.erase(std::string(control.changes));
    }
    EXPECT_EQ(withoutControl, Json::object()) << "no control of a pane is for these";
}

}  // namespace
}  // namespace thermopix
