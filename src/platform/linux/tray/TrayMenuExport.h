#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/linux/glib/GLibHandles.h"
#include "shell/Menu.h"

namespace thermopix {

/// A menu as com.canonical.dbusmenu on the session bus, while it lives. Each change of the menu crosses the bus as the
/// properties that differ. Main thread.
class TrayMenuExport {
public:
    /// `connection` is the shared one of the session bus; it and `source` outlive the export. Calls `onReady` once,
    /// when the menu can be read, since trays read it only once.
    TrayMenuExport(GDBusConnection* connection, const std::string& objectPath, MenuSource& source,
                   std::function<void()> onReady);
    ~TrayMenuExport();
    TrayMenuExport(const TrayMenuExport&) = delete;
    TrayMenuExport& operator=(const TrayMenuExport&) = delete;

    [[nodiscard]] bool isReady() const { return isReady_; }

private:
    struct Tree;

    void awaitExport(int attempts);

    GDBusConnection* connection_;
    std::string objectPath_;
    std::function<void()> onReady_;
    bool isReady_ = false;
    Subscription waiting_;
    std::unique_ptr<Tree> tree_;
};

}  // namespace thermopix
