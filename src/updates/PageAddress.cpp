#include "updates/PageAddress.h"

#include <algorithm>

namespace thermopix {

namespace {

constexpr std::string_view scheme = "https://";
constexpr std::size_t maximumLength = 2048;
/// Never part of an address as it is sent (RFC 3986).
constexpr std::string_view forbidden = "\"<>\\^`{|}";

bool mayStandInAddress(char character) {
    return character > ' ' && character <= '~' && forbidden.find(character) == std::string_view::npos;
}

bool isLetterOrDigit(char character) {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
           (character >= 'A' && character <= 'Z');
}

}  // namespace

bool isPageAddress(std::string_view text) {
    if (!text.starts_with(scheme) || text.size() > maximumLength ||
        !std::all_of(text.begin(), text.end(), mayStandInAddress)) {
        return false;
    }
    const auto rest = text.substr(scheme.size());
    const auto authority = rest.substr(0, rest.find_first_of("/?#"));
    // Neither a user's name, which can pass for a host, nor an address in brackets.
    return !authority.empty() && isLetterOrDigit(authority.front()) &&
           std::all_of(authority.begin(), authority.end(), [](char character) {
               return isLetterOrDigit(character) || character == '.' || character == '-' || character == ':';
           });
}

}  // namespace thermopix
