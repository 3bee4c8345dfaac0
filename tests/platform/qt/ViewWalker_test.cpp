#include "platform/qt/views/ViewWalker.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QMenu>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <string>
#include <vector>

#include "platform/qt/SettingsOnScreen.h"
#include "settings/ViewBuilding.h"

namespace thermopix {
namespace {

using Events = std::vector<ViewEvent>;

class Walker : public SettingsOnScreen {
protected:
    [[nodiscard]] std::string focused() const {
        return QApplication::focusWidget() == nullptr ? "nothing"
                                                      : QApplication::focusWidget()->objectName().toStdString();
    }

    void click(const std::string& identifier) { QTest::mouseClick(&find(identifier), Qt::LeftButton); }
    void press(const std::string& identifier, Qt::Key key) { QTest::keyClick(&find(identifier), key); }

    [[nodiscard]] QMenu* openedMenu(const std::string& picker) {
        return static_cast<QMenu*>(dynamic_cast<AccessibleElement&>(find(picker)).openedMenu());
    }

    [[nodiscard]] QScrollBar& scrollBar() { return *host.findChild<QScrollArea*>()->verticalScrollBar(); }
};

TEST_F(Walker, ReportsExactlyOneEventForAClickOnEachRowAlsoTheSelectedOne) {
    for (const std::string row :
         {"prefs.pet.none", "prefs.pet.cat", "prefs.pet.westie", "prefs.pet.mac", "prefs.pet.ghost",
          "prefs.style.micro", "prefs.style.segment", "prefs.style.dotMatrix", "prefs.pane.general", "prefs.pane.about",
          "prefs.pane.readout"}) {
        events.clear();
        click(row);
        EXPECT_EQ(events, (Events{{row, ""}})) << row;
    }
}

TEST_F(Walker, ReportsTheSegmentThatWasClickedAndNothingForTheChosenOne) {
    click("prefs.size.large");
    EXPECT_EQ(events, (Events{{"prefs.size", "large"}}));
    events.clear();
    click("prefs.unit.celsius");
    EXPECT_EQ(events, Events{});
}

TEST_F(Walker, ReportsTheNewStateOfASwitchWhereverItsRowIsClicked) {
    click("prefs.unitLetter");
    EXPECT_EQ(events, (Events{{"prefs.unitLetter", "true"}}));
    openPane("general");
    QTest::mouseClick(&find("prefs.autoUpdate"), Qt::LeftButton, {}, QPoint(3, 3));
    EXPECT_EQ(events, (Events{{"prefs.autoUpdate", "false"}}));
}

TEST_F(Walker, ReportsEachPushButton) {
    openPane("general");
    click("prefs.checkNow");
    EXPECT_EQ(events, (Events{{"prefs.checkNow", ""}}));
    openPane("about");
    click("prefs.quit");
    EXPECT_EQ(events, (Events{{"prefs.quit", ""}}));
}

TEST_F(Walker, OperatesRowsSwitchesAndButtonsWithSpaceAndEnter) {
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        openPane("readout");
        press("prefs.pet.mac", key);
        EXPECT_EQ(events, (Events{{"prefs.pet.mac", ""}}));
        openPane("general");
        press("prefs.showInDock", key);
        press("prefs.checkNow", key);
        EXPECT_EQ(events, (Events{{"prefs.showInDock", "true"}, {"prefs.checkNow", ""}}));
    }
}

TEST_F(Walker, MovesThroughTheSidebarWithTheArrowKeys) {
    obeys = true;
    find("prefs.pane.readout").setFocus();
    press("prefs.pane.readout", Qt::Key_Down);
    EXPECT_EQ(events, (Events{{"prefs.pane.general", ""}}));
    EXPECT_EQ(focused(), "prefs.pane.general");
    press("prefs.pane.general", Qt::Key_Down);
    press("prefs.pane.about", Qt::Key_Down);
    EXPECT_EQ(focused(), "prefs.pane.about");
    EXPECT_TRUE(find("prefs.quit").isVisible()) << "the pane may change while a control reports";
    press("prefs.pane.about", Qt::Key_Up);
    EXPECT_EQ(focused(), "prefs.pane.general");
    EXPECT_EQ(events.back(), (ViewEvent{"prefs.pane.general", ""}));
}

TEST_F(Walker, MovesThroughTheRowsOfAListAndNotOutOfIt) {
    obeys = true;
    find("prefs.pet.cat").setFocus();
    press("prefs.pet.cat", Qt::Key_Up);
    EXPECT_EQ(focused(), "prefs.pet.none");
    press("prefs.pet.none", Qt::Key_Up);
    press("prefs.pet.none", Qt::Key_Left);
    EXPECT_EQ(focused(), "prefs.pet.none");
    EXPECT_EQ(events, (Events{{"prefs.pet.none", ""}}));
}

TEST_F(Walker, MovesThroughSegmentsWithTheArrowKeys) {
    obeys = true;
    find("prefs.unit.celsius").setFocus();
    press("prefs.unit.celsius", Qt::Key_Right);
    EXPECT_EQ(events, (Events{{"prefs.unit", "fahrenheit"}}));
    EXPECT_EQ(focused(), "prefs.unit.fahrenheit");
}

TEST_F(Walker, ChangesAPickerWithArrowsAndByTyping) {
    openPane("general");
    press("prefs.interval", Qt::Key_Down);
    EXPECT_EQ(events, (Events{{"prefs.interval", "5"}}));
    events.clear();
    QTest::keyClicks(&find("prefs.source"), "Ba");
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.back(), (ViewEvent{"prefs.source", "battery"}));
}

TEST_F(Walker, OpensAPickersMenuAndReportsWhatIsChosenThere) {
    openPane("general");
    click("prefs.source");
    const QPointer<QMenu> menu = openedMenu("prefs.source");
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    ASSERT_EQ(menu->actions().size(), 6);
    EXPECT_TRUE(menu->actions().at(0)->isChecked());
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().at(3)).center());
    EXPECT_EQ(events, (Events{{"prefs.source", "hottest"}}));
    EXPECT_FALSE(menu != nullptr && menu->isVisible());
}

TEST_F(Walker, ChoosesInAPickersMenuWithTheKeyboard) {
    openPane("general");
    press("prefs.source", Qt::Key_Space);
    QMenu* menu = openedMenu("prefs.source");
    ASSERT_NE(menu, nullptr);
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_EQ(events, (Events{{"prefs.source", "gpu"}}));
}

TEST_F(Walker, LeavesThePickersAloneWhenTheWheelScrollsTheList) {
    openPane("general");
    auto& picker = find<QComboBox>("prefs.source");
    QWheelEvent wheel(QPointF(5, 5), picker.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&picker, &wheel);
    EXPECT_EQ(events, Events{});
    EXPECT_EQ(picker.currentIndex(), 0);
}

TEST_F(Walker, ShowsWhatWasChangedElsewhereAndReportsNothing) {
    auto& store = environment.store();
    store.set(&Preferences::size, PixelSize::large);
    store.set(&Preferences::showsUnitLetter, true);
    showView();
    EXPECT_TRUE(find<QAbstractButton>("prefs.size.large").isChecked());
    EXPECT_TRUE(find<QAbstractButton>("prefs.unitLetter").isChecked());
    openPane("general");
    store.set(&Preferences::source, SensorSource::storage);
    store.set(&Preferences::refreshInterval, RefreshInterval::thirtySeconds);
    showView();
    EXPECT_EQ(find<QComboBox>("prefs.source").currentText(), "Storage");
    EXPECT_EQ(find<QComboBox>("prefs.interval").currentText(), "Every 30 seconds");
    EXPECT_EQ(events, Events{});
}

TEST_F(Walker, TakesSwitchesAndPickersBackWhenTheProgramDoesNotFollow) {
    click("prefs.unitLetter");
    EXPECT_TRUE(find<QAbstractButton>("prefs.unitLetter").isChecked());
    showView();
    EXPECT_FALSE(find<QAbstractButton>("prefs.unitLetter").isChecked());
    EXPECT_EQ(events.size(), 1U);
    openPane("general");
    press("prefs.source", Qt::Key_Down);
    showView();
    EXPECT_EQ(find<QComboBox>("prefs.source").currentIndex(), 0);
    openPane("readout");
    click("prefs.size.large");
    showView();
    EXPECT_TRUE(find<QAbstractButton>("prefs.size.compact").isChecked());
    EXPECT_EQ(events.size(), 1U);
}

TEST_F(Walker, KeepsEveryWidgetWhenTheTreeHasTheSameShape) {
    for (const std::string pane : {"readout", "general", "about"}) {
        openPane(pane);
        const auto before = host.findChildren<QWidget*>();
        environment.store().set(&Preferences::pet, PixelPet::ghost);
        environment.store().set(&Preferences::style, PixelStyle::micro);
        environment.store().set(&Preferences::showsUnitLetter, true);
        environment.store().set(&Preferences::source, SensorSource::gpu);
        showView();
        EXPECT_EQ(host.findChildren<QWidget*>(), before) << pane;
        environment.store().setPreferences(Preferences());
        showView();
    }
}

TEST_F(Walker, KeepsTheFocusAndTheScrollPositionWhenTheTreeIsShownAnew) {
    find("prefs.style.segment").setFocus();
    ASSERT_GT(scrollBar().maximum(), 200);
    scrollBar().setValue(150);
    environment.store().set(&Preferences::pet, PixelPet::none);
    showView();
    EXPECT_EQ(focused(), "prefs.style.segment");
    EXPECT_EQ(scrollBar().value(), 150);
}

TEST_F(Walker, StartsAnotherPaneAtItsTop) {
    scrollBar().setValue(150);
    openPane("general");
    EXPECT_EQ(scrollBar().value(), 0);
}

TEST_F(Walker, KeepsAnOpenPickerOpenAndItsMarksTrue) {
    openPane("general");
    click("prefs.source");
    const QPointer<QMenu> menu = openedMenu("prefs.source");
    environment.store().set(&Preferences::source, SensorSource::soc);
    showView();
    EXPECT_EQ(openedMenu("prefs.source"), menu);
    EXPECT_TRUE(menu->isVisible());
    EXPECT_TRUE(menu->actions().at(2)->isChecked());
    EXPECT_EQ(events, Events{});
}

TEST_F(Walker, MakesAnewOnlyWhatHasAnotherShape) {
    QPointer<QWidget> sidebarRow = &find("prefs.pane.readout");
    QPointer<QWidget> petRow = &find("prefs.pet.cat");
    openPane("about");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(sidebarRow, &find("prefs.pane.readout"));
    EXPECT_TRUE(petRow.isNull());
}

TEST_F(Walker, GivesTheFocusToTheSuccessorOfAControlThatWasMadeAnew) {
    ViewNode row = Views::toggle("Switch", "one", false);
    walker.show(Views::vertical(0, {row}));
    find("one").setFocus();
    walker.show(Views::vertical(0, {Views::text("Above", 13), row}));
    EXPECT_EQ(focused(), "one");
}

TEST_F(Walker, GoesThroughTheControlsInTheOrderInWhichTheyAreRead) {
    openPane("general");
    openPane("readout");
    find("prefs.pane.readout").setFocus();
    std::vector<std::string> order;
    for (int i = 0; i < 16; ++i) {
        order.push_back(focused());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"prefs.pane.readout", "prefs.pane.general", "prefs.pane.about",
                                               "prefs.pet.none", "prefs.pet.cat", "prefs.pet.westie", "prefs.pet.mac",
                                               "prefs.pet.ghost", "prefs.style.arcade", "prefs.style.micro",
                                               "prefs.style.segment", "prefs.style.dotMatrix", "prefs.size.compact",
                                               "prefs.unit.celsius", "prefs.unitLetter", "prefs.pane.readout"}));
}

TEST_F(Walker, ScrollsToTheControlThatTheTabKeyReaches) {
    find("prefs.style.dotMatrix").setFocus(Qt::TabFocusReason);
    QTest::keyClick(&find("prefs.style.dotMatrix"), Qt::Key_Tab);
    const QWidget& reached = find("prefs.size.compact");
    EXPECT_TRUE(host.rect().contains(QRect(reached.mapTo(&host, QPoint(0, 0)), reached.size())));
}

TEST_F(Walker, PutsControlsWhereTheLayoutSays) {
    EXPECT_EQ(find("prefs.pane.readout").geometry().left(), 10);
    EXPECT_EQ(find("prefs.pane.readout").geometry().width(), 160);
    EXPECT_EQ(host.findChild<QScrollArea*>()->geometry(), QRect(181, 0, 539, 520));
    EXPECT_EQ(find("prefs.preview").geometry().left(), 28);
    EXPECT_EQ(find("prefs.preview").geometry().width(), 539 - 2 * 28);
}

TEST_F(Walker, SurvivesATreeThatShrinksToNothing) {
    walker.show(ViewNode());
    EXPECT_TRUE(host.findChildren<QWidget*>().isEmpty());
    showView();
    EXPECT_EQ(find("prefs.pet.cat").isVisible(), true);
}

}  // namespace
}  // namespace thermopix
