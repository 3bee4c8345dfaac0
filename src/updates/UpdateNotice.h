#pragma once

#include <string>

#include "system/UserNotices.h"
#include "updates/UpdateVerdict.h"

namespace thermopix {

/// Where new versions of this copy come from.
struct UpdateSource {
    UpdateOrigin origin = UpdateOrigin::elsewhere;
    /// What the system calls the package; empty for another origin.
    std::string package;
    friend bool operator==(const UpdateSource&, const UpdateSource&) = default;
};

[[nodiscard]] UserNotice noticeOf(const UpdateVerdict& verdict);

}  // namespace thermopix
