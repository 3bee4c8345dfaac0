#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "platform/linux/glib/GLibHandles.h"
#include "shell/Menu.h"
#include "system/MainLoop.h"

namespace thermopix {

/// A menu as com.canonical.dbusmenu on the session bus, while it lives. Each change of the menu crosses the bus as the
/// properties that differ. Main thread.
class TrayMenuExport {
public:
    /// Between two looks whether the menu is there, doubled each time.
    static constexpr std::chrono::milliseconds firstPause{1};
    static constexpr std::chrono::milliseconds longestPause{1000};

    /// `connection` is the shared one of the session bus; it, `source` and `mainLoop` outlive the export. Calls
    /// `onReady` once, when the menu can be read, since trays read it only once; however long that takes.
    TrayMenuExport(GDBusConnection* connection, const std::string& objectPath, MenuSource& source, MainLoop& mainLoop,
                   std::function<void()> onReady);
    ~TrayMenuExport();
    TrayMenuExport(const TrayMenuExport&) = delete;
    TrayMenuExport& operator=(const TrayMenuExport&) = delete;

    [[nodiscard]] bool isReady() const { return isReady_; }

private:
    struct Tree;

    void awaitExport();

    GDBusConnection* connection_;
    std::string objectPath_;
    MainLoop& mainLoop_;
    std::function<void()> onReady_;
    bool isReady_ = false;
    std::chrono::milliseconds pause_;
    Subscription waiting_;
    std::unique_ptr<Tree> tree_;
};

}  // namespace thermopix
