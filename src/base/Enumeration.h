#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

#include "base/NameOf.h"

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

/// True when the rows stand one for each case, which `member` tells, in declaration order, and no case comes after
/// `last`. Every table that is looked into by a case asserts this at compile time.
template <auto last, typename Rows, typename Row>
[[nodiscard]] constexpr bool hasRowPerCase(const Rows& rows, decltype(last) Row::*member) {
    constexpr auto count = static_cast<std::size_t>(last) + 1;
    static_assert(nameOf<static_cast<decltype(last)>(count)>().empty(), "there is a case after the last");
    bool isInOrder = rows.size() == count;
    for (std::size_t i = 0; isInOrder && i < count; ++i) {
        isInOrder = rows[i].*member == static_cast<decltype(last)>(i);
    }
    return isInOrder;
}

/// The same of an enumeration's own table, in which no raw value may be used twice either.
template <auto last>
[[nodiscard]] constexpr bool isCompleteTable() {
    const auto& rows = EnumerationTable<decltype(last)>::rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (rows[j].rawValue == rows[i].rawValue) {
                return false;
            }
        }
    }
    return hasRowPerCase<last>(rows, &EnumerationRow<decltype(last)>::value);
}

/// The table of an enumeration whose cases go by their own names, `last` being the last of them:
/// `template <> struct EnumerationTable<Axis> : CaseNames<Axis::vertical> {};`
template <auto last, typename Indices = std::make_index_sequence<static_cast<std::size_t>(last) + 1>>
struct CaseNames;

template <auto last, std::size_t... index>
struct CaseNames<last, std::index_sequence<index...>> {
    using Case = decltype(last);
    struct Row {
        Case value;
        std::string_view rawValue;
    };
    static constexpr std::array rows{Row{static_cast<Case>(index), nameOf<static_cast<Case>(index)>()}...};
    static_assert((!nameOf<static_cast<Case>(index)>().empty() && ...), "a case is missing");
    static_assert(hasRowPerCase<last>(rows, &Row::value));
};

}  // namespace thermopix
