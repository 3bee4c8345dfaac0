#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <variant>

namespace thermopix {

/// Where new versions of a copy come from.
enum class UpdateOrigin { package, flatpak, elsewhere };

struct UpToDate {
    std::string version;
    /// How long ago the system looked for new versions; none where that is not known.
    std::optional<std::chrono::seconds> age;
    friend bool operator==(const UpToDate&, const UpToDate&) = default;
};

struct UpdateAvailable {
    std::string version;
    std::string installedVersion;
    friend bool operator==(const UpdateAvailable&, const UpdateAvailable&) = default;
};

/// There was nobody to ask, or the copy is not from where it was asked for.
struct NotKnownHere {
    UpdateOrigin origin = UpdateOrigin::elsewhere;
    friend bool operator==(const NotKnownHere&, const NotKnownHere&) = default;
};

struct CheckFailed {
    /// The reason, for the log.
    std::string reason;
    friend bool operator==(const CheckFailed&, const CheckFailed&) = default;
};

/// How a check ended. Versions are in the packagers' words, short and printable.
using UpdateVerdict = std::variant<UpToDate, UpdateAvailable, NotKnownHere, CheckFailed>;

}  // namespace thermopix
