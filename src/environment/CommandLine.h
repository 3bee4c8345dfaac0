#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace thermopix {

/// One option of the program, as help and completions show it.
struct CommandLineOption {
    std::string_view flag;
    /// The placeholder of the option's value; empty for a plain switch.
    std::string_view valueName;
    std::string_view help;
};

namespace Options {
inline constexpr std::string_view sensors = "--sensors";
inline constexpr std::string_view acceptanceSelfTest = "--acceptance-selftest";
inline constexpr std::string_view exportWebAssets = "--export-web-assets";
inline constexpr std::string_view captureSensors = "--capture-sensors";
inline constexpr std::string_view terminal = "--terminal";
inline constexpr std::string_view fakeSensor = "--uitest-fake-sensor";
inline constexpr std::string_view showPreferences = "--uitest-show-preferences";
inline constexpr std::string_view defaultsSuite = "--uitest-defaults-suite";
inline constexpr std::string_view help = "--help";
inline constexpr std::string_view shortHelp = "-h";
inline constexpr std::string_view version = "--version";
}  // namespace Options

/// Every option, in the order of the help text.
[[nodiscard]] std::span<const CommandLineOption> commandLineOptions();

/// The text of `--help`, lines ended by line feeds.
[[nodiscard]] std::string helpText();

[[nodiscard]] bool isGiven(std::string_view flag, std::span<const std::string> arguments);

/// Arguments after the program's path that no option knows and that are no option's value.
[[nodiscard]] std::vector<std::string> unknownArguments(std::span<const std::string> arguments);

enum class RunMode { sensorDump, acceptanceSelfTest, webAssetExport, sensorCapture, help, version, application };

struct ChosenRunMode {
    RunMode mode = RunMode::application;
    /// Where `webAssetExport` and `sensorCapture` write.
    std::string directory;
};

/// The first mode that the arguments ask for, in the order of `RunMode`.
[[nodiscard]] ChosenRunMode chooseRunMode(std::span<const std::string> arguments);

}  // namespace thermopix
