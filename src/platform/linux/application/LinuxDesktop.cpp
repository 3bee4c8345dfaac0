#include "platform/linux/application/LinuxDesktop.h"

#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "environment/AppEnvironment.h"
#include "environment/CommandLine.h"
#include "environment/Notices.h"
#include "platform/linux/bus/BusConnection.h"
#include "platform/linux/files/CompanionProgram.h"
#include "platform/linux/glib/GLibSignals.h"

namespace thermopix {

namespace {

// What the window process is started with: a launcher's token is handed on when it is wanted, and no later.
WindowClient::Options windowOptions(const EnvironmentVariables& variables) {
    WindowClient::Options options{.program = runningProgram(), .variables = variables};
    options.variables.erase("DESKTOP_STARTUP_ID");
    options.variables.erase("XDG_ACTIVATION_TOKEN");
    return options;
}

// Only on X11 may a window say where it is and stay above the others.
WindowClient::Options stripOptions(const EnvironmentVariables& variables) {
    auto options = windowOptions(variables);
    if (!textOf(variables, "DISPLAY").empty()) {
        options.variables.emplace("QT_QPA_PLATFORM", "xcb");
    }
    return options;
}

std::optional<bool> hasTray(TrayPresence presence) {
    return presence == TrayPresence::unknown ? std::nullopt : std::optional(presence == TrayPresence::present);
}

}  // namespace

LinuxDesktop::LinuxDesktop(LinuxPlatform& platform, Arguments arguments, const EnvironmentVariables& variables)
    : platform_(platform),
      // A run in the terminal is a visitor that may stand beside the program of the desktop.
      sessionBus_(isGiven(Options::terminal, arguments) ? nullptr : platform.sessionBus()),
      notification_(sessionBus_, platform.log()),
      windowClient_(windowOptions(variables), platform.mainLoop(), platform.log()),
      stripClient_(stripOptions(variables), platform.mainLoop(), platform.log()),
      application_(sessionBus_, {windowClient_, platform.mainLoop(), platform.log()},
                   thermopix::hasDisplay(variables) ? InstanceKind::withDisplay : InstanceKind::withoutDisplay),
      windows_(windowClient_),
      popup_(windowClient_),
      strip_(stripClient_, platform.mainLoop(), AppEnvironment::defaults(arguments, platform.userDefaults())),
      terminal_(STDOUT_FILENO, variables, [this] {
          // While it only stands in for a tray, the program lives on without it.
          if (!placed_) {
              application_.terminate();
          }
      }) {
    platform.useDefaults(AppEnvironment::defaults(arguments, platform.userDefaults()));
    windowsEnd_ = windowClient_.onEnd([this](const WindowProcessEnd& end) {
        if (end.isFailure()) {
            notification_.show(windowsNotShownNotice(end.failure), {});
        }
    });
    // The strip comes back by itself; told once is enough.
    stripEnd_ = stripClient_.onEnd([this, isTold = false](const WindowProcessEnd& end) mutable {
        if (end.isFailure() && !std::exchange(isTold, true)) {
            notification_.show(windowsNotShownNotice(end.failure), {});
        }
    });

    if (sessionBus_ != nullptr) {
        makeTray();
    }
    const bool hasDisplay = thermopix::hasDisplay(variables);
    offer_.send({.choice = tray_ ? tray_->choices().place : TrayPlace::automatic,
                 .isTerminalRequested = isGiven(Options::terminal, arguments),
                 .hasSessionBus = tray_ != nullptr,
                 .hasDisplay = hasDisplay && (tray_ || windowExecutable(runningProgram(), variables)),
                 .hasTray = std::nullopt});
    const StatusPlaces places = statusPlaces(offer_.value());
    if (places.terminal) {
        tray_.reset();
        platform.leaveDisplaysAside();
    } else if (tray_) {
        presence_ = tray_->presence().subscribe([this](TrayPresence presence) {
            StatusPlaceOffer offer = offer_.value();
            offer.hasTray = hasTray(presence);
            offer_.send(offer);
        });
        placed_ = std::make_unique<PlacedStatusBar>(
            PlacedStatusBar::Places{.tray = *tray_, .strip = strip_, .terminal = terminal_, .offer = offer_},
            platform.mainLoop());
        placed_->onMenu = [this](MenuSource* menu) { popup_.setMenu(menu); };
    }
}

void LinuxDesktop::makeTray() {
    TrayOptions options;
    options.settingsFolder = platform_.settingsFolder();
    options.showPopup = [this](std::int32_t x, std::int32_t y) {
        const bool isKnown = x != 0 || y != 0;
        popup_.open(isKnown ? std::optional(ScreenPoint{x, y}) : std::nullopt);
    };
    options.useActivationToken = [this](std::string_view token) {
        application_.useActivationToken(std::string(token));
    };
    tray_ = std::make_unique<TrayStatusBar>(sessionBus_, std::move(options), platform_.mainLoop(), platform_.log());
}

StatusBar& LinuxDesktop::statusBar() {
    if (placed_) {
        return *placed_;
    }
    return statusPlaces(offer_.value()).terminal ? static_cast<StatusBar&>(terminal_) : strip_;
}

void LinuxDesktop::reopen(ApplicationDelegate& delegate) {
    if (tray_) {
        tray_->reload();
        StatusPlaceOffer offer = offer_.value();
        offer.choice = choiceOnDesktop(tray_->choices().place);
        offer_.send(offer);
    }
    const bool hasVisibleWindows = application_.hasVisibleWindows();
    if (delegate.applicationShouldHandleReopen(hasVisibleWindows) && hasVisibleWindows) {
        application_.orderWindowsFront();
    }
}

int LinuxDesktop::run(ApplicationDelegate& delegate) {
    std::vector<Subscription> signals;
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        withholdUnixSignal(number);
        signals.push_back(observeUnixSignal(number, [this] { application_.terminate(); }));
    }
    application_.onActivate = [this, &delegate] { reopen(delegate); };
    application_.onShowAboutPanel = [&delegate] { delegate.showAboutPanel(); };
    delegate.applicationDidFinishLaunching();
    platform_.userDefaults().endLaunch();
    platform_.mainLoop().run();
    application_.onActivate = nullptr;
    application_.onShowAboutPanel = nullptr;
    return application_.exitStatus();
}

std::unique_ptr<Desktop> makeDesktop(Platform& platform, Arguments arguments, const EnvironmentVariables& variables) {
    return std::make_unique<LinuxDesktop>(dynamic_cast<LinuxPlatform&>(platform), arguments, variables);
}

}  // namespace thermopix
