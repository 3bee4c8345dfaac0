#include "platform/linux/application/LinuxDesktop.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <string_view>
#include <vector>

#include "app/CommandLine.h"
#include "platform/linux/glib/GLibSignals.h"
#include "platform/linux/terminal/TerminalStatusBar.h"

namespace thermopix {

namespace {

bool isRequested(Arguments arguments, std::string_view flag) {
    return std::find(arguments.begin(), arguments.end(), flag) != arguments.end();
}

}  // namespace

LinuxDesktop::LinuxDesktop(LinuxPlatform& platform, Arguments arguments, const EnvironmentVariables& variables)
    : platform_(platform),
      // A run in the terminal is a visitor that may stand beside the program of the desktop.
      sessionBus_(isRequested(arguments, Options::terminal) ? nullptr : platform.sessionBus()),
      application_(sessionBus_, platform.mainLoop(), platform.log()),
      windows_(platform.log()) {
    makeStatusBar(variables);
}

void LinuxDesktop::makeStatusBar(const EnvironmentVariables& variables) {
    statusBar_ = std::make_unique<TerminalStatusBar>(STDOUT_FILENO, variables, [this] { application_.terminate(); });
}

int LinuxDesktop::run(ApplicationDelegate& delegate) {
    std::vector<Subscription> signals;
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        signals.push_back(observeUnixSignal(number, [this] { application_.terminate(); }));
    }
    application_.onActivate = [&delegate] { delegate.applicationShouldHandleReopen(false); };
    delegate.applicationDidFinishLaunching();
    platform_.mainLoop().run();
    application_.onActivate = nullptr;
    return 0;
}

std::unique_ptr<Desktop> makeDesktop(Platform& platform, Arguments arguments, const EnvironmentVariables& variables) {
    return std::make_unique<LinuxDesktop>(dynamic_cast<LinuxPlatform&>(platform), arguments, variables);
}

}  // namespace thermopix
