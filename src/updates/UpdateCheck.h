#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "system/MainLoop.h"
#include "updates/PackageService.h"
#include "updates/UpdateVerdict.h"

namespace thermopix {

/// Asks the package service whether a package is installed, whether it has an update and how old that knowledge is,
/// all within a minute. Main thread.
class UpdateCheck {
public:
    using Concluded = std::function<void(const UpdateVerdict&)>;

    /// What is referred to outlives the check.
    UpdateCheck(PackageService& service, MainLoop& mainLoop, std::string package)
        : service_(service), mainLoop_(mainLoop), package_(std::move(package)) {}

    /// Calls `concluded` once, later. At most one run at a time.
    void start(Concluded concluded);
    /// Ends the run unheard.
    void cancel();
    [[nodiscard]] bool isRunning() const { return limit_.isActive(); }

private:
    struct OwnPackage {
        std::string version;
        std::string architecture;
    };

    [[nodiscard]] std::optional<OwnPackage> ownPackage(const ListedPackage& listed) const;
    void askForUpdates(PackageService::Outcome outcome);
    void askForAge(PackageService::Outcome outcome);
    void conclude(const UpdateVerdict& verdict);

    PackageService& service_;
    MainLoop& mainLoop_;
    std::string package_;
    Concluded concluded_;
    std::optional<OwnPackage> installed_;
    std::optional<OwnPackage> update_;
    Subscription step_;
    Subscription limit_;
};

}  // namespace thermopix
