#include "platform/qt/WindowProcess.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QTest>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "menubar/MainMenu.h"
#include "messages/MessageCodec.h"
#include "settings/ViewBuilding.h"

namespace thermopix {
namespace {

constexpr int patience = 60'000;  // milliseconds; a guard against hanging
constexpr WindowId settings = 7;
const WindowDescription description{"Thermopix Settings", 300, 200, "prefs.window"};
const AboutPanelContent about{
    .applicationName = "Thermopix", .version = "1.2 (—)", .credits = "One\nTwo", .creditsStyle = {}};

Menu mainMenu() {
    return {.title = {},
            .items = {MainMenu::appMenuItem("Thermopix"), MainMenu::editMenuItem(), MainMenu::windowMenuItem()}};
}

MenuItem petItem(const std::string& pet, bool isOn) {
    MenuItem item;
    item.title = pet;
    item.identifier = "menu.pet." + pet;
    item.representedValue = pet;
    item.isOn = isOn;
    item.action = MenuAction::selectPet;
    return item;
}

Menu statusMenu(const std::string& chosen = "cat") {
    MenuItem reading;
    reading.kind = MenuItemKind::information;
    reading.title = "Comfy — 52°C";
    reading.textStyle = MenuTextStyle::headline;
    reading.isEnabled = false;
    MenuItem quit;
    quit.title = "Quit Thermopix";
    quit.key = "q";
    quit.action = MenuAction::quit;
    Menu menu;
    menu.items = {reading, petItem("none", chosen == "none"), petItem("cat", chosen == "cat"), quit};
    return menu;
}

StatusImage readout(std::int64_t columns, std::string words) {
    StatusImage image;
    image.bitmap = PixelBitmap(columns, 7, std::vector<Ink>(static_cast<std::size_t>(columns * 7), Ink::full));
    image.cell = 2;
    image.isTemplate = true;
    image.description = std::move(words);
    return image;
}

class Windows : public testing::Test {
protected:
    ~Windows() override { process.reset(); }

    void ask(const WindowRequest& request) {
        process->perform(request);
        QApplication::processEvents();
    }
    void show() {
        ask(SetMainMenu{mainMenu()});
        ask(ShowWindow{settings, description});
        told.clear();
    }
    [[nodiscard]] ShellWindow& window() { return *process->window(settings); }
    [[nodiscard]] QAction& menuAction(const QString& title) {
        for (QAction* action : window().actions()) {
            if (action->text() == title) {
                return *action;
            }
        }
        throw std::runtime_error("no menu item is called " + title.toStdString());
    }
    // What was told since it was last asked for, as the lines that would be sent.
    [[nodiscard]] std::vector<std::string> lines() { return linesOf(std::exchange(told, {})); }
    [[nodiscard]] static std::vector<std::string> linesOf(const std::vector<WindowEvent>& events) {
        std::vector<std::string> result;
        for (const auto& event : events) {
            result.push_back(MessageCodec::line(event));
        }
        return result;
    }
    bool waitUntilFinished() {
        return QTest::qWaitFor([this] { return finished > 0; }, patience);
    }

    std::vector<WindowEvent> told;
    int finished = 0;
    std::unique_ptr<WindowProcess> process = std::make_unique<WindowProcess>(
        [this](const WindowEvent& event) { told.push_back(event); }, [this] { ++finished; });
};

TEST_F(Windows, ShowsAWindowOfFixedContentSizeUnderTheMenuBarInTheMiddleOfTheScreen) {
    show();
    EXPECT_EQ(window().objectName(), "prefs.window");
    EXPECT_EQ(window().windowTitle(), "Thermopix Settings");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&window())->role(), QAccessible::Window);
    EXPECT_EQ(window().content().size(), QSize(300, 200));
    const auto* menuBar = window().findChild<QMenuBar*>();
    EXPECT_TRUE(menuBar->isVisible());
    EXPECT_EQ(window().size(), QSize(300, 200 + menuBar->height()));
    EXPECT_EQ(window().pos() + window().rect().center(),
              QGuiApplication::primaryScreen()->availableGeometry().center());
    window().resize(900, 900);
    QApplication::processEvents();
    EXPECT_EQ(window().content().size(), QSize(300, 200));
    EXPECT_EQ(window().minimumSize(), window().maximumSize());
}

TEST_F(Windows, TellsWhenAWindowWasShownClosedAndShownAgain) {
    ask(ShowWindow{settings, description});
    EXPECT_EQ(lines(), linesOf({WindowVisibilityChanged{settings, true, false}}));
    window().close();
    EXPECT_EQ(lines(), linesOf({WindowWillClose{settings}, WindowVisibilityChanged{settings, false, false}}));
    const QWidget* before = &window();
    ask(ShowWindow{settings, description});
    EXPECT_EQ(&window(), before);
    EXPECT_EQ(lines(), linesOf({WindowVisibilityChanged{settings, true, false}}));
}

TEST_F(Windows, TellsWhenAWindowWasMiniaturizedAndRestored) {
    show();
    window().showMinimized();
    QApplication::processEvents();
    EXPECT_EQ(lines(), linesOf({WindowVisibilityChanged{settings, false, true}}));
    ask(ShowWindow{settings, description});
    EXPECT_EQ(lines(), linesOf({WindowVisibilityChanged{settings, true, false}}));
}

TEST_F(Windows, TakesTheContentBeforeOrAfterTheWindowIsShown) {
    const auto root = [](const char* identifier) {
        return Views::vertical(0, {Views::pushButton("Press", identifier)});
    };
    ask(SetWindowContent{settings, root("early")});
    show();
    EXPECT_NE(window().findChild<QWidget*>(QStringLiteral("early")), nullptr);
    ask(SetWindowContent{settings, root("late")});
    auto* button = window().findChild<QWidget*>(QStringLiteral("late"));
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(lines(), linesOf({ControlOperated{settings, {"late", ""}}}));
}

TEST_F(Windows, EndsWithItsLastWindow) {
    show();
    ask(ShowAboutPanel{about});
    window().close();
    process->window(aboutPanelWindow)->close();
    EXPECT_EQ(finished, 0) << "the program may still ask for something";
    EXPECT_TRUE(waitUntilFinished());
}

TEST_F(Windows, DoesNotEndBeforeItHasShownSomething) {
    ask(SetMainMenu{mainMenu()});
    ask(SetActivationPolicy{ActivationPolicy::accessory});
    ask(SetStripMenu{statusMenu()});
    QTest::qWait(0);
    EXPECT_EQ(finished, 0);
    EXPECT_EQ(process->taskbarEntry(), nullptr);
}

TEST_F(Windows, ForgetsADiscardedWindowWithoutAWord) {
    show();
    ask(DiscardWindow{settings});
    EXPECT_EQ(process->window(settings), nullptr);
    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(waitUntilFinished());
}

TEST_F(Windows, StaysInTheTaskbarWithoutAWindowWhileItIsARegularProgram) {
    show();
    ask(SetActivationPolicy{ActivationPolicy::regular});
    window().close();
    EXPECT_TRUE(QTest::qWaitFor([this] { return process->taskbarEntry() != nullptr; }, patience));
    EXPECT_TRUE(process->taskbarEntry()->isMinimized());
    EXPECT_EQ(finished, 0);
    told.clear();
    process->taskbarEntry()->setWindowState(Qt::WindowNoState);
    EXPECT_TRUE(QTest::qWaitFor([this] { return process->taskbarEntry()->isMinimized(); }, patience));
    EXPECT_EQ(lines(), linesOf({Reopened{}}));
    ask(ShowWindow{settings, description});
    EXPECT_EQ(process->taskbarEntry(), nullptr);
    window().close();
    ask(SetActivationPolicy{ActivationPolicy::accessory});
    EXPECT_TRUE(waitUntilFinished());
}

TEST_F(Windows, ClosesMiniaturizesAndEndsByKey) {
    show();
    QTest::keyClick(&window(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(lines(), linesOf({MainMenuActionChosen{MenuAction::terminate}}));
    QTest::keyClick(&window(), Qt::Key_M, Qt::ControlModifier);
    EXPECT_TRUE(window().isMinimized());
    ask(ShowWindow{settings, description});
    QTest::keyClick(&window(), Qt::Key_H, Qt::ControlModifier);
    EXPECT_TRUE(window().isMinimized());
    ask(ShowWindow{settings, description});
    QTest::keyClick(&window(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(window().isVisible());
}

TEST_F(Windows, ShowsOneAboutPanelWithItsTextsWhichAKeyCloses) {
    ask(SetMainMenu{mainMenu()});
    ask(ShowAboutPanel{about});
    auto* panel = process->window(aboutPanelWindow);
    ask(ShowAboutPanel{about});
    EXPECT_EQ(process->window(aboutPanelWindow), panel);
    for (const auto& [name, text] : std::map<const char*, const char*>{
             {"about.name", "Thermopix"}, {"about.version", "Version 1.2 (—)"}, {"about.credits", "One\nTwo"}}) {
        auto* element = QAccessible::queryAccessibleInterface(panel->findChild<QWidget*>(QLatin1String(name)));
        EXPECT_EQ(element->text(QAccessible::Name), text);
        EXPECT_EQ(element->role(), QAccessible::StaticText);
    }
    QTest::keyClick(panel, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(Windows, GreysOutWhatADesktopCannotDo) {
    show();
    EXPECT_FALSE(menuAction(QStringLiteral("Hide Others")).isEnabled());
    EXPECT_FALSE(menuAction(QStringLiteral("Show All")).isEnabled());
    EXPECT_FALSE(menuAction(QStringLiteral("Paste")).isEnabled()) << "no text field has the focus";
    EXPECT_TRUE(menuAction(QStringLiteral("Hide Thermopix")).isEnabled());
    EXPECT_TRUE(menuAction(QStringLiteral("About Thermopix")).isEnabled());
    EXPECT_EQ(menuAction(QStringLiteral("Hide Others")).shortcut(), QKeySequence(QStringLiteral("Ctrl+Alt+H")));
    EXPECT_EQ(menuAction(QStringLiteral("Redo")).shortcut(), QKeySequence(QStringLiteral("Ctrl+Shift+Z")));
}

TEST_F(Windows, CopiesAndPastesInTheFocusedTextField) {
    show();
    auto* field = new QLineEdit(QStringLiteral("warm"), &window().content());
    field->show();
    QApplication::setActiveWindow(&window());
    field->setFocus();
    ASSERT_TRUE(menuAction(QStringLiteral("Copy")).isEnabled());
    menuAction(QStringLiteral("Select All")).trigger();
    menuAction(QStringLiteral("Copy")).trigger();
    field->clear();
    menuAction(QStringLiteral("Paste")).trigger();
    menuAction(QStringLiteral("Paste")).trigger();
    EXPECT_EQ(field->text(), "warmwarm");
    menuAction(QStringLiteral("Undo")).trigger();
    EXPECT_EQ(field->text(), "warm");
}

TEST_F(Windows, ListsTheOpenWindowsInTheWindowMenu) {
    show();
    ask(ShowAboutPanel{about});
    QMenu* menu = window().findChild<QMenuBar*>()->actions().at(2)->menu();
    const auto listed = [menu] {
        Q_EMIT menu->aboutToShow();
        QStringList titles;
        for (const QAction* action : menu->actions().mid(5)) {
            titles.append(action->text());
        }
        titles.sort();
        return titles;
    };
    EXPECT_EQ(listed(), (QStringList{"About Thermopix", "Thermopix Settings"}));
    process->window(aboutPanelWindow)->close();
    EXPECT_EQ(listed(), (QStringList{"Thermopix Settings"}));
}

TEST_F(Windows, OpensTheMenuOnItsOwnAndTellsWhatWasChosen) {
    ask(OpenPopupMenu{statusMenu(), ScreenPoint{30, 40}});
    ASSERT_TRUE(process->popup()->isVisible());
    EXPECT_EQ(process->popup()->pos(), QPoint(30, 40));
    QTest::keyClick(process->popup(), Qt::Key_Down);
    QTest::keyClick(process->popup(), Qt::Key_Return);
    EXPECT_EQ(lines(), linesOf({MenuWillOpen{MenuPlace::popup}, MenuDidClose{MenuPlace::popup},
                                MenuItemChosen{MenuPlace::popup, petItem("none", false)}}));
    EXPECT_TRUE(waitUntilFinished());
}

TEST_F(Windows, ObeysTheKeysThatTheOpenMenuShows) {
    ask(OpenPopupMenu{statusMenu(), ScreenPoint{30, 40}});
    told.clear();
    QTest::keyClick(process->popup(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(lines(),
              linesOf({MenuDidClose{MenuPlace::popup}, MenuItemChosen{MenuPlace::popup, statusMenu().items.back()}}));
}

TEST_F(Windows, BringsTheOpenMenuUpToDate) {
    ask(OpenPopupMenu{statusMenu("cat"), ScreenPoint{30, 40}});
    const auto actions = process->popup()->actions();
    ask(UpdatePopupMenu{statusMenu("none")});
    EXPECT_EQ(process->popup()->actions(), actions);
    EXPECT_TRUE(actions.at(1)->isChecked());
    EXPECT_FALSE(actions.at(2)->isChecked());
    process->popup()->close();
    ask(UpdatePopupMenu{statusMenu("cat")});
    EXPECT_TRUE(process->popup()->actions().at(1)->isChecked()) << "a closed menu is not brought up to date";
}

TEST_F(Windows, LeavesCheckMarksToTheirOwner) {
    ask(OpenPopupMenu{statusMenu("cat"), ScreenPoint{30, 40}});
    QAction* none = process->popup()->actions().at(1);
    none->trigger();
    EXPECT_FALSE(none->isChecked());
}

class Strip : public Windows {
protected:
    Strip() {
        ask(SetStripReadout{readout(30, "52 degrees Celsius")});
        ask(SetStripMenu{statusMenu()});
    }
    [[nodiscard]] static QRect screen() { return QGuiApplication::primaryScreen()->availableGeometry(); }
    [[nodiscard]] ReadoutStrip& strip() { return *process->strip(); }
};

TEST_F(Strip, StandsAtTheRightEndOfTheUpperEdgeOrWhereItIsToldAlongIt) {
    ask(ShowStrip{});
    EXPECT_TRUE(strip().isVisible());
    EXPECT_EQ(strip().y(), screen().top());
    EXPECT_GT(strip().geometry().right(), screen().right() - 20);
    EXPECT_EQ(strip().size(), QSize(60 + 18, 22));
    ask(ShowStrip{ScreenPoint{100, 50}});
    EXPECT_EQ(strip().pos(), QPoint(100, screen().top()));
    ask(ShowStrip{ScreenPoint{100000, 0}});
    EXPECT_EQ(strip().geometry().right(), screen().right());
}

TEST_F(Strip, KeepsItsRightEndWhenTheReadoutChangesItsWidth) {
    ask(ShowStrip{});
    const int right = strip().geometry().right();
    ask(SetStripReadout{readout(40, "100 degrees Celsius")});
    EXPECT_EQ(strip().geometry().right(), right);
    EXPECT_EQ(strip().width(), 80 + 18);
}

TEST_F(Strip, OpensItsMenuOnTheScreenByClickAndByKey) {
    ask(ShowStrip{});
    QTest::mouseClick(&strip(), Qt::LeftButton);
    EXPECT_TRUE(strip().menu().isVisible());
    EXPECT_EQ(strip().menu().y(), strip().geometry().bottom() + 1);
    EXPECT_TRUE(screen().contains(strip().menu().geometry()));
    EXPECT_GT(strip().menu().geometry().right(), strip().x()) << "below the strip";
    QTest::keyClick(&strip().menu(), Qt::Key_Escape);
    EXPECT_FALSE(strip().menu().isVisible());
    QTest::keyClick(&strip(), Qt::Key_Space);
    EXPECT_TRUE(strip().menu().isVisible());
    EXPECT_EQ(lines(), linesOf({MenuWillOpen{MenuPlace::strip}, MenuDidClose{MenuPlace::strip},
                                MenuWillOpen{MenuPlace::strip}}));
    QTest::keyClick(&strip().menu(), Qt::Key_Up);
    QTest::keyClick(&strip().menu(), Qt::Key_Return);
    EXPECT_EQ(lines(),
              linesOf({MenuDidClose{MenuPlace::strip}, MenuItemChosen{MenuPlace::strip, statusMenu().items.back()}}));
}

TEST_F(Strip, IsDraggedAlongTheEdgeAndTellsWhereItWasLeft) {
    ask(ShowStrip{ScreenPoint{300, 0}});
    QTest::mousePress(&strip(), Qt::LeftButton, {}, QPoint(20, 10));
    QTest::mouseMove(&strip(), QPoint(-30, 60));
    QApplication::processEvents();
    QTest::mouseRelease(&strip(), Qt::LeftButton, {}, QPoint(20, 10));
    EXPECT_EQ(strip().pos(), QPoint(250, screen().top()));
    EXPECT_EQ(lines(), linesOf({StripMoved{{250, screen().top()}}}));
    EXPECT_FALSE(strip().menu().isVisible());
}

TEST_F(Strip, IsAButtonWithAMenuNamedByTheReading) {
    ask(ShowStrip{});
    auto* element = QAccessible::queryAccessibleInterface(&strip());
    EXPECT_EQ(element->role(), QAccessible::ButtonMenu);
    EXPECT_EQ(element->text(QAccessible::Name), "52 degrees Celsius");
    EXPECT_TRUE(element->state().hasPopup);
    element->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(strip().menu().isVisible());
    ask(SetStripReadout{readout(30, "53 degrees Celsius")});
    EXPECT_EQ(element->text(QAccessible::Name), "53 degrees Celsius");
}

TEST_F(Strip, KeepsTheProcessAliveUntilItIsHidden) {
    ask(ShowStrip{});
    ask(ShowWindow{settings, description});
    window().close();
    ask(HideStrip{});
    EXPECT_FALSE(strip().isVisible());
    EXPECT_TRUE(waitUntilFinished());
}

}  // namespace
}  // namespace thermopix
