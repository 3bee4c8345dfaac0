#pragma once

#include <string_view>

namespace thermopix {

/// Whether a text is the address of a page that may be opened in the user's browser: HTTPS, with a plain host name,
/// in printable ASCII, at most 2048 characters.
[[nodiscard]] bool isPageAddress(std::string_view text);

}  // namespace thermopix
