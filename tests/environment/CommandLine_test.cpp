#include "environment/CommandLine.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "base/Unicode.h"
#include "environment/AppEnvironment.h"

namespace thermopix {
namespace {

using Words = std::vector<std::string>;

RunMode modeOf(const Words& arguments) {
    return chooseRunMode(arguments).mode;
}

TEST(CommandLine, WithoutArgumentsTheApplicationStarts) {
    EXPECT_EQ(modeOf({}), RunMode::application);
    EXPECT_EQ(modeOf({"thermopix"}), RunMode::application);
    EXPECT_EQ(modeOf({"thermopix", "--terminal"}), RunMode::application);
    EXPECT_EQ(modeOf({"thermopix", "--uitest-fake-sensor", "--uitest-show-preferences"}), RunMode::application);
}

TEST(CommandLine, EachModeHasItsFlag) {
    EXPECT_EQ(modeOf({"thermopix", "--sensors"}), RunMode::sensorDump);
    EXPECT_EQ(modeOf({"thermopix", "--acceptance-selftest"}), RunMode::acceptanceSelfTest);
    EXPECT_EQ(modeOf({"thermopix", "--export-web-assets", "out"}), RunMode::webAssetExport);
    EXPECT_EQ(modeOf({"thermopix", "--help"}), RunMode::help);
    EXPECT_EQ(modeOf({"thermopix", "-h"}), RunMode::help);
    EXPECT_EQ(modeOf({"thermopix", "--version"}), RunMode::version);
}

TEST(CommandLine, TheFirstModeInOrderWinsWhereverItsFlagStands) {
    EXPECT_EQ(modeOf({"p", "--version", "--help", "--export-web-assets", "d", "--acceptance-selftest", "--sensors"}),
              RunMode::sensorDump);
    EXPECT_EQ(modeOf({"p", "--version", "--help", "--export-web-assets", "d", "--acceptance-selftest"}),
              RunMode::acceptanceSelfTest);
    EXPECT_EQ(modeOf({"p", "--version", "--help", "--export-web-assets", "d"}), RunMode::webAssetExport);
    EXPECT_EQ(modeOf({"p", "--version", "--help"}), RunMode::help);
    EXPECT_EQ(modeOf({"--sensors"}), RunMode::sensorDump);
}

TEST(CommandLine, ExportTakesTheNextArgumentWhateverItIs) {
    EXPECT_EQ(chooseRunMode(Words{"p", "--export-web-assets", "web/art"}).directory, "web/art");
    EXPECT_EQ(chooseRunMode(Words{"p", "--export-web-assets", "--help"}).directory, "--help");
    EXPECT_EQ(chooseRunMode(Words{"p", "--export-web-assets", ""}).directory, "");
    EXPECT_EQ(modeOf({"p", "--export-web-assets", ""}), RunMode::webAssetExport);
    EXPECT_EQ(chooseRunMode(Words{"p", "--export-web-assets", "a", "--export-web-assets", "b"}).directory, "a");
}

TEST(CommandLine, ExportWithoutDirectoryStartsTheApplication) {
    EXPECT_EQ(modeOf({"thermopix", "--export-web-assets"}), RunMode::application);
}

TEST(CommandLine, SensorsAsTheDirectoryOfAnExportIsStillTheSensorReport) {
    EXPECT_EQ(modeOf({"thermopix", "--export-web-assets", "--sensors"}), RunMode::sensorDump);
}

TEST(CommandLine, FlagsAreComparedWhole) {
    EXPECT_EQ(modeOf({"p", "--sensor", "--sensors=1", "-sensors", "--Sensors", " --sensors"}), RunMode::application);
}

TEST(CommandLine, ValueIsTheArgumentAfterTheFirstOccurrence) {
    const auto value = [](const Words& arguments) { return AppEnvironment::value("--flag", arguments); };
    EXPECT_EQ(value({}), std::nullopt);
    EXPECT_EQ(value({"p"}), std::nullopt);
    EXPECT_EQ(value({"p", "--flag"}), std::nullopt);
    EXPECT_EQ(value({"p", "--flag", "a"}), "a");
    EXPECT_EQ(value({"p", "--flag", "a", "--flag", "b"}), "a");
    EXPECT_EQ(value({"p", "--flag", "--other"}), "--other");
    EXPECT_EQ(value({"p", "--flag", "--flag"}), "--flag");
    EXPECT_EQ(value({"--flag", "a"}), "a");
    EXPECT_EQ(value({"p", "--flag=a", "b"}), std::nullopt);
}

TEST(CommandLine, UnknownArgumentsAreThoseThatNoOptionKnows) {
    EXPECT_EQ(unknownArguments(Words{}), Words{});
    EXPECT_EQ(unknownArguments(Words{"--not-looked-at"}), Words{});
    EXPECT_EQ(unknownArguments(Words{"p", "--sensors", "--terminal", "--help", "-h"}), Words{});
    EXPECT_EQ(unknownArguments(Words{"p", "--senors", "--terminal", "file", ""}), (Words{"--senors", "file", ""}));
}

TEST(CommandLine, ValuesOfOptionsAreNotUnknown) {
    EXPECT_EQ(unknownArguments(Words{"p", "--export-web-assets", "out", "more"}), Words{"more"});
    EXPECT_EQ(unknownArguments(Words{"p", "--uitest-defaults-suite", "--trial", "--sensors"}), Words{});
    EXPECT_EQ(unknownArguments(Words{"p", "--export-web-assets"}), Words{});
}

TEST(CommandLine, EveryFlagIsAnOptionOnceWithItsDescription) {
    std::set<std::string_view> flags;
    for (const auto& option : commandLineOptions()) {
        EXPECT_TRUE(flags.insert(option.flag).second) << option.flag;
        EXPECT_TRUE(option.flag.starts_with("--")) << option.flag;
        EXPECT_FALSE(option.help.empty()) << option.flag;
    }
    EXPECT_EQ(flags, (std::set<std::string_view>{Options::sensors, Options::acceptanceSelfTest,
                                                 Options::exportWebAssets, Options::captureSensors, Options::terminal,
                                                 Options::fakeSensor, Options::showPreferences, Options::defaultsSuite,
                                                 Options::help, Options::version}));
}

TEST(CommandLine, HelpIsLaidOutInColumns) {
    EXPECT_EQ(helpText(),
              R"(Usage: thermopix [OPTION]...

Shows the machine's temperature in the status bar as pixel art.

Options:
  --sensors                       print a report of all sensors and end
  --acceptance-selftest           run the acceptance self-test and end
  --export-web-assets DIRECTORY   write fonts, pets and pictures there and end
  --capture-sensors DIRECTORY     copy this machine's sensors there and end
  --terminal                      show the readout in this terminal
  --help                          print this help and end; so does -h
  --version                       print the version and end

For automated tests:
  --uitest-fake-sensor            use scripted sensors, login item and updater
  --uitest-show-preferences       open the Settings window at start
  --uitest-defaults-suite NAME    keep settings apart, under this name

Environment:
  THERMOPIX_SYSFS_ROOT            folder to read sensors from, in place of /sys
  NO_COLOR                        when not empty, no colours in the terminal

Settings are kept in $XDG_CONFIG_HOME/thermopix, which is ~/.config/thermopix
unless XDG_CONFIG_HOME is set.
)");
}

TEST(CommandLine, HelpFitsATerminalOfEightyColumns) {
    std::istringstream text(helpText());
    for (std::string line; std::getline(text, line);) {
        EXPECT_LE(characterCount(line), 80U) << line;
    }
}

}  // namespace
}  // namespace thermopix
