#pragma once

#include <string_view>

namespace thermopix {

/// The identifier by which the program calls a case of an enumeration or a member of a record; empty for a value that
/// no case has.
template <auto value>
[[nodiscard]] constexpr std::string_view nameOf() {
    // Ends in "value = Scope::name]" or, before more of its kind, in "value = Scope::name;".
    constexpr std::string_view start = "value = ";
    std::string_view text = __PRETTY_FUNCTION__;
    text.remove_prefix(text.find(start) + start.size());
    text = text.substr(0, text.find_first_of(";]"));
    return text.starts_with('(') ? std::string_view() : text.substr(text.rfind(':') + 1);
}

}  // namespace thermopix
