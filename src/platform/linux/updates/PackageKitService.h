#pragma once

#include <gio/gio.h>

#include <functional>
#include <optional>
#include <string>

#include "system/MainLoop.h"
#include "updates/PackageService.h"

namespace thermopix {

/// PackageKit on the system's bus, which starts it when it is asked. Asks for no authority and looks for nothing new.
/// Main thread.
class PackageKitService final : public PackageService {
public:
    /// Both outlive the service; `systemBus` may be null.
    PackageKitService(GDBusConnection* systemBus, MainLoop& mainLoop) : systemBus_(systemBus), mainLoop_(mainLoop) {}

    Subscription listInstalled(const std::string& name, Visit visit, Ended ended) override;
    Subscription listUpdates(Visit visit, Ended ended) override;
    Subscription readAge(std::function<void(std::optional<std::chrono::seconds>)> told) override;

private:
    Subscription list(const char* method, GVariant* parameters, Visit visit, Ended ended);

    GDBusConnection* systemBus_;
    MainLoop& mainLoop_;
};

}  // namespace thermopix
