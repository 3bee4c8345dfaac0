#include "platform/linux/application/LinuxDesktop.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <string_view>
#include <utility>
#include <vector>

#include "app/CommandLine.h"
#include "menubar/StatusPlace.h"
#include "platform/linux/bus/BusConnection.h"
#include "platform/linux/glib/GLibSignals.h"
#include "platform/linux/terminal/TerminalStatusBar.h"

namespace thermopix {

namespace {

bool isRequested(Arguments arguments, std::string_view flag) {
    return std::find(arguments.begin(), arguments.end(), flag) != arguments.end();
}

bool hasDisplay(const EnvironmentVariables& variables) {
    constexpr std::array names{"WAYLAND_DISPLAY", "DISPLAY"};
    return std::any_of(names.begin(), names.end(), [&](const char* name) {
        const auto variable = variables.find(name);
        return variable != variables.end() && !variable->second.empty();
    });
}

}  // namespace

LinuxDesktop::LinuxDesktop(LinuxPlatform& platform, Arguments arguments, const EnvironmentVariables& variables)
    : platform_(platform),
      // A run in the terminal is a visitor that may stand beside the program of the desktop.
      sessionBus_(isRequested(arguments, Options::terminal) ? nullptr : platform.sessionBus()),
      application_(sessionBus_, platform.mainLoop(), platform.log()),
      windows_(platform.log()) {
    StatusPlaceFacts facts{.isTerminalRequested = isRequested(arguments, Options::terminal),
                           .hasDisplay = hasDisplay(variables)};
    if (sessionBus_ != nullptr) {
        TrayOptions options;
        options.settingsFolder = platform.settingsFolder();
        tray_ = std::make_unique<TrayStatusBar>(sessionBus_, std::move(options), platform.log());
        facts.hasSessionBus = true;
        facts.choice = tray_->choices().place;
        facts.hasTrayWatcher = hasNameOwner(sessionBus_, TrayHostWatch::watcherName);
    }
    if (statusPlace(facts) == TrayPlace::terminal || !tray_) {
        tray_.reset();
        terminal_ = std::make_unique<TerminalStatusBar>(STDOUT_FILENO, variables, [this] { application_.terminate(); });
    }
}

StatusBar& LinuxDesktop::statusBar() {
    return tray_ ? static_cast<StatusBar&>(*tray_) : *terminal_;
}

int LinuxDesktop::run(ApplicationDelegate& delegate) {
    std::vector<Subscription> signals;
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        signals.push_back(observeUnixSignal(number, [this] { application_.terminate(); }));
    }
    application_.onActivate = [this, &delegate] {
        if (tray_) {
            tray_->reload();
        }
        delegate.applicationShouldHandleReopen(false);
    };
    delegate.applicationDidFinishLaunching();
    platform_.mainLoop().run();
    application_.onActivate = nullptr;
    return 0;
}

std::unique_ptr<Desktop> makeDesktop(Platform& platform, Arguments arguments, const EnvironmentVariables& variables) {
    return std::make_unique<LinuxDesktop>(dynamic_cast<LinuxPlatform&>(platform), arguments, variables);
}

}  // namespace thermopix
