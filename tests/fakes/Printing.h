#pragma once

#include <ostream>
#include <type_traits>

namespace thermopix {

template <typename Case>
struct EnumerationTable;

/// Every case of an enumeration with a table is called by its raw value in failures. All tests have this precompiled,
/// so it includes nothing of the program's.
template <typename Case>
requires std::is_enum_v<Case> && requires {
    EnumerationTable<Case>::rows;
}
void PrintTo(const Case& value, std::ostream* out) {
    for (const auto& row : EnumerationTable<Case>::rows) {
        if (row.value == value) {
            *out << row.rawValue;
        }
    }
}

}  // namespace thermopix
