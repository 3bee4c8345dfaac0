#include "environment/CommandLine.h"

#include <fmt/core.h>

#include <algorithm>

#include "environment/AppEnvironment.h"

namespace thermopix {

namespace {

constexpr std::array options{
    CommandLineOption{Options::sensors, "", "print a report of all sensors and end"},
    CommandLineOption{Options::acceptanceSelfTest, "", "run the acceptance self-test and end"},
    CommandLineOption{Options::exportWebAssets, "DIRECTORY", "write fonts, pets and pictures there and end"},
    CommandLineOption{Options::captureSensors, "DIRECTORY", "copy this machine's sensors there and end"},
    CommandLineOption{Options::terminal, "", "show the readout in this terminal"},
    CommandLineOption{Options::help, "", "print this help and end; so does -h"},
    CommandLineOption{Options::version, "", "print the version and end"},
    CommandLineOption{Options::fakeSensor, "", "use scripted sensors, login item and updater"},
    CommandLineOption{Options::showPreferences, "", "open the Settings window at start"},
    CommandLineOption{Options::defaultsSuite, "NAME", "keep settings apart, under this name"},
};

struct HelpRow {
    std::string_view name;
    std::string_view help;
};

constexpr std::array environmentVariables{
    HelpRow{"THERMOPIX_SYSFS_ROOT", "folder to read sensors from, in place of /sys"},
    HelpRow{"NO_COLOR", "when not empty, no colours in the terminal"},
};

constexpr std::string_view settingsNote =
    "Settings are kept in $XDG_CONFIG_HOME/thermopix, which is ~/.config/thermopix\n"
    "unless XDG_CONFIG_HOME is set.\n";

const CommandLineOption* optionCalled(std::string_view flag) {
    for (const auto& option : options) {
        if (option.flag == flag) {
            return &option;
        }
    }
    return nullptr;
}

bool isForAutomatedTests(const CommandLineOption& option) {
    return option.flag.starts_with("--uitest-");
}

std::string helpRow(std::string_view name, std::string_view help) {
    return fmt::format("  {:<32}{}\n", name, help);
}

std::string helpRows(bool forAutomatedTests) {
    std::string rows;
    for (const auto& option : options) {
        if (isForAutomatedTests(option) == forAutomatedTests) {
            const bool hasValue = !option.valueName.empty();
            rows += helpRow(fmt::format("{}{}{}", option.flag, hasValue ? " " : "", option.valueName), option.help);
        }
    }
    return rows;
}

}  // namespace

std::span<const CommandLineOption> commandLineOptions() {
    return options;
}

std::string helpText() {
    std::string text =
        "Usage: thermopix [OPTION]...\n"
        "\n"
        "Shows the machine's temperature in the status bar as pixel art.\n";
    text += "\nOptions:\n" + helpRows(false);
    text += "\nFor automated tests:\n" + helpRows(true);
    text += "\nEnvironment:\n";
    for (const auto& variable : environmentVariables) {
        text += helpRow(variable.name, variable.help);
    }
    text += "\n";
    text += settingsNote;
    return text;
}

bool isGiven(std::string_view flag, std::span<const std::string> arguments) {
    return std::find(arguments.begin(), arguments.end(), flag) != arguments.end();
}

std::vector<std::string> unknownArguments(std::span<const std::string> arguments) {
    std::vector<std::string> unknown;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const CommandLineOption* option =
            optionCalled(arguments[i] == Options::shortHelp ? Options::help : arguments[i]);
        if (option == nullptr) {
            unknown.push_back(arguments[i]);
        } else if (!option->valueName.empty()) {
            ++i;
        }
    }
    return unknown;
}

ChosenRunMode chooseRunMode(std::span<const std::string> arguments) {
    const auto has = [&](std::string_view flag) { return isGiven(flag, arguments); };
    if (has(Options::sensors)) {
        return {RunMode::sensorDump, {}};
    }
    if (has(Options::acceptanceSelfTest)) {
        return {RunMode::acceptanceSelfTest, {}};
    }
    if (auto directory = AppEnvironment::value(Options::exportWebAssets, arguments)) {
        return {RunMode::webAssetExport, std::move(*directory)};
    }
    if (auto directory = AppEnvironment::value(Options::captureSensors, arguments)) {
        return {RunMode::sensorCapture, std::move(*directory)};
    }
    if (has(Options::help) || has(Options::shortHelp)) {
        return {RunMode::help, {}};
    }
    if (has(Options::version)) {
        return {RunMode::version, {}};
    }
    return {RunMode::application, {}};
}

}  // namespace thermopix
