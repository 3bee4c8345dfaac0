#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <variant>

namespace thermopix {

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

/// The package is not installed: this copy came another way.
struct NotFromPackage {
    friend bool operator==(const NotFromPackage&, const NotFromPackage&) = default;
};

/// The system has no package service.
struct NobodyToAsk {
    friend bool operator==(const NobodyToAsk&, const NobodyToAsk&) = default;
};

struct CheckFailed {
    /// For the log.
    std::string reason;
    friend bool operator==(const CheckFailed&, const CheckFailed&) = default;
};

/// How a check ended. Versions are in the packagers' words, short and printable.
using UpdateVerdict = std::variant<UpToDate, UpdateAvailable, NotFromPackage, NobodyToAsk, CheckFailed>;

}  // namespace thermopix
