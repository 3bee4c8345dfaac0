#include "platform/linux/tray/TrayHostWatch.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/linux/bus/BusCall.h"
#include "platform/linux/bus/BusNotice.h"
#include "tray/TrayHost.h"

namespace thermopix {
namespace {

/// A panel that is starting on a busy machine answers late; until it has, nobody knows whether there is a tray.
constexpr std::chrono::seconds watcherPatience(25);

constexpr BusMethod busMethod(const char* name) {
    return {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", name};
}

}  // namespace

TrayHostWatch::TrayHostWatch(GDBusConnection* connection, std::filesystem::path processRoot)
    : connection_(connection),
      processRoot_(std::move(processRoot)),
      watcherSubscription_(
          observeNameOwner(connection, watcherName, [this](std::string_view owner) { follow(owner); })) {}

void TrayHostWatch::follow(std::string_view owner) {
    watcher_ = owner;
    inquiries_.clear();
    hostSignals_.clear();
    unanswered_ = 0;
    if (watcher_.empty()) {
        state_.send(TrayHostState{});
        return;
    }
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        hostSignals_.push_back(observeSignal(connection_, {watcher_.c_str(), watcherPath, watcherName, signal},
                                             [this](GVariant*) { inquire(); }));
    }
    inquire();
}

void TrayHostWatch::inquire() {
    if (unanswered_ > 0) {
        isOutdated_ = true;
        return;
    }
    isOutdated_ = false;
    found_ = TrayHostState{watcher_, false, std::nullopt, {}};
    inquiries_.clear();
    unanswered_ = 3;
    inquiries_.push_back(callMethod(connection_, busMethod("GetConnectionUnixProcessID"),
                                    g_variant_new("(s)", watcher_.c_str()), "(u)", [this](GVariant* reply) {
                                        if (reply != nullptr) {
                                            guint32 process = 0;
                                            g_variant_get(reply, "(u)", &process);
                                            found_.watcherProcess = processName(process);
                                        }
                                        answered();
                                    }));
    inquiries_.push_back(callMethod(connection_, busMethod("ListNames"), nullptr, "(as)", [this](GVariant* reply) {
        GVariantIter* names = nullptr;
        if (reply != nullptr) {
            g_variant_get(reply, "(as)", &names);
            const char* name = nullptr;
            while (g_variant_iter_loop(names, "&s", &name) != FALSE) {
                if (std::string_view(name).starts_with(trayHostNamePrefix)) {
                    const auto process = trayHostProcess(name);
                    found_.hostProcesses.push_back(process ? processName(*process) : std::nullopt);
                }
            }
            g_variant_iter_free(names);
            std::sort(found_.hostProcesses.begin(), found_.hostProcesses.end());
        }
        answered();
    }));
    inquiries_.push_back(readProperty(
        connection_, watcher_.c_str(), watcherPath, watcherName, "IsStatusNotifierHostRegistered",
        [this](GVariant* value) {
            found_.hasHost = value != nullptr && g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) != FALSE &&
                             g_variant_get_boolean(value) != FALSE;
            answered();
        },
        watcherPatience));
}

void TrayHostWatch::answered() {
    if (--unanswered_ > 0) {
        return;
    }
    if (state_.value() != found_) {
        state_.send(found_);
    }
    if (isOutdated_) {
        inquire();
    }
}

std::optional<std::string> TrayHostWatch::processName(std::uint32_t process) const {
    const auto file = processRoot_ / std::to_string(process) / "comm";
    gchar* content = nullptr;
    if (g_file_get_contents(file.c_str(), &content, nullptr, nullptr) == FALSE) {
        return std::nullopt;
    }
    const GStringHandle owned(content);
    const std::string_view text(content);
    return text.empty() ? std::nullopt : std::optional<std::string>(text.substr(0, text.find('\n')));
}

}  // namespace thermopix
