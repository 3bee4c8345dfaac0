#include "platform/linux/application/LinuxDesktop.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "environment/CommandLine.h"
#include "platform/linux/bus/BusConnection.h"
#include "platform/linux/glib/GLibSignals.h"
#include "platform/linux/windows/WindowExecutable.h"

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

// What the window process is started with: a launcher's token is handed on when it is wanted, and no later.
WindowProcess::Options windowOptions(const EnvironmentVariables& variables) {
    WindowProcess::Options options{.program = runningProgram(), .variables = variables};
    options.variables.erase("DESKTOP_STARTUP_ID");
    options.variables.erase("XDG_ACTIVATION_TOKEN");
    return options;
}

// Only on X11 may a window say where it is and stay above the others.
WindowProcess::Options stripOptions(const EnvironmentVariables& variables) {
    auto options = windowOptions(variables);
    if (const auto display = variables.find("DISPLAY"); display != variables.end() && !display->second.empty()) {
        options.variables.emplace("QT_QPA_PLATFORM", "xcb");
    }
    return options;
}

std::optional<bool> hasTray(TrayPresence presence) {
    return presence == TrayPresence::unknown ? std::nullopt : std::optional(presence == TrayPresence::present);
}

constexpr const char* failureTitle = "Thermopix cannot show its windows";

}  // namespace

LinuxDesktop::LinuxDesktop(LinuxPlatform& platform, Arguments arguments, const EnvironmentVariables& variables)
    : platform_(platform),
      // A run in the terminal is a visitor that may stand beside the program of the desktop.
      sessionBus_(isRequested(arguments, Options::terminal) ? nullptr : platform.sessionBus()),
      hasDisplay_(hasDisplay(variables)),
      notification_(sessionBus_, platform.log()),
      windowProcess_(windowOptions(variables), platform.mainLoop(), platform.log()),
      stripProcess_(stripOptions(variables), platform.mainLoop(), platform.log()),
      application_(sessionBus_, windowProcess_, platform.mainLoop(), platform.log()),
      windows_(windowProcess_),
      popup_(windowProcess_),
      strip_(stripProcess_, platform.mainLoop(), platform.userDefaults().standard()) {
    windowsEnd_ = windowProcess_.onEnd([this](const WindowProcessEnd& end) {
        if (end.isFailure()) {
            notification_.show({.title = failureTitle, .body = end.failure}, {});
        }
    });
    // The strip comes back by itself; told once is enough.
    stripEnd_ = stripProcess_.onEnd([this, isTold = false](const WindowProcessEnd& end) mutable {
        if (end.isFailure() && !std::exchange(isTold, true)) {
            notification_.show({.title = failureTitle, .body = end.failure}, {});
        }
    });

    if (sessionBus_ != nullptr) {
        makeTray();
    }
    const bool canShowStrip = hasDisplay_ && windowExecutable(runningProgram(), variables).has_value();
    const TrayPlace place =
        statusPlace({.choice = tray_ ? tray_->choices().place : TrayPlace::automatic,
                     .isTerminalRequested = isRequested(arguments, Options::terminal),
                     .hasSessionBus = sessionBus_ != nullptr,
                     .hasDisplay = tray_ ? hasDisplay_ : canShowStrip,
                     .hasTrayWatcher = tray_ && hasNameOwner(sessionBus_, TrayHostWatch::watcherName)});
    if (place == TrayPlace::terminal) {
        tray_.reset();
        terminal_ = std::make_unique<TerminalStatusBar>(STDOUT_FILENO, variables, [this] { application_.terminate(); });
    } else if (tray_) {
        presence_ = tray_->presence().subscribe([this](TrayPresence presence) {
            StatusPlaceOffer offer = offer_.value();
            offer.hasTray = hasTray(presence);
            offer_.send(offer);
        });
        placeItem();
        placed_ = std::make_unique<PlacedStatusBar>(
            PlacedStatusBar::Places{.tray = *tray_, .strip = strip_, .offer = offer_}, platform.mainLoop());
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
    tray_ = std::make_unique<TrayStatusBar>(sessionBus_, std::move(options), platform_.log());
}

void LinuxDesktop::placeItem() {
    StatusPlaceOffer offer = offer_.value();
    offer.choice = tray_->choices().place;
    offer.hasDisplay = hasDisplay_;
    offer_.send(offer);
}

StatusBar& LinuxDesktop::statusBar() {
    if (terminal_) {
        return *terminal_;
    }
    return placed_ ? static_cast<StatusBar&>(*placed_) : strip_;
}

void LinuxDesktop::reopen(ApplicationDelegate& delegate) {
    if (tray_) {
        tray_->reload();
        placeItem();
    }
    const bool hasVisibleWindows = application_.hasVisibleWindows();
    if (delegate.applicationShouldHandleReopen(hasVisibleWindows) && hasVisibleWindows) {
        application_.orderWindowsFront();
    }
}

int LinuxDesktop::run(ApplicationDelegate& delegate) {
    std::vector<Subscription> signals;
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        signals.push_back(observeUnixSignal(number, [this] { application_.terminate(); }));
    }
    application_.onActivate = [this, &delegate] { reopen(delegate); };
    application_.onShowAboutPanel = [&delegate] { delegate.showAboutPanel(); };
    delegate.applicationDidFinishLaunching();
    platform_.mainLoop().run();
    application_.onActivate = nullptr;
    application_.onShowAboutPanel = nullptr;
    return 0;
}

std::unique_ptr<Desktop> makeDesktop(Platform& platform, Arguments arguments, const EnvironmentVariables& variables) {
    return std::make_unique<LinuxDesktop>(dynamic_cast<LinuxPlatform&>(platform), arguments, variables);
}

}  // namespace thermopix
