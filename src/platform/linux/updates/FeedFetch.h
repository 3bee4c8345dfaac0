#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <variant>

#include "updates/UpdateVerdict.h"

namespace thermopix {

struct FetchLimits {
    /// For everything together, redirects included.
    std::chrono::milliseconds time = std::chrono::seconds(30);
    /// For the body; the headers of each answer have the same bound.
    std::size_t bytes = std::size_t{1} << 20U;
    int redirects = 5;
    /// A file of certificates to trust in place of the system's; empty for those.
    std::string authorities;
};

/// Gets a document over HTTPS, or over plain HTTP from this machine itself, never from HTTPS back to HTTP. Blocks.
[[nodiscard]] std::variant<std::string, CheckFailed> fetchFeed(const std::string& address, const std::string& userAgent,
                                                               const FetchLimits& limits);

}  // namespace thermopix
