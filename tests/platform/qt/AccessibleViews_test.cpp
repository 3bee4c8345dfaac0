#include "platform/qt/views/AccessibleViews.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QComboBox>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "platform/qt/SettingsOnScreen.h"

namespace thermopix {
namespace {

using Events = std::vector<ViewEvent>;

class Accessibility : public SettingsOnScreen {
protected:
    [[nodiscard]] QAccessibleInterface& element(const std::string& identifier) {
        return *QAccessible::queryAccessibleInterface(&find(identifier));
    }

    [[nodiscard]] std::string name(const std::string& identifier) {
        return element(identifier).text(QAccessible::Name).toStdString();
    }

    /// All that is only text.
    [[nodiscard]] QStringList texts() const {
        QStringList texts;
        for (auto* widget : host.findChildren<QWidget*>()) {
            auto* interface = QAccessible::queryAccessibleInterface(widget);
            if (interface->role() == QAccessible::StaticText) {
                texts.append(interface->text(QAccessible::Name));
            }
        }
        return texts;
    }

    void act(const std::string& identifier, const QString& action) {
        auto* interface = element(identifier).actionInterface();
        ASSERT_NE(interface, nullptr) << identifier;
        ASSERT_TRUE(interface->actionNames().contains(action)) << identifier;
        interface->doAction(action);
    }
};

struct Expected {
    const char* identifier;
    QAccessible::Role role;
    const char* name;
};

TEST_F(Accessibility, GivesEveryControlItsRoleAndName) {
    for (const auto& [pane, controls] : std::vector<std::pair<const char*, std::vector<Expected>>>{
             {"readout",
              {{"prefs.pane.readout", QAccessible::RadioButton, "Readout"},
               {"prefs.pane.general", QAccessible::RadioButton, "General"},
               {"prefs.pane.about", QAccessible::RadioButton, "About"},
               {"prefs.preview", QAccessible::Graphic, "Preview: 61°"},
               {"prefs.pet.none", QAccessible::RadioButton, "No pet. Just the temperature."},
               {"prefs.pet.cat", QAccessible::RadioButton, "Cat. Sleeps through anything under 45°."},
               {"prefs.style.arcade", QAccessible::RadioButton, "Arcade. Chunky 5×7 pixels. The default."},
               {"prefs.size", QAccessible::Grouping, "Size"},
               {"prefs.size.compact", QAccessible::RadioButton, "Compact"},
               {"prefs.size.large", QAccessible::RadioButton, "Large"},
               {"prefs.unit", QAccessible::Grouping, "Unit"},
               {"prefs.unit.fahrenheit", QAccessible::RadioButton, "Fahrenheit (°F)"},
               {"prefs.unitLetter", QAccessible::CheckBox, "Show the unit letter"}}},
             {"general",
              {{"prefs.openAtLogin", QAccessible::CheckBox, "Open at login"},
               {"prefs.showPrefsOnLaunch", QAccessible::CheckBox, "Open Settings when the app launches"},
               {"prefs.showInDock", QAccessible::CheckBox, "Show in Dock"},
               {"prefs.autoUpdate", QAccessible::CheckBox, "Check for updates automatically"},
               {"prefs.checkNow", QAccessible::Button, "Check Now"}}},
             {"about", {{"prefs.quit", QAccessible::Button, "Quit Thermopix"}}}}) {
        openPane(pane);
        for (const auto& [identifier, role, expectedName] : controls) {
            EXPECT_EQ(element(identifier).role(), role) << identifier;
            EXPECT_EQ(name(identifier), expectedName) << identifier;
        }
    }
}

TEST_F(Accessibility, SaysWhichChoiceIsSelectedAndWhetherASwitchIsOn) {
    EXPECT_TRUE(element("prefs.pet.cat").state().selected);
    EXPECT_TRUE(element("prefs.pet.cat").state().checked);
    EXPECT_FALSE(element("prefs.pet.ghost").state().selected);
    EXPECT_FALSE(element("prefs.pet.ghost").state().checked);
    EXPECT_TRUE(element("prefs.pane.readout").state().selected);
    EXPECT_TRUE(element("prefs.size.compact").state().checked);
    EXPECT_FALSE(element("prefs.size.large").state().checked);
    EXPECT_FALSE(element("prefs.unitLetter").state().checked);
    environment.store().set(&Preferences::pet, PixelPet::ghost);
    environment.store().set(&Preferences::showsUnitLetter, true);
    showView();
    EXPECT_TRUE(element("prefs.unitLetter").state().checked);
    EXPECT_TRUE(element("prefs.pet.ghost").state().selected);
    EXPECT_FALSE(element("prefs.pet.cat").state().selected);
}

TEST_F(Accessibility, NamesAPickerByItsLabelAndSaysItsChoice) {
    openPane("general");
    for (const auto& [identifier, label, choice] : std::vector<std::array<const char*, 3>>{
             {"prefs.source", "Show", "CPU"}, {"prefs.interval", "Refresh", "Every 2 seconds"}}) {
        EXPECT_EQ(element(identifier).role(), QAccessible::ComboBox);
        EXPECT_EQ(element(identifier).text(QAccessible::Value).toStdString(), choice);
        const auto labels = element(identifier).relations(QAccessible::Label);
        ASSERT_EQ(labels.size(), 1) << identifier;
        EXPECT_EQ(labels.front().first->text(QAccessible::Name).toStdString(), label);
    }
}

TEST_F(Accessibility, ObeysPressOnRowsAndButtonsAndToggleOnSwitchesAndSegments) {
    act("prefs.pet.ghost", QAccessibleActionInterface::pressAction());
    act("prefs.pane.about", QAccessibleActionInterface::pressAction());
    EXPECT_EQ(events, (Events{{"prefs.pet.ghost", ""}, {"prefs.pane.about", ""}}));
    openPane("about");
    act("prefs.quit", QAccessibleActionInterface::pressAction());
    // The toolkit shows a push button pressed for a moment.
    (void)QTest::qWaitFor([this] { return !events.empty(); }, 60'000);
    EXPECT_EQ(events, (Events{{"prefs.quit", ""}}));
    openPane("readout");
    act("prefs.unitLetter", QAccessibleActionInterface::toggleAction());
    act("prefs.size.large", QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(events, (Events{{"prefs.unitLetter", "true"}, {"prefs.size", "large"}}));
}

TEST_F(Accessibility, OpensAPickersMenuWhichIsItsPartWhileItIsOpen) {
    openPane("general");
    auto& picker = element("prefs.source");
    EXPECT_EQ(picker.childCount(), 0);
    EXPECT_TRUE(picker.state().collapsed);
    act("prefs.source", QAccessibleActionInterface::showMenuAction());
    ASSERT_EQ(picker.childCount(), 1);
    EXPECT_TRUE(picker.state().expanded);
    auto* items = picker.child(0);
    EXPECT_EQ(picker.indexOfChild(items), 0);
    EXPECT_EQ(items->object(), QApplication::activePopupWidget());
    EXPECT_EQ(items->role(), QAccessible::PopupMenu);
    ASSERT_EQ(items->childCount(), 6);
    auto* battery = items->child(4);
    EXPECT_EQ(battery->text(QAccessible::Name), "Battery");
    battery->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(events, (Events{{"prefs.source", "battery"}}));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(Accessibility, SpeaksForTheWholePreviewAndTheWholeHeader) {
    EXPECT_EQ(element("prefs.preview").childCount(), 0);
    EXPECT_EQ(element("prefs.pet.cat").childCount(), 0);
    openPane("about");
    EXPECT_EQ(texts().mid(0, 2), (QStringList{"Version 1.2", "Thermopix, version 1.2 build 34"}));
}

TEST_F(Accessibility, ReadsCaptionsAsTexts) {
    openPane("general");
    EXPECT_TRUE(texts().contains("Average of the performance and efficiency core clusters."));
}

}  // namespace
}  // namespace thermopix
