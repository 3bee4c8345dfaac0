#pragma once

#include <string>

#include "system/UserNotices.h"
#include "updates/UpdateVerdict.h"

namespace thermopix {

enum class UpdateOrigin { package, flatpak, elsewhere };

/// Where new versions of this copy come from.
struct UpdateSource {
    UpdateOrigin origin = UpdateOrigin::elsewhere;
    /// What the system calls the package; empty for another origin.
    std::string package;
    friend bool operator==(const UpdateSource&, const UpdateSource&) = default;
};

[[nodiscard]] UserNotice noticeOf(const UpdateVerdict& verdict);

/// The answer of a copy that has nobody to ask.
[[nodiscard]] UserNotice noticeOfOrigin(UpdateOrigin origin);

}  // namespace thermopix
