#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "base/Enumeration.h"
#include "shell/ViewNode.h"

namespace thermopix {

/// A case's raw value as events carry it.
template <typename Case>
[[nodiscard]] std::string eventValue(Case value) {
    if constexpr (std::is_arithmetic_v<RawValue<Case>>) {
        return std::to_string(rawValue(value));
    } else {
        return std::string(rawValue(value));
    }
}

template <typename Case>
[[nodiscard]] std::optional<Case> fromEventValue(std::string_view text) {
    for (const Case value : allCases<Case>()) {
        if (eventValue(value) == text) {
            return value;
        }
    }
    return std::nullopt;
}

/// A picker of one of these cases.
template <typename Case, typename Cases, typename ItemTitle>
[[nodiscard]] ViewNode casePicker(PickerStyle style, std::string_view title, std::string_view identifier,
                                  Case selection, const Cases& cases, ItemTitle itemTitle) {
    ViewNode picker;
    picker.kind = ViewKind::picker;
    picker.pickerStyle = style;
    picker.text = title;
    picker.hidesLabel = style == PickerStyle::segmented;
    picker.identifier = identifier;
    picker.selection = eventValue(selection);
    for (const Case item : cases) {
        picker.items.push_back({std::string(itemTitle(item)), eventValue(item)});
    }
    return picker;
}

}  // namespace thermopix
