#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "environment/AppInfo.h"
#include "fakes/TemporaryFolder.h"
#include "pixels/PixelRasterizer.h"
#include "pixels/StatusImageRenderer.h"
#include "platform/linux/tray/TestBus.h"
#include "platform/linux/tray/TestTrayHost.h"
#include "program/Program.h"
#include "tray/TrayPictures.h"

namespace thermopix {
namespace {

// A bus of its own, which a test may kill.
class PrivateBus {
public:
    PrivateBus() {
        GErrorSlot error;
        process_.reset(g_subprocess_new(G_SUBPROCESS_FLAGS_STDOUT_PIPE, error.out(), "dbus-daemon", "--session",
                                        "--nofork", "--print-address", nullptr));
        if (!process_) {
            ADD_FAILURE() << error.message();
            return;
        }
        const GObjectHandle<GDataInputStream> lines(
            g_data_input_stream_new(g_subprocess_get_stdout_pipe(process_.get())));
        const GStringHandle line(g_data_input_stream_read_line(lines.get(), nullptr, nullptr, nullptr));
        address_ = line ? line.get() : "";
    }
    ~PrivateBus() { kill(); }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    [[nodiscard]] const std::string& address() const { return address_; }

    [[nodiscard]] GObjectHandle<GDBusConnection> connect() const {
        return GObjectHandle<GDBusConnection>(g_dbus_connection_new_for_address_sync(
            address_.c_str(),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr));
    }

    void kill() const {
        if (process_) {
            g_subprocess_force_exit(process_.get());
            g_subprocess_wait(process_.get(), nullptr, nullptr);
        }
    }

private:
    GObjectHandle<GSubprocess> process_;
    std::string address_;
};

class DesktopSessionTest : public testing::Test {
protected:
    DesktopSessionTest() { heat(57); }

    // The machine has one processor sensor.
    void heat(int celsius) const {
        home.write("sys/class/hwmon/hwmon0/name", "coretemp\n");
        home.write("sys/class/hwmon/hwmon0/temp1_label", "Package id 0\n");
        home.write("sys/class/hwmon/hwmon0/temp1_input", std::to_string(celsius) + "000\n");
    }

    [[nodiscard]] Program::Environment session() const {
        return {{"HOME", home.path().string()},
                {"THERMOPIX_SYSFS_ROOT", (home.path() / "sys").string()},
                {"DBUS_SESSION_BUS_ADDRESS", g_getenv("DBUS_SESSION_BUS_ADDRESS")},
                {"DBUS_SYSTEM_BUS_ADDRESS", systemBus.address()}};
    }

    [[nodiscard]] std::unique_ptr<Program> start(const std::vector<std::string>& arguments = {}) const {
        return std::make_unique<Program>(arguments, session());
    }

    /// The program with its item in the tray.
    [[nodiscard]] std::unique_ptr<Program> startShown() {
        auto program = start();
        EXPECT_TRUE(host->waitForRegistration());
        EXPECT_TRUE(waitForTitle("57 degrees Celsius, comfy"));
        return program;
    }

    void configure(const std::string& desktopConfiguration) const {
        home.write(".config/thermopix/desktop.conf", "[Desktop]\n" + desktopConfiguration);
    }

    [[nodiscard]] std::string settings() const { return home.read(".config/thermopix/preferences.v1"); }

    // What the item calls itself, without the quotes of its printed form.
    [[nodiscard]] std::string title() const {
        const std::string printed = host->text("Title");
        return printed.size() < 2 ? printed : printed.substr(1, printed.size() - 2);
    }

    [[nodiscard]] bool waitForTitle(const std::string& title) {
        const bool came = runUntil([&] { return this->title() == title; });
        EXPECT_EQ(this->title(), title);
        return came;
    }

    [[nodiscard]] static bool ends(Program& program) {
        return runUntil([&] { return program.hasEnded(); });
    }

    static void expectCleanEnd(Program& program) {
        EXPECT_TRUE(ends(program));
        EXPECT_EQ(program.finish().status, 0);
    }

    [[nodiscard]] TestMenuEntry entry(const std::string& label) const {
        for (const auto& child : host->menu().children) {
            if (child.property("label") == "'" + label + "'") {
                return child;
            }
        }
        ADD_FAILURE() << "no menu entry " << label;
        return {};
    }

    void choose(const std::string& label) const { host->click(entry(label).id); }

    TemporaryFolder home;
    PrivateBus systemBus;
    std::unique_ptr<TestTrayHost> host = std::make_unique<TestTrayHost>();
};

StatusItemImage expectedImage(const Display& display) {
    return {StatusImageRenderer::image(display, {.pet = PixelPet::cat}), PixelRasterizer::digitsBitmap(display)};
}

TrayInk white() {
    return trayInk({.tone = {}, .color = RgbaColor{255, 255, 255, 255}}, TrayInkRule::colorScheme, {});
}

constexpr Display comfy57{.value = 57, .unit = {}, .pressure = {}, .isHot = false, .mood = PetMood::content};

TEST_F(DesktopSessionTest, ShowsTheDigitsOrTheWholeReadoutWhereTheUserSaysThatItFits) {
    struct Case {
        const char* shape;
        TrayShape art;
        TrayPictureSet set;
    };
    for (const auto& [shape, art, set] : {Case{"", TrayShape::square, TrayPictureSet::square},
                                          Case{"Shape=wide\n", TrayShape::wide, TrayPictureSet::bar}}) {
        configure("Ink=#FFFFFF\n" + std::string(shape));
        host.reset();
        host = std::make_unique<TestTrayHost>();
        const auto program = startShown();
        EXPECT_EQ(host->pictures(), trayPictures(trayArt(expectedImage(comfy57), art), set, white())) << shape;
    }
}

TEST_F(DesktopSessionTest, OffersTheWholeMenu) {
    const auto program = startShown();
    host->aboutToShowMenu();
    EXPECT_EQ(host->menu().children.size(), 25U);
    EXPECT_EQ(host->menu().children[0].property("label"), "'Comfy — 57°C'");
    EXPECT_EQ(entry("Cat").property("toggle-state"), "1");
    EXPECT_EQ(entry("Ghost").property("toggle-state"), "0");
    EXPECT_EQ(entry("CPU · hottest of 1 sensor · thermal state nominal").property("enabled"), "false");
}

TEST_F(DesktopSessionTest, KeepsWhatIsChosenInTheMenuOverARestart) {
    {
        const auto program = startShown();
        choose("Fahrenheit");
        ASSERT_TRUE(waitForTitle("135 degrees Fahrenheit, comfy"));
        choose("Segment");
        choose("No pet");
        ASSERT_TRUE(waitForTitle("135 degrees Fahrenheit"));
        EXPECT_TRUE(runUntil([&] {
            return settings().find(R"("unit":"fahrenheit","style":"segment","size":"compact","pet":"none")") !=
                   std::string::npos;
        })) << settings();
        choose("Quit Thermopix");
        expectCleanEnd(*program);
    }
    const auto program = start();
    ASSERT_TRUE(host->waitForRegistration(2));
    EXPECT_TRUE(waitForTitle("135 degrees Fahrenheit"));
    host->aboutToShowMenu();
    EXPECT_EQ(entry("Fahrenheit").property("toggle-state"), "1");
    EXPECT_EQ(entry("Segment").property("toggle-state"), "1");
}

TEST_F(DesktopSessionTest, AppearsWhenTheTrayComesLate) {
    configure("Place=tray\n");
    host.reset();
    auto variables = session();
    variables["DISPLAY"] = ":no-such-display";
    Program program({}, variables);
    ASSERT_TRUE(program.waitForErrors("waiting for one"));
    host = std::make_unique<TestTrayHost>();
    ASSERT_TRUE(host->waitForRegistration());
    EXPECT_TRUE(waitForTitle("57 degrees Celsius, comfy"));
}

TEST_F(DesktopSessionTest, ComesBackAfterTheTrayRestarted) {
    const auto program = start();
    ASSERT_TRUE(host->waitForRegistration());
    for (int restart = 0; restart < 3; ++restart) {
        host.reset();
        host = std::make_unique<TestTrayHost>();
        ASSERT_TRUE(host->waitForRegistration());
        EXPECT_TRUE(waitForTitle("57 degrees Celsius, comfy"));
    }
}

TEST_F(DesktopSessionTest, EndsASecondStartAfterWakingTheFirst) {
    const auto first = startShown();
    const auto second = start();
    expectCleanEnd(*second);
    EXPECT_EQ(host->registrations.size(), 1U);
    EXPECT_FALSE(first->hasEnded());
    // Activation reads the user's choices for this desktop again.
    const auto before = host->pictures();
    configure("Ink=#123456\n");
    const auto third = start();
    expectCleanEnd(*third);
    EXPECT_TRUE(runUntil([&] { return host->pictures() != before; }));
}

TEST_F(DesktopSessionTest, OffersItsItemAsSoonAsATrayAppearsWhereThereIsNoDisplay) {
    host.reset();
    const auto program = start();
    ASSERT_TRUE(program->waitForOutput("57 degrees Celsius, comfy\n")) << program->errors();
    host = std::make_unique<TestTrayHost>();
    ASSERT_TRUE(host->waitForRegistration());
    EXPECT_TRUE(waitForTitle("57 degrees Celsius, comfy"));
}

TEST_F(DesktopSessionTest, GivesWayToAStartThatHasADisplay) {
    const auto first = startShown();
    auto variables = session();
    variables["DISPLAY"] = ":no-such-display";
    const Program second({}, variables);
    EXPECT_TRUE(first->waitForErrors("takes over; ending"));
    expectCleanEnd(*first);
    ASSERT_TRUE(host->waitForRegistration(2));
    EXPECT_TRUE(waitForTitle("57 degrees Celsius, comfy"));
    // That one stays, whoever comes.
    for (const auto& third : {start(), std::make_unique<Program>(std::vector<std::string>{}, variables)}) {
        expectCleanEnd(*third);
    }
    EXPECT_FALSE(second.hasEnded());
}

TEST_F(DesktopSessionTest, IsShownWhereAStrangerHoldsItsName) {
    takeName(host->connection(), std::string(AppInfo::identifier).c_str());
    const auto program = startShown();
    EXPECT_TRUE(program->waitForErrors("belongs to another program")) << program->errors();
}

TEST_F(DesktopSessionTest, FailsWhereARunningInstanceDoesNotAnswer) {
    const auto first = startShown();
    first->signal(SIGSTOP);
    const auto second = start();
    EXPECT_TRUE(ends(*second));
    const auto result = second->finish();
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("Thermopix is running already and does not answer; ending\n"), std::string::npos)
        << result.errors;
    first->signal(SIGCONT);
    EXPECT_TRUE(waitForTitle("57 degrees Celsius, comfy"));
}

TEST_F(DesktopSessionTest, RunsBesideANormalInstanceInInterfaceTests) {
    const auto first = start();
    ASSERT_TRUE(host->waitForRegistration());
    const auto second = start({"--uitest-fake-sensor", "--uitest-defaults-suite", "trial"});
    ASSERT_TRUE(host->waitForRegistration(2));
    EXPECT_TRUE(waitForTitle("61 degrees Celsius, comfy"));
    EXPECT_FALSE(first->hasEnded());
}

/// Says that the machine is about to sleep or has woken.
void prepareForSleep(GDBusConnection* bus, bool isGoing) {
    g_dbus_connection_emit_signal(bus, nullptr, "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                                  "PrepareForSleep", g_variant_new("(b)", isGoing ? TRUE : FALSE), nullptr);
    g_dbus_connection_flush_sync(bus, nullptr, nullptr);
}

TEST_F(DesktopSessionTest, ShowsAFreshReadingAfterSleep) {
    const auto system = systemBus.connect();
    takeName(system.get(), "org.freedesktop.login1");
    const auto program = startShown();
    prepareForSleep(system.get(), true);
    heat(31);
    prepareForSleep(system.get(), false);
    // Blended with the reading before sleep the first one would be higher.
    EXPECT_TRUE(runUntil([&] { return title() != "57 degrees Celsius, comfy"; }));
    EXPECT_EQ(title(), "31 degrees Celsius, cold");
}

TEST_F(DesktopSessionTest, ShowsAFreshReadingWhenTheServiceThatAnnouncedASleepDies) {
    auto system = systemBus.connect();
    takeName(system.get(), "org.freedesktop.login1");
    const auto program = startShown();
    prepareForSleep(system.get(), true);
    heat(31);
    g_dbus_connection_close_sync(system.get(), nullptr, nullptr);
    EXPECT_TRUE(runUntil([&] { return title() != "57 degrees Celsius, comfy"; }));
    EXPECT_EQ(title(), "31 degrees Celsius, cold");
}

TEST_F(DesktopSessionTest, KeepsReadingInATerminalWhileTheDisplaysSleep) {
    constexpr const char* saver = "org.gnome.ScreenSaver";
    takeName(host->connection(), saver);
    const auto program = start({"--terminal"});
    ASSERT_TRUE(program->waitForOutput("57 degrees Celsius, comfy\n"));
    g_dbus_connection_emit_signal(host->connection(), nullptr, "/org/gnome/ScreenSaver", saver, "ActiveChanged",
                                  g_variant_new("(b)", TRUE), nullptr);
    g_dbus_connection_flush_sync(host->connection(), nullptr, nullptr);
    heat(31);
    EXPECT_TRUE(program->waitForOutput("degrees Celsius, cold\n")) << program->output();
}

TEST_F(DesktopSessionTest, SurvivesHostileCalls) {
    const auto program = startShown();
    const std::string name(AppInfo::identifier);
    std::string path = "/" + name;
    for (auto& character : path) {
        character = character == '.' ? '/' : character;
    }
    const auto hostile = TestBus::instance().connect();
    EXPECT_NE(
        callFrom(hostile.get(), name, path, "org.freedesktop.Application", "Activate", g_variant_new("(s)", "x")).error,
        "");
    EXPECT_NE(callFrom(hostile.get(), name, path, "org.freedesktop.Application", "Explode", nullptr).error, "");
    EXPECT_EQ(callFrom(hostile.get(), name, path, "org.freedesktop.Application", "ActivateAction",
                       g_variant_new("(sava{sv})", "nonsense", nullptr, nullptr))
                  .error,
              "");
    static_cast<void>(host->callItem("ContextMenu", g_variant_new("(ss)", "a", "b")));
    static_cast<void>(host->callItem("Scroll", g_variant_new("(is)", 1000000, "sideways")));
    static_cast<void>(host->callMenu("Event", g_variant_new("(isvu)", -7, "clicked", g_variant_new_string("x"), 0U)));
    for (gint32 id = 1000; id < 2000; ++id) {
        g_dbus_connection_call(host->connection(), host->itemBusName().c_str(), "/MenuBar", "com.canonical.dbusmenu",
                               "Event", g_variant_new("(isvu)", id, "clicked", g_variant_new_int32(0), 0U), nullptr,
                               G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
    }
    EXPECT_EQ(title(), "57 degrees Celsius, comfy");
    EXPECT_FALSE(program->hasEnded());
}

TEST_F(DesktopSessionTest, LeavesTheTrayWhenToldToEnd) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        const auto program = start();
        const auto registrations = host->registrations.size();
        ASSERT_TRUE(host->waitForRegistration(registrations + 1));
        program->signal(number);
        expectCleanEnd(*program);
        EXPECT_NE(host->callItem("ContextMenu", g_variant_new("(ii)", 0, 0)).error, "");
    }
}

TEST_F(DesktopSessionTest, EndsAlikeHoweverOftenItIsTold) {
    const auto program = startShown();
    while (!program->hasEnded()) {
        program->signal(SIGTERM);
        program->signal(SIGINT);
    }
    EXPECT_EQ(program->finish().status, 0);
}

TEST_F(DesktopSessionTest, LivesWithoutStandardStreams) {
    const Program program({}, session(), "<&- >&- 2>&-");
    ASSERT_TRUE(host->waitForRegistration());
    // The program has something to log, and nowhere to.
    host.reset();
    host = std::make_unique<TestTrayHost>();
    ASSERT_TRUE(host->waitForRegistration());
    EXPECT_TRUE(waitForTitle("57 degrees Celsius, comfy"));
}

TEST_F(DesktopSessionTest, LogsWhatATrayRepeatsOnceWithItsCount) {
    auto program = startShown();
    const auto item = entry("Celsius").id;
    for (int i = 0; i < 100; ++i) {
        static_cast<void>(host->callMenu("AboutToShow", g_variant_new("(i)", item)));
    }
    for (int i = 0; i < 100; ++i) {
        static_cast<void>(host->callItem("ContextMenu", g_variant_new("(ii)", i, i)));
    }
    program->signal(SIGTERM);
    const auto errors = program->finish().errors;
    EXPECT_LT(std::count(errors.begin(), errors.end(), '\n'), 10) << errors;
    for (const char* line : {"We're ignoring it. (repeated: ", "There is no display to show windows on. (repeated: "}) {
        EXPECT_NE(errors.find(line), std::string::npos) << errors;
    }
}

TEST_F(DesktopSessionTest, EndsInGoodOrderWhenTheBusIsLost) {
    PrivateBus sessionBus;
    auto variables = session();
    variables["DBUS_SESSION_BUS_ADDRESS"] = sessionBus.address();
    variables["DISPLAY"] = ":no-such-display";
    Program program({}, variables);
    ASSERT_TRUE(program.waitForErrors("waiting for one"));
    sessionBus.kill();
    const auto result = program.finish();
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.errors.find("[Thermopix/desktop] the session bus is gone; ending\n"), std::string::npos)
        << result.errors;
}

TEST_F(DesktopSessionTest, StaysInTheTerminalWhereTheUserWantsIt) {
    configure("Place=terminal\n");
    const auto program = start();
    EXPECT_TRUE(program->waitForOutput("57 degrees Celsius, comfy\n")) << program->errors();
    EXPECT_TRUE(host->registrations.empty());
}

}  // namespace
}  // namespace thermopix
