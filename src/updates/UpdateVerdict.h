#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "base/Enumeration.h"

namespace thermopix {

enum class CheckFailure { unreachable, refused, insecure, tooLarge, tooSlow, unreadable, unavailable };

/// The raw value travels in the verdict's line, the title is what the user is told.
struct CheckFailureRow {
    CheckFailure value;
    std::string_view rawValue;
    std::string_view title;
};

template <>
struct EnumerationTable<CheckFailure> {
    static constexpr std::array rows{
        CheckFailureRow{CheckFailure::unreachable, "unreachable", "The server could not be reached."},
        CheckFailureRow{CheckFailure::refused, "refused", "The server did not give the list of releases."},
        CheckFailureRow{CheckFailure::insecure, "insecure", "The connection was not secure, so it was not used."},
        CheckFailureRow{CheckFailure::tooLarge, "tooLarge", "The answer was far too large."},
        CheckFailureRow{CheckFailure::tooSlow, "tooSlow", "The server did not answer in time."},
        CheckFailureRow{CheckFailure::unreadable, "unreadable", "The list of releases could not be read."},
        CheckFailureRow{CheckFailure::unavailable, "unavailable", "This copy of Thermopix lacks what it needs for it."},
    };
};
static_assert(isCompleteTable(CheckFailure::unavailable));

struct UpToDate {
    friend bool operator==(const UpToDate&, const UpToDate&) = default;
};

struct UpdateAvailable {
    /// Fit for `Version::parse`.
    std::string version;
    /// Where to read about it and get it, fit for `isPageAddress`; none when the feed names none.
    std::optional<std::string> page;
    bool isCritical = false;
    friend bool operator==(const UpdateAvailable&, const UpdateAvailable&) = default;
};

struct CheckFailed {
    CheckFailure failure = CheckFailure::unavailable;
    /// For the log: what exactly went wrong.
    std::string detail;
    friend bool operator==(const CheckFailed&, const CheckFailed&) = default;
};

/// How a check ended.
using UpdateVerdict = std::variant<UpToDate, UpdateAvailable, CheckFailed>;

/// A verdict as one line of JSON, without its line feed, and back; none for any other line.
[[nodiscard]] std::string verdictLine(const UpdateVerdict& verdict);
[[nodiscard]] std::optional<UpdateVerdict> verdictFromLine(std::string_view line);

}  // namespace thermopix
