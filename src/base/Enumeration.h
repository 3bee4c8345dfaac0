#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <type_traits>

namespace thermopix {

/// The one table of an enumeration, specialised beside it: `static constexpr auto rows`, an array with one row per
/// case in declaration order. Every row has `value` (the case) and `rawValue`; most also have `title` and a caption.
template <typename Case>
struct EnumerationTable;

template <typename Case>
using EnumerationRow = typename std::decay_t<decltype(EnumerationTable<Case>::rows)>::value_type;

template <typename Case>
using RawValue = decltype(EnumerationRow<Case>::rawValue);

template <typename Case>
inline constexpr std::size_t caseCount = EnumerationTable<Case>::rows.size();

template <typename Case>
[[nodiscard]] constexpr const EnumerationRow<Case>& row(Case value) {
    return EnumerationTable<Case>::rows[static_cast<std::size_t>(value)];
}

template <typename Case>
[[nodiscard]] constexpr RawValue<Case> rawValue(Case value) {
    return row(value).rawValue;
}

template <typename Case>
[[nodiscard]] constexpr auto title(Case value) -> decltype(EnumerationRow<Case>::title) {
    return row(value).title;
}

template <typename Case>
[[nodiscard]] constexpr auto subtitle(Case value) -> decltype(EnumerationRow<Case>::subtitle) {
    return row(value).subtitle;
}

template <typename Case>
[[nodiscard]] constexpr auto caption(Case value) -> decltype(EnumerationRow<Case>::caption) {
    return row(value).caption;
}

/// The case with this raw value; none for a value that is no case's.
template <typename Case>
[[nodiscard]] constexpr std::optional<Case> fromRawValue(RawValue<Case> raw) {
    for (const auto& candidate : EnumerationTable<Case>::rows) {
        if (candidate.rawValue == raw) {
            return candidate.value;
        }
    }
    return std::nullopt;
}

/// All cases in declaration order.
template <typename Case>
[[nodiscard]] constexpr std::array<Case, caseCount<Case>> allCases() {
    std::array<Case, caseCount<Case>> cases{};
    for (std::size_t i = 0; i < cases.size(); ++i) {
        cases[i] = EnumerationTable<Case>::rows[i].value;
    }
    return cases;
}

/// True when the rows stand in declaration order, end at `last`, and no raw value is used twice; every table
/// asserts this at compile time.
template <typename Case>
[[nodiscard]] constexpr bool isCompleteTable(Case last) {
    const auto& rows = EnumerationTable<Case>::rows;
    if (rows.size() != static_cast<std::size_t>(last) + 1) {
        return false;
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (static_cast<std::size_t>(rows[i].value) != i) {
            return false;
        }
        for (std::size_t j = 0; j < i; ++j) {
            if (rows[j].rawValue == rows[i].rawValue) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace thermopix
