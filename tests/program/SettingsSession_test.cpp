// Settings on a disk that is full, gone or damaged, as the user meets them.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/TemporaryFolder.h"
#include "platform/linux/notifications/FakeNotificationService.h"
#include "platform/linux/tray/TestBus.h"
#include "platform/linux/tray/TestTrayHost.h"
#include "platform/linux/updates/FakePackageKit.h"
#include "program/Program.h"
#include "program/ProgramHome.h"

namespace thermopix {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* preferences = ".config/thermopix/preferences.v1";

class SettingsSessionTest : public testing::Test {
protected:
    SettingsSessionTest() { home.write("clock", std::string(sizeof(std::int64_t), '\0')); }

    void start(const Texts& arguments = {}) {
        const auto registrations = host.registrations.size();
        const std::string bus = g_getenv("DBUS_SESSION_BUS_ADDRESS");
        program = std::make_unique<Program>(arguments,
                                            Program::Environment{{"HOME", home.path().string()},
                                                                 {"THERMOPIX_SYSFS_ROOT", home.path("sys").string()},
                                                                 {"THERMOPIX_TEST_CLOCK", home.path("clock").string()},
                                                                 {"THERMOPIX_TEST_PACKAGE", "thermopix"},
                                                                 {"DBUS_SESSION_BUS_ADDRESS", bus},
                                                                 {"DBUS_SYSTEM_BUS_ADDRESS", bus}});
        ASSERT_TRUE(host.waitForRegistration(registrations + 1));
    }

    Program::Result quit() {
        program->signal(SIGTERM);
        EXPECT_TRUE(runUntil([this] { return program->hasEnded(); }));
        auto result = program->finish();
        EXPECT_EQ(result.status, 0);
        program.reset();
        return result;
    }

    /// The program's clocks go ahead at once.
    void setClock(std::int64_t seconds) const {
        // In place: the program has the file mapped.
        std::fstream file(home.path("clock"), std::ios::binary | std::ios::in | std::ios::out);
        file.write(reinterpret_cast<const char*>(&seconds), sizeof seconds);
    }

    void choose(const std::string& label) { host.click(host.entry(label).id); }
    [[nodiscard]] bool waitFor(const std::string& file, std::string_view text) const {
        return runUntil([&] { return home.read(file).find(text) != std::string::npos; });
    }

    ProgramHome home;
    TestTrayHost host;
    FakeNotificationService notifications{{"body"}};
    FakePackageKit packages;
    std::unique_ptr<Program> program;
};

TEST_F(SettingsSessionTest, AChoiceThatCannotBeStoredIsToldOnceAndStoredWhenItCan) {
    home.write(".config/thermopix", "in the way");
    ASSERT_NO_FATAL_FAILURE(start());
    choose("Fahrenheit");
    ASSERT_TRUE(runUntil([this] { return !notifications.shown.empty(); }));
    EXPECT_EQ(notifications.shown[0].title, "Thermopix cannot save its settings");
    EXPECT_EQ(notifications.shown[0].body,
              "Not a directory. What you choose holds while Thermopix runs, and is saved as soon as that is possible.");
    choose("Segment");
    EXPECT_TRUE(runUntil([this] { return host.text("Title").find("Fahrenheit") != std::string::npos; }));
    EXPECT_EQ(home.read(".config/thermopix"), "in the way");

    std::filesystem::remove(home.path(".config/thermopix"));
    setClock(10);
    EXPECT_TRUE(waitFor(preferences, R"("unit":"fahrenheit","style":"segment")"));
    EXPECT_EQ(notifications.shown.size(), 1U);
    quit();
}

TEST_F(SettingsSessionTest, WhatCouldNotBeStoredIsTriedOnceMoreAtTheEnd) {
    home.write(".config/thermopix", "in the way");
    ASSERT_NO_FATAL_FAILURE(start());
    choose("Fahrenheit");
    ASSERT_TRUE(runUntil([this] { return !notifications.shown.empty(); }));
    std::filesystem::remove(home.path(".config/thermopix"));
    quit();
    EXPECT_NE(home.read(preferences).find(R"("unit":"fahrenheit")"), std::string::npos);
}

TEST_F(SettingsSessionTest, AFileThatCannotBeReadStaysUntilTheUserChangesSomething) {
    for (const auto& [bytes, kept] : {std::pair(std::string(R"({"unit":"fahrenheit",})"), "preferences.v1.unreadable"),
                                      std::pair(R"({"unit":"fahrenheit","x":")" + std::string(64U << 10U, 'x') + "\"}",
                                                "preferences.v1.unreadable.newest")}) {
        home.write(preferences, bytes);
        ASSERT_NO_FATAL_FAILURE(start());
        const auto result = quit();
        EXPECT_NE(result.errors.find("cannot read " + home.path(preferences).string()), std::string::npos)
            << result.errors;
        EXPECT_EQ(home.read(preferences), bytes);

        ASSERT_NO_FATAL_FAILURE(start());
        choose("Segment");
        EXPECT_TRUE(waitFor(preferences, R"("unit":"celsius","style":"segment")"));
        quit();
        EXPECT_EQ(home.read(std::string(".config/thermopix/") + kept), bytes);
    }
}

TEST_F(SettingsSessionTest, WhatTheUpdaterRemembersFollowsTheSuite) {
    ASSERT_NO_FATAL_FAILURE(start({"--uitest-defaults-suite", "trial"}));
    choose("Check for Updates…");
    ASSERT_TRUE(runUntil([this] { return !notifications.shown.empty(); }));
    EXPECT_TRUE(runUntil([this] { return !home.read(".config/thermopix/suites/trial/updates.lastCheck").empty(); }));
    quit();
    EXPECT_EQ(home.entries(".config/thermopix"), Texts{"suites"});
}

}  // namespace
}  // namespace thermopix
