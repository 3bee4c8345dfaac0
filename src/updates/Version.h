#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace thermopix {

/// A version as people write it: "1.10", "v2.0.0-beta.3", "1.4rc2". Ordered by its numbers, then by its suffix, where
/// none is the newest; words are compared without regard to case. Missing numbers are zeros, and what follows a "+"
/// says nothing.
class Version {
public:
    /// None for a text that does not begin with a number, is longer than 64 characters or holds anything but letters,
    /// digits and ". - _ + ~".
    [[nodiscard]] static std::optional<Version> parse(std::string_view text);

    /// Whether the numbers, whatever the suffix, are at least the other's: what a system's version is asked for.
    [[nodiscard]] bool reaches(const Version& minimum) const;

    friend std::strong_ordering operator<=>(const Version& a, const Version& b);
    friend bool operator==(const Version& a, const Version& b) { return std::is_eq(a <=> b); }

private:
    using Number = std::uint64_t;
    /// A number is older than a word.
    using SuffixPart = std::variant<Number, std::string>;

    /// Without zeros at the end.
    std::vector<Number> numbers_;
    std::vector<SuffixPart> suffix_;
};

}  // namespace thermopix
