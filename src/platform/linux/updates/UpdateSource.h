#pragma once

#include <string>

#include "updates/UpdateNotice.h"

namespace thermopix {

/// Where this copy's updates come from, fixed when it is built.
struct UpdateSource {
    UpdateOrigin origin = UpdateOrigin::elsewhere;
    /// The feed's address; empty for another origin.
    std::string feed;

    [[nodiscard]] static UpdateSource ofThisBuild();
};

}  // namespace thermopix
