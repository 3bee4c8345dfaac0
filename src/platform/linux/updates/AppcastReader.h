#pragma once

#include <optional>
#include <string_view>

#include "updates/Appcast.h"

namespace thermopix {

/// Reads a feed: RSS 2.0 with the update namespace. None for anything else, for a document with a DOCTYPE (so that no
/// entity is ever defined) and for one with more than 1000 releases. A text longer than 4096 bytes reads as empty.
[[nodiscard]] std::optional<Appcast> readAppcast(std::string_view document);

}  // namespace thermopix
