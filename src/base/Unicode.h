#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/FunctionView.h"

namespace thermopix {

/// UTF-8 text by the rules of Unicode (UAX #29 for user-perceived characters). Invalid bytes count as one character
/// each and are never an error.

/// Calls `visit` with each user-perceived character of a text in turn, as a view into it; allocates nothing.
void forEachCharacter(std::string_view text, FunctionView<void(std::string_view)> visit);

/// The user-perceived characters of a text, as views into it.
[[nodiscard]] std::vector<std::string_view> characters(std::string_view text);

[[nodiscard]] std::size_t characterCount(std::string_view text);

/// A letter of ASCII in lower case; any other byte as it is.
[[nodiscard]] constexpr char lowercasedAscii(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// Full lower-casing without a locale; bytes that are no UTF-8 stay as they are.
[[nodiscard]] std::string lowercased(std::string_view text);

/// The text without the blanks of ASCII around it.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// The text with every invalid sequence replaced by U+FFFD.
[[nodiscard]] std::string repairedUtf8(std::string_view bytes);

/// The text followed by spaces up to `columns` characters; unchanged when it has that many already.
[[nodiscard]] std::string paddedRight(std::string_view text, std::size_t columns);

}  // namespace thermopix
