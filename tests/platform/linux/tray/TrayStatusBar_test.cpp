#include "platform/linux/tray/TrayStatusBar.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fakes/RecordingLog.h"
#include "fakes/TemporaryFolder.h"
#include "pixels/PixelRasterizer.h"
#include "pixels/StatusImageRenderer.h"
#include "platform/linux/glib/GLibMainLoop.h"
#include "platform/linux/tray/TestBus.h"
#include "platform/linux/tray/TestDesktopSettings.h"
#include "platform/linux/tray/TestMenuSource.h"
#include "platform/linux/tray/TestTrayHost.h"

namespace thermopix {
namespace {

constexpr RgbaColor white{255, 255, 255};
constexpr RgbaColor black{0, 0, 0};
const RgbaColor mid = trayInk({TrayInkTone::mid, {}}, TrayInkRule::colorScheme, {}).full;

using Names = std::vector<std::string>;
using Points = std::vector<std::pair<std::int32_t, std::int32_t>>;

StatusItemImage imageOf(std::int64_t value, PixelPet pet = PixelPet::none, bool blinking = false) {
    Display display;
    display.value = value;
    return {StatusImageRenderer::image(display, {.pet = pet, .showsUnitLetter = true, .blinking = blinking}),
            PixelRasterizer::digitsBitmap(display)};
}

std::vector<TrayPicture> expectedPictures(const StatusItemImage& image, TrayPictureSet set, RgbaColor color) {
    return trayPictures(trayArt(image, shape(set)), set, trayInk({{}, color}, {}, {}));
}

/// As on a machine that is busy: while it lives, nothing runs in the threads that GLib shares.
class HeldThreads {
public:
    HeldThreads() {
        // As many as there may ever be.
        for (int i = 0; i < 400; ++i) {
            const GObjectHandle<GTask> task(g_task_new(nullptr, nullptr, nullptr, nullptr));
            g_task_set_task_data(task.get(), new std::shared_future<void>(released_),
                                 [](gpointer data) { delete static_cast<std::shared_future<void>*>(data); });
            g_task_run_in_thread(task.get(), [](GTask*, gpointer, gpointer data, GCancellable*) {
                static_cast<std::shared_future<void>*>(data)->wait();
            });
        }
    }
    ~HeldThreads() { release_.set_value(); }
    HeldThreads(const HeldThreads&) = delete;
    HeldThreads& operator=(const HeldThreads&) = delete;

private:
    std::promise<void> release_;
    std::shared_future<void> released_ = release_.get_future().share();
};

class TrayStatusBarTest : public testing::Test {
protected:
    /// The tray's watcher runs in this test's process, whose name this sets.
    void nameProcess(std::string_view name) {
        folder_.write("proc/" + ownProcess() + "/comm", std::string(name) + "\n");
    }

    static std::string ownProcess() { return std::to_string(getpid()); }
    static std::string ownBusName() { return "org.kde.StatusNotifierItem-" + ownProcess() + "-1"; }

    void makeBar(bool hasPopup = true) {
        TrayOptions options;
        options.settingsFolder = folder_.path();
        options.processRoot = folder_.path() / "proc";
        if (hasPopup) {
            options.showPopup = [this](std::int32_t x, std::int32_t y) { popups_.emplace_back(x, y); };
            options.useActivationToken = [this](std::string_view token) { tokens_.emplace_back(token); };
        }
        bar_.emplace(TestBus::instance().session(), options, loop_, log_);
        item_ = bar_->makeStatusItem();
    }

    void makeItem() {
        makeBar();
        item_->setMenu(menu_);
        item_->setImage(imageOf(72));
    }

    /// A tray whose process has this name.
    void makeHost(std::string_view processName, TestTrayHost::Draws draws = TestTrayHost::Draws::atOnce) {
        nameProcess(processName);
        host_.emplace(draws);
    }

    /// An item that a tray of this process name shows.
    void showIn(std::string_view processName) {
        makeHost(processName);
        makeItem();
        ASSERT_TRUE(host_->waitForRegistration());
        host_->itemSignals.clear();
    }

    /// Another tray takes over.
    void moveTo(std::string_view processName) {
        host_.reset();
        makeHost(processName);
        ASSERT_TRUE(host_->waitForRegistration());
    }

    /// Another tray draws beside the one in this process.
    [[nodiscard]] GObjectHandle<GDBusConnection> otherHost(const std::string& processName) {
        folder_.write("proc/4711/comm", processName + "\n");
        auto other = TestBus::instance().connect();
        takeName(other.get(), "org.kde.StatusNotifierHost-4711-1");
        return other;
    }

    void expectPictures(TrayPictureSet set, RgbaColor color, const StatusItemImage& image = imageOf(72)) const {
        EXPECT_EQ(host_->pictures(), expectedPictures(image, set, color));
    }

    [[nodiscard]] bool waitForPictures(TrayPictureSet set, RgbaColor color) const {
        return runUntil([&] { return host_->pictures() == expectedPictures(imageOf(72), set, color); });
    }

    /// Calls a method of the item; the name of the error, or nothing.
    [[nodiscard]] std::string call(const char* method, GVariant* parameters) const {
        return host_->callItem(method, parameters).error;
    }

    [[nodiscard]] bool waitFor(TrayPresence presence) {
        return runUntil([this, presence] { return bar_->presence().value() == presence; });
    }

    /// What has been signalled up to now.
    [[nodiscard]] Names signals() {
        settle(host_->connection());
        return std::exchange(host_->itemSignals, {});
    }

    TemporaryFolder folder_;
    RecordingLog log_;
    GLibMainLoop loop_;
    TestMenuSource menu_;
    Points popups_;
    std::vector<std::string> tokens_;
    std::optional<TestTrayHost> host_;
    std::optional<TrayStatusBar> bar_;
    std::unique_ptr<StatusItem> item_;
};

TEST_F(TrayStatusBarTest, RegistersOnceByItsBusName) {
    showIn("waybar");
    ASSERT_EQ(host_->registrations.size(), 1U);
    EXPECT_EQ(host_->registrations[0].reference, ownBusName());
    EXPECT_TRUE(item_->hasButton());
}

TEST_F(TrayStatusBarTest, RegistersByPathWithTheTrayThatOpensOnlyMenusOfSuchItems) {
    showIn("xapp-sn-watcher");
    EXPECT_EQ(host_->registrations[0].reference, "/org/ayatana/NotificationItem/thermopix");
    expectPictures(TrayPictureSet::bar, mid);
}

TEST_F(TrayStatusBarTest, RegistersByConnectionWhenItsNameIsTaken) {
    const auto other = TestBus::instance().connect();
    takeName(other.get(), ownBusName().c_str());
    showIn("waybar");
    EXPECT_EQ(host_->registrations[0].reference, g_dbus_connection_get_unique_name(TestBus::instance().session()));
    EXPECT_EQ(host_->text("Id"), "'thermopix'");
}

TEST_F(TrayStatusBarTest, WaitsForTheFirstPicture) {
    host_.emplace();
    makeBar();
    ASSERT_TRUE(waitFor(TrayPresence::present));
    settle(host_->connection());
    EXPECT_TRUE(host_->registrations.empty());
    item_->setImage(imageOf(72));
    EXPECT_TRUE(host_->waitForRegistration());
}

TEST_F(TrayStatusBarTest, WaitsForItsMenuHoweverOftenTheBusAnswersBefore) {
    makeHost("waybar");
    {
        const HeldThreads busy;
        makeItem();
        ASSERT_TRUE(waitFor(TrayPresence::present));
        for (int round = 0; round < 3000; ++round) {
            static_cast<void>(callFrom(TestBus::instance().session(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                       "org.freedesktop.DBus", "GetId", nullptr));
        }
        EXPECT_TRUE(host_->registrations.empty());
    }
    ASSERT_TRUE(host_->waitForRegistration());
    EXPECT_EQ(host_->menu().children.size(), 9U);
}

TEST_F(TrayStatusBarTest, LogsWhatTheLibraryOfTheMenuSays) {
    showIn("waybar");
    static_cast<void>(
        host_->callMenu("AboutToShow", g_variant_new("(i)", host_->menu().children[TestMenuSource::quit].id)));
    ASSERT_TRUE(runUntil([this] { return !log_.lines.empty(); }));
    EXPECT_TRUE(log_.lines[0].starts_with("desktop: About to Show")) << log_.lines[0];
}

TEST_F(TrayStatusBarTest, HasThePropertiesThatTraysRead) {
    showIn("waybar");
    for (const auto& [names, text] : std::vector<std::pair<Names, std::string>>{
             {{"Id"}, "'thermopix'"},
             {{"Category"}, "'Hardware'"},
             {{"Status"}, "'Active'"},
             {{"Title", "IconAccessibleDesc"}, "'72 degrees Celsius'"},
             {{"ToolTip"}, "('', [], '72 degrees Celsius', '')"},
             {{"WindowId"}, "0"},
             {{"Menu"}, "'/MenuBar'"},
             {{"ItemIsMenu"}, "true"},
             {{"IconName", "IconThemePath", "OverlayIconName", "AttentionIconName", "AttentionMovieName",
               "AttentionAccessibleDesc"},
              "''"},
             {{"OverlayIconPixmap", "AttentionIconPixmap"}, "[]"},
             {{"XAyatanaLabel", "XAyatanaLabelGuide", "NoSuchProperty"}, "(none)"}}) {
        for (const auto& name : names) {
            EXPECT_EQ(host_->text(name.c_str()), text) << name;
        }
    }
}

TEST_F(TrayStatusBarTest, AWideTrayGetsTheReadoutAndASquareOneTheDigits) {
    showIn("waybar");
    expectPictures(TrayPictureSet::bar, white);
    moveTo("swaybar");
    expectPictures(TrayPictureSet::square, white);
}

TEST_F(TrayStatusBarTest, ATrayWhoseProcessIsUnknownGetsTheDigits) {
    host_.emplace();
    makeItem();
    ASSERT_TRUE(host_->waitForRegistration());
    expectPictures(TrayPictureSet::square, mid);
}

TEST_F(TrayStatusBarTest, AnotherKindOfTrayBesideAWideOneMeansDigits) {
    const auto other = otherHost("swaybar");
    showIn("waybar");
    expectPictures(TrayPictureSet::square, mid);
}

TEST_F(TrayStatusBarTest, AnotherTrayThatJoinsLaterIsNoticed) {
    showIn("waybar");
    const auto other = otherHost("swaybar");
    host_->startDrawing();
    ASSERT_TRUE(runUntil([this] { return !host_->itemSignals.empty(); }));
    EXPECT_EQ(signals(), Names{"NewIcon"});
    expectPictures(TrayPictureSet::square, mid);
}

TEST_F(TrayStatusBarTest, SignalsWhatHasChangedAndNothingElse) {
    showIn("waybar");
    item_->setImage(imageOf(73));
    EXPECT_EQ(signals(), (Names{"NewTitle", "NewToolTip", "NewIcon"}));
    expectPictures(TrayPictureSet::bar, white, imageOf(73));
    EXPECT_EQ(host_->text("Title"), "'73 degrees Celsius'");

    StatusItemImage image = imageOf(73);
    image.readout.description = "73 degrees Celsius, comfy";
    item_->setImage(image);
    EXPECT_EQ(signals(), (Names{"NewTitle", "NewToolTip"}));

    image.note = "No CPU sensor answers: hottest of 2 others";
    item_->setImage(image);
    EXPECT_EQ(signals(), Names{"NewToolTip"});
    EXPECT_EQ(host_->text("ToolTip"),
              "('', [], '73 degrees Celsius, comfy', 'No CPU sensor answers: hottest of 2 others')");
}

TEST_F(TrayStatusBarTest, AnUnchangedPictureCrossesNoBus) {
    showIn("waybar");
    const auto before = TestBus::instance().sentMessages();
    for (int i = 0; i < 60; ++i) {
        item_->setImage(imageOf(72));
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
    }
    EXPECT_EQ(TestBus::instance().sentMessages(), before);

    StatusItemImage sameWords = imageOf(73);
    sameWords.readout.description = imageOf(72).readout.description;
    item_->setImage(sameWords);
    EXPECT_EQ(TestBus::instance().sentMessages(), before + 1);
}

TEST_F(TrayStatusBarTest, ABlinkingPetIsSeenInAWideTrayOnly) {
    showIn("waybar");
    item_->setImage(imageOf(72, PixelPet::cat));
    EXPECT_EQ(signals(), (Names{"NewTitle", "NewToolTip", "NewIcon"}));
    item_->setImage(imageOf(72, PixelPet::cat, true));
    item_->setImage(imageOf(72, PixelPet::cat));
    EXPECT_EQ(signals(), (Names{"NewIcon", "NewIcon"}));
    expectPictures(TrayPictureSet::bar, white, imageOf(72, PixelPet::cat));

    moveTo("swaybar");
    item_->setImage(imageOf(72, PixelPet::cat, true));
    item_->setImage(imageOf(72, PixelPet::cat));
    EXPECT_EQ(signals(), Names{});
}

TEST_F(TrayStatusBarTest, WordsAreEscapedInToolTipsOnly) {
    showIn("waybar");
    StatusItemImage image = imageOf(72);
    image.readout.description = "<72> & \xff";
    item_->setImage(image);
    EXPECT_EQ(host_->text("Title"), "'<72> & \xef\xbf\xbd'");
    EXPECT_EQ(host_->text("ToolTip"), "('', [], '&lt;72&gt; &amp; \xef\xbf\xbd', '')");
}

TEST_F(TrayStatusBarTest, AnEmptyPictureIsStillAPictureAndCalledAsTheProgram) {
    showIn("waybar");
    item_->setImage(StatusItemImage{});
    expectPictures(TrayPictureSet::bar, white, StatusItemImage{});
    EXPECT_EQ(host_->text("Title"), "'Thermopix'");
}

TEST_F(TrayStatusBarTest, ATrayThatComesLaterGetsTheItem) {
    makeItem();
    ASSERT_TRUE(waitFor(TrayPresence::absent));
    item_->setImage(imageOf(80));
    moveTo("waybar");
    EXPECT_TRUE(bar_->hasHost());
    expectPictures(TrayPictureSet::bar, white, imageOf(80));
}

TEST_F(TrayStatusBarTest, ATrayThatRestartsGetsTheItemAgainAndMeanwhileNothingCrossesTheBus) {
    showIn("waybar");
    for (int i = 0; i < 3; ++i) {
        host_.reset();
        ASSERT_TRUE(waitFor(TrayPresence::absent));
        const auto before = TestBus::instance().sentMessages();
        item_->setImage(imageOf(90 + i));
        EXPECT_EQ(TestBus::instance().sentMessages(), before);
        moveTo("waybar");
        EXPECT_EQ(host_->registrations.size(), 1U);
        EXPECT_EQ(host_->registrations[0].reference, ownBusName());
        EXPECT_TRUE(bar_->hasHost());
    }
}

TEST_F(TrayStatusBarTest, SaysOnceThatItWaitsForATray) {
    makeBar();
    EXPECT_EQ(bar_->presence().value(), TrayPresence::unknown);
    EXPECT_FALSE(bar_->hasHost());
    ASSERT_TRUE(waitFor(TrayPresence::absent));
    bar_->reload();
    EXPECT_EQ(log_.lines, Names{"desktop: no status notifier host; waiting for one"});
}

TEST_F(TrayStatusBarTest, AWatcherWithoutATrayIsNoTrayYetAndGetsNoItem) {
    makeHost("waybar", TestTrayHost::Draws::notYet);
    makeItem();
    ASSERT_TRUE(waitFor(TrayPresence::absent));
    EXPECT_EQ(host_->registrations.size(), 0U);
    for (const std::size_t registrations : {1U, 2U}) {
        host_->startDrawing();
        ASSERT_TRUE(waitFor(TrayPresence::present));
        ASSERT_TRUE(host_->waitForRegistration(registrations));
        host_->stopDrawing();
        ASSERT_TRUE(waitFor(TrayPresence::absent));
    }
    EXPECT_EQ(host_->registrations.size(), 2U);
    EXPECT_EQ(host_->registrations[1].reference, host_->registrations[0].reference);
}

TEST_F(TrayStatusBarTest, AWatcherThatCannotSayWhetherThereIsATrayHasNone) {
    makeHost("waybar");
    host_->wrongHostAnswer = "broken";
    makeItem();
    ASSERT_TRUE(waitFor(TrayPresence::absent));
    EXPECT_EQ(host_->registrations.size(), 0U);
}

TEST_F(TrayStatusBarTest, AWatcherThatRefusesTheItemIsNamedInTheLog) {
    makeHost("waybar");
    host_->refusesItems = true;
    makeItem();
    ASSERT_TRUE(host_->waitForRegistration());
    EXPECT_EQ(log_.lines, Names{"desktop: the status notifier watcher does not take the item"});
}

TEST_F(TrayStatusBarTest, ActivateIsThereOnlyForTraysThatNeedIt) {
    showIn("waybar");
    const std::string plain = host_->introspection();
    EXPECT_EQ(plain.find("\"Activate\""), std::string::npos);
    for (const auto* method : {"ContextMenu", "SecondaryActivate", "Scroll", "ProvideXdgActivationToken"}) {
        EXPECT_NE(plain.find('"' + std::string(method) + '"'), std::string::npos) << method;
    }
    EXPECT_NE(call("Activate", g_variant_new("(ii)", 1, 2)), "");
    EXPECT_TRUE(popups_.empty());

    moveTo("lxqt-panel");
    EXPECT_NE(host_->introspection().find("\"Activate\""), std::string::npos);
    EXPECT_EQ(call("Activate", g_variant_new("(ii)", 1, 2)), "");
    EXPECT_EQ(popups_, (Points{{1, 2}}));
}

TEST_F(TrayStatusBarTest, ContextMenuShowsThePopup) {
    showIn("swaybar");
    EXPECT_EQ(call("ContextMenu", g_variant_new("(ii)", 300, 4)), "");
    EXPECT_EQ(popups_, (Points{{300, 4}}));
    EXPECT_EQ(call("ProvideXdgActivationToken", g_variant_new("(s)", "token-1")), "");
    EXPECT_EQ(tokens_, Names{"token-1"});
    EXPECT_EQ(call("SecondaryActivate", g_variant_new("(ii)", 1, 2)), "");
    EXPECT_EQ(call("Scroll", g_variant_new("(is)", 120, "vertical")), "");
    EXPECT_EQ(popups_.size(), 1U);
}

TEST_F(TrayStatusBarTest, WithoutMenuAndPopupTheLogSaysSo) {
    makeHost("swaybar");
    makeBar(false);
    item_->setImage(imageOf(72));
    ASSERT_TRUE(host_->waitForRegistration());
    EXPECT_EQ(host_->text("Menu"), "'/NO_DBUSMENU'");
    EXPECT_EQ(call("ContextMenu", g_variant_new("(ii)", 300, 4)), "");
    EXPECT_EQ(call("ProvideXdgActivationToken", g_variant_new("(s)", "unused")), "");
    EXPECT_EQ(log_.lines, Names{"desktop: no popup menu to show at 300, 4"});
}

TEST_F(TrayStatusBarTest, CallsOfTheWrongTypeAreRefused) {
    showIn("lxqt-panel");
    EXPECT_NE(call("ContextMenu", g_variant_new("(s)", "here")), "");
    EXPECT_NE(call("Activate", nullptr), "");
    EXPECT_NE(call("Scroll", g_variant_new("(ii)", 1, 2)), "");
    EXPECT_NE(call("NoSuchMethod", nullptr), "");
    const auto written =
        callFrom(host_->connection(), host_->itemBusName(), host_->itemPath(), "org.freedesktop.DBus.Properties", "Set",
                 g_variant_new("(ssv)", "org.kde.StatusNotifierItem", "Title", g_variant_new_string("x")));
    EXPECT_NE(written.error, "");
    EXPECT_TRUE(popups_.empty());
    EXPECT_EQ(host_->text("Title"), "'72 degrees Celsius'");
}

TEST_F(TrayStatusBarTest, AFloodOfTrayNewsIsServed) {
    showIn("waybar");
    for (int i = 0; i < 200; ++i) {
        host_->startDrawing();
        host_->stopDrawing();
    }
    ASSERT_TRUE(waitFor(TrayPresence::absent));
    settle(host_->connection());
    EXPECT_EQ(bar_->presence().value(), TrayPresence::absent);
    EXPECT_EQ(host_->registrations.size(), 1U);
    EXPECT_EQ(signals(), Names{});
}

TEST_F(TrayStatusBarTest, TheMenuIsTheItems) {
    showIn("waybar");
    ASSERT_EQ(host_->menu().children.size(), 9U);
    host_->aboutToShowMenu();
    EXPECT_TRUE(runUntil([this] { return menu_.openings == 1; }));
    host_->click(host_->menu().children[TestMenuSource::quit].id);
    ASSERT_TRUE(runUntil([this] { return !menu_.performed.empty(); }));
    EXPECT_EQ(menu_.performed[0].action, MenuAction::quit);
}

TEST_F(TrayStatusBarTest, AnItemThatIsGoneLeavesTheBus) {
    showIn("waybar");
    item_.reset();
    EXPECT_NE(call("ContextMenu", g_variant_new("(ii)", 1, 2)), "");
    const auto reply = callFrom(host_->connection(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                "org.freedesktop.DBus", "NameHasOwner", g_variant_new("(s)", ownBusName().c_str()));
    gboolean hasOwner = TRUE;
    g_variant_get(reply.value.get(), "(b)", &hasOwner);
    EXPECT_FALSE(hasOwner);
}

TEST_F(TrayStatusBarTest, ABarMayEndWhileTheBusIsStillBeingAsked) {
    makeHost("waybar");
    for (int turns = 0; turns < 12; ++turns) {
        makeItem();
        for (int i = 0; i < turns; ++i) {
            g_main_context_iteration(nullptr, FALSE);
        }
        item_.reset();
        bar_.reset();
    }
    settle(host_->connection());
}

TEST_F(TrayStatusBarTest, TwoItemsAreToldApart) {
    showIn("waybar");
    const auto second = bar_->makeStatusItem();
    second->setImage(imageOf(55));
    ASSERT_TRUE(host_->waitForRegistration(2));
    EXPECT_EQ(host_->registrations[1].reference, "/StatusNotifierItem/2");
    expectPictures(TrayPictureSet::bar, white, imageOf(55));
    host_->registrations.pop_back();
    expectPictures(TrayPictureSet::bar, white);
}

TEST_F(TrayStatusBarTest, InkFollowsTheColorSchemeOfThePortalAndNoOtherNews) {
    TestDesktopSettings portal(TestDesktopSettings::portal, g_variant_new_variant(g_variant_new_uint32(2)));
    showIn("kded5");
    EXPECT_TRUE(waitForPictures(TrayPictureSet::square, black));
    static_cast<void>(signals());
    portal.change(g_variant_new_uint32(1));
    EXPECT_TRUE(waitForPictures(TrayPictureSet::square, white));
    EXPECT_EQ(signals(), Names{"NewIcon"});
    portal.announce(g_variant_new("(ssv)", "org.freedesktop.appearance", "contrast", g_variant_new_uint32(2)));
    portal.announce(g_variant_new("(ssv)", "org.gnome.desktop.interface", "color-scheme", g_variant_new_uint32(2)));
    portal.announce(g_variant_new("(s)", "org.freedesktop.appearance"));
    portal.announce(nullptr);
    settle(host_->connection());
    EXPECT_EQ(signals(), Names{});
    for (GVariant* const none : {g_variant_new_uint32(0), g_variant_new_string("dark")}) {
        portal.change(none);
        EXPECT_TRUE(waitForPictures(TrayPictureSet::square, mid));
        portal.change(g_variant_new_uint32(1));
        EXPECT_TRUE(waitForPictures(TrayPictureSet::square, white));
    }
}

TEST_F(TrayStatusBarTest, ThePortalIsNotAskedWhereTheBarIsKnown) {
    TestDesktopSettings portal(TestDesktopSettings::portal, g_variant_new_uint32(2));
    showIn("waybar");
    settle(host_->connection());
    EXPECT_EQ(portal.readCount, 0);
    expectPictures(TrayPictureSet::bar, white);
}

TEST_F(TrayStatusBarTest, InkFollowsTheXfcePanel) {
    TestDesktopSettings portal(TestDesktopSettings::portal, g_variant_new_uint32(2));
    TestDesktopSettings xfconf(TestDesktopSettings::xfconf, g_variant_new_boolean(FALSE));
    showIn("panel-6-systray");
    EXPECT_TRUE(waitForPictures(TrayPictureSet::xfcePanel, black));
    xfconf.change(g_variant_new_boolean(TRUE));
    EXPECT_TRUE(waitForPictures(TrayPictureSet::xfcePanel, white));
    xfconf.announce(g_variant_new("(ssv)", "xfce4-panel", "/panels/panel-1/size", g_variant_new_boolean(FALSE)));
    settle(host_->connection());
    expectPictures(TrayPictureSet::xfcePanel, white);
}

TEST_F(TrayStatusBarTest, TheUserMayOverruleShapeAndInk) {
    folder_.write("desktop.conf", "[Desktop]\nShape=square\nInk=#ff8000\nPlace=tray\n");
    showIn("waybar");
    EXPECT_EQ(bar_->choices().place, TrayPlace::tray);
    expectPictures(TrayPictureSet::square, {255, 128, 0});
}

TEST_F(TrayStatusBarTest, AReloadAppliesWhatHasChanged) {
    showIn("waybar");
    bar_->reload();
    EXPECT_EQ(signals(), Names{});
    folder_.write("desktop.conf", "[Desktop]\nInk=dark\nShape=nonsense\n");
    bar_->reload();
    EXPECT_EQ(signals(), Names{"NewIcon"});
    expectPictures(TrayPictureSet::bar, black);
    ASSERT_EQ(log_.lines.size(), 1U);
    EXPECT_NE(log_.lines[0].find("Shape cannot be \"nonsense\""), std::string::npos);
}

}  // namespace
}  // namespace thermopix
