#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Published.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

/// Who draws status items on this desktop.
struct TrayHostState {
    /// The unique bus name of the watcher, empty when there is none.
    std::string watcher;
    /// False while nobody draws what the watcher collects.
    bool hasHost = false;
    /// The process name of the watcher; none when it cannot be told.
    std::optional<std::string> watcherProcess;
    /// The names of the processes that announced that they draw.
    std::vector<std::optional<std::string>> hostProcesses;

    friend bool operator==(const TrayHostState&, const TrayHostState&) = default;
};

/// Follows the status notifier watcher on the bus, through all its comings and goings. Main thread.
class TrayHostWatch {
public:
    static constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
    static constexpr const char* watcherPath = "/StatusNotifierWatcher";

    /// Processes are named by `processRoot`/NUMBER/comm. The connection outlives the watch.
    TrayHostWatch(GDBusConnection* connection, std::filesystem::path processRoot);

    /// None until the bus has been asked.
    [[nodiscard]] Published<std::optional<TrayHostState>>& state() { return state_; }

private:
    void follow(std::string_view owner);
    void inquire();
    void answered();
    [[nodiscard]] std::optional<std::string> processName(std::uint32_t process) const;

    GDBusConnection* connection_;
    std::filesystem::path processRoot_;
    Published<std::optional<TrayHostState>> state_{std::nullopt};
    std::string watcher_;

    TrayHostState found_;
    std::size_t unanswered_ = 0;
    bool isOutdated_ = false;
    std::vector<Subscription> inquiries_;
    std::vector<Subscription> hostSignals_;
    Subscription watcherSubscription_;
};

}  // namespace thermopix
