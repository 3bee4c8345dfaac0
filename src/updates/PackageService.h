#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/Subscription.h"

namespace thermopix {

/// A package of a list in the service's own words, of which nothing has been checked.
struct ListedPackage {
    /// Its low 16 bits are the kind.
    std::uint32_t info = 0;
    /// "name;version;architecture;origin"
    std::string_view identifier;
};

/// The system's package service, as it is known now: nobody looks for new versions because it is asked. It answers
/// later, and possibly never; dropping the handle ends the waiting. Main thread.
class PackageService {
public:
    enum class Outcome { complete, failed, noService };
    using Visit = std::function<void(const ListedPackage&)>;
    using Ended = std::function<void(Outcome)>;

    virtual ~PackageService() = default;

    /// Visits the installed packages of that name, or all packages that have an update, and tells once how it ended.
    virtual Subscription listInstalled(const std::string& name, Visit visit, Ended ended) = 0;
    virtual Subscription listUpdates(Visit visit, Ended ended) = 0;

    /// Tells how long ago the system looked for new versions; none where that is not known.
    virtual Subscription readAge(std::function<void(std::optional<std::chrono::seconds>)> told) = 0;
};

}  // namespace thermopix
