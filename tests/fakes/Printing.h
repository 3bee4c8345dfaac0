#pragma once

#include <ostream>
#include <type_traits>

#include "base/Enumeration.h"

namespace thermopix {

/// Every case of an enumeration with a table is called by its raw value in failures; all tests include this first.
template <typename Case>
requires std::is_enum_v<Case> && requires(Case value) {
    rawValue(value);
}
void PrintTo(const Case& value, std::ostream* out) {
    *out << rawValue(value);
}

}  // namespace thermopix
