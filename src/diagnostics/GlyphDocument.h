#pragma once

#include <string>

namespace thermopix {

/// Every font, style, pet, mood and threshold as JSON: keys sorted by code point at every level, two spaces of
/// indentation, a line feed at the end. The same program writes the same bytes.
[[nodiscard]] std::string glyphDocument();

}  // namespace thermopix
