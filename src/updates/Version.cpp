#include "updates/Version.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace thermopix {

namespace {

constexpr std::size_t maximumLength = 64;
constexpr std::string_view separators = ".-_~";

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

char lowercased(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isLetter(char character) {
    return lowercased(character) >= 'a' && lowercased(character) <= 'z';
}

/// Cuts the digits, or else the letters, off the front of a text.
std::string_view takeWord(std::string_view& text) {
    const auto belongs = isDigit(text.front()) ? isDigit : isLetter;
    const auto length = static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), belongs) - text.begin());
    const auto word = text.substr(0, length);
    text.remove_prefix(length);
    return word;
}

std::optional<std::uint64_t> number(std::string_view digits) {
    std::uint64_t value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return result.ec == std::errc() ? std::optional(value) : std::nullopt;
}

/// The library's own three-way comparison of texts and of ranges is not everywhere yet.
template <typename Value>
std::strong_ordering compared(const Value& a, const Value& b) {
    if (a == b) {
        return std::strong_ordering::equal;
    }
    return a < b ? std::strong_ordering::less : std::strong_ordering::greater;
}

}  // namespace

std::optional<Version> Version::parse(std::string_view text) {
    if (text.size() > maximumLength) {
        return std::nullopt;
    }
    if (!text.empty() && lowercased(text.front()) == 'v') {
        text.remove_prefix(1);
    }
    if (text.empty() || !isDigit(text.front())) {
        return std::nullopt;
    }
    Version version;
    for (bool isInBuild = false; !text.empty();) {
        const char next = text.front();
        isInBuild = isInBuild || next == '+';
        if (next == '+' || separators.find(next) != std::string_view::npos) {
            text.remove_prefix(1);
            continue;
        }
        if (!isDigit(next) && !isLetter(next)) {
            return std::nullopt;
        }
        const auto word = takeWord(text);
        if (isInBuild) {
            continue;
        }
        if (isLetter(next)) {
            std::string lower(word);
            std::transform(lower.begin(), lower.end(), lower.begin(), lowercased);
            version.suffix_.emplace_back(std::move(lower));
        } else if (const auto value = number(word); !value) {
            return std::nullopt;
        } else if (version.suffix_.empty()) {
            version.numbers_.push_back(*value);
        } else {
            version.suffix_.emplace_back(*value);
        }
    }
    while (!version.numbers_.empty() && version.numbers_.back() == 0) {
        version.numbers_.pop_back();
    }
    return version;
}

bool Version::reaches(const Version& minimum) const {
    return numbers_ >= minimum.numbers_;
}

std::strong_ordering operator<=>(const Version& a, const Version& b) {
    if (const auto order = compared(a.numbers_, b.numbers_); std::is_neq(order)) {
        return order;
    }
    if (a.suffix_.empty() != b.suffix_.empty()) {
        return a.suffix_.empty() ? std::strong_ordering::greater : std::strong_ordering::less;
    }
    return compared(a.suffix_, b.suffix_);
}

}  // namespace thermopix
