#include "platform/linux/tray/TrayStatusBar.h"

#include <fmt/format.h>

#include <utility>

#include "platform/linux/tray/DesktopConfiguration.h"

namespace thermopix {
namespace {

constexpr const char* logCategory = "desktop";
constexpr const char* configurationFile = "desktop.conf";

// What the library of the menu has to say, for instance of trays that open what is no menu.
Subscription logMenuMessages(DiagnosticLog& log) {
    constexpr const char* domain = "LIBDBUSMENU-GLIB";
    const guint handler = g_log_set_handler(
        domain, G_LOG_LEVEL_WARNING,
        [](const gchar*, GLogLevelFlags, const gchar* message, gpointer data) {
            static_cast<DiagnosticLog*>(data)->diag(logCategory, message);
        },
        &log);
    return Subscription([handler] { g_log_remove_handler(domain, handler); });
}

}  // namespace

TrayStatusBar::TrayStatusBar(GDBusConnection* connection, TrayOptions options, MainLoop& mainLoop, DiagnosticLog& log)
    : connection_(connection),
      options_(std::move(options)),
      mainLoop_(mainLoop),
      log_(log),
      choices_(readDesktopConfiguration(options_.settingsFolder / configurationFile, log)),
      hostWatch_(connection, options_.processRoot),
      colorWatch_(connection),
      menuMessages_(logMenuMessages(log)) {
    if (!options_.showPopup) {
        options_.showPopup = [&log](std::int32_t x, std::int32_t y) {
            log.diag(logCategory, fmt::format("no popup menu to show at {}, {}", x, y));
        };
    }
    hostSubscription_ = hostWatch_.state().subscribe([this](const std::optional<TrayHostState>& state) {
        hostState_ = state;
        decide();
    });
    colorSubscription_ = colorWatch_.colors().subscribe([this](const DesktopColors& colors) {
        colors_ = colors;
        decide();
    });
}

std::unique_ptr<StatusItem> TrayStatusBar::makeStatusItem() {
    return std::make_unique<TrayStatusItem>(connection_, options_, ++itemCount_, presentation_, mainLoop_, log_);
}

void TrayStatusBar::reload() {
    choices_ = readDesktopConfiguration(options_.settingsFolder / configurationFile, log_);
    decide();
}

void TrayStatusBar::decide() {
    if (!hostState_) {
        return;
    }
    std::optional<TrayPresentation> presentation;
    // Not before somebody draws: a tray that is about to start may have read the watcher's list of items already and
    // not listen yet, so that what comes in between is lost on it.
    if (hostState_->hasHost) {
        const TrayHost host = trayHost(hostState_->watcherProcess, hostState_->hostProcesses, choices_.shape);
        const bool choosesInk = choices_.ink == TrayInkChoice{};
        colorWatch_.follow(choosesInk ? host.ink : TrayInkRule::light);
        presentation = {hostState_->watcher, host, trayInk(choices_.ink, host.ink, colors_)};
    }
    if (presentation != presentation_.value()) {
        presentation_.send(std::move(presentation));
    }
    const TrayPresence presence = hostState_->hasHost ? TrayPresence::present : TrayPresence::absent;
    if (presence != presence_.value()) {
        if (presence == TrayPresence::absent) {
            log_.diag(logCategory, "no status notifier host; waiting for one");
        }
        presence_.send(presence);
    }
}

}  // namespace thermopix
