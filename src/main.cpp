#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/AppDelegate.h"
#include "diagnostics/AcceptanceSelfTest.h"
#include "diagnostics/SensorCaptureMode.h"
#include "diagnostics/SensorDump.h"
#include "diagnostics/WebAssetExport.h"
#include "environment/AppInfo.h"
#include "environment/CommandLine.h"
#include "shell/Desktop.h"
#include "system/Platform.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): not every libc declares it

namespace {

using namespace thermopix;

EnvironmentVariables environmentVariables() {
    EnvironmentVariables variables;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text(*entry);
        const auto equals = text.find('=');
        if (equals != std::string_view::npos) {
            variables.emplace(text.substr(0, equals), text.substr(equals + 1));
        }
    }
    return variables;
}

int runApplication(Arguments arguments, const EnvironmentVariables& variables, Platform& platform) {
    for (const auto& unknown : unknownArguments(arguments)) {
        platform.standardError().line("thermopix: unknown option " + unknown + " is ignored; see thermopix --help");
    }
    const auto desktop = makeDesktop(platform, arguments, variables);
    AppDelegate delegate(arguments, variables, platform, *desktop);
    return desktop->run(delegate);
}

int showHelp(StandardOutput& output) {
    output.line(helpText());
    return EXIT_SUCCESS;
}

int showVersion(Platform& platform) {
    const auto& system = platform.systemInformation();
    platform.standardOutput().line(std::string(AppInfo::name) + " " + AppInfo::shortVersion(system) + " (" +
                                   AppInfo::build(system) + ")");
    return EXIT_SUCCESS;
}

/// A report that nobody got is none.
int statusOf(int status, const StandardOutput& output) {
    return output.hasFailed() ? EXIT_FAILURE : status;
}

int run(const std::vector<std::string>& arguments, const EnvironmentVariables& variables, Platform& platform) {
    auto& output = platform.standardOutput();
    const auto chosen = chooseRunMode(arguments);
    switch (chosen.mode) {
        case RunMode::sensorDump:
            return statusOf(SensorDump::run(platform, output), output);
        case RunMode::acceptanceSelfTest:
            return statusOf(AcceptanceSelfTest::run(platform, output), output);
        case RunMode::webAssetExport:
            return statusOf(WebAssetExport::run(chosen.directory, output), output);
        case RunMode::sensorCapture:
            return statusOf(SensorCaptureMode::run(chosen.directory, platform.sensorCapture(), output), output);
        case RunMode::help:
            return statusOf(showHelp(output), output);
        case RunMode::version:
            return statusOf(showVersion(platform), output);
        case RunMode::application:
            break;
    }
    return runApplication(arguments, variables, platform);
}

}  // namespace

int main(int argc, char** argv) {
    occupyStandardStreams();
    std::signal(SIGPIPE, SIG_IGN);
    const auto variables = environmentVariables();
    const auto platform = makePlatform(variables);
    return run({argv, argv + argc}, variables, *platform);
}
