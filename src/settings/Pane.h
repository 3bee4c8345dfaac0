#pragma once

#include <array>
#include <string_view>

#include "base/Enumeration.h"

namespace thermopix {

/// The panes of the Settings window, in the order of its sidebar.
enum class Pane { readout, general, about };

template <>
struct EnumerationTable<Pane> {
    struct Row {
        Pane value;
        std::string_view rawValue;
        std::string_view title;
        std::string_view symbol;
    };
    static constexpr std::array rows{
        Row{Pane::readout, "readout", "Readout", "thermometer.medium"},
        Row{Pane::general, "general", "General", "gearshape"},
        Row{Pane::about, "about", "About", "info.circle"},
    };
};
static_assert(isCompleteTable<Pane::about>());

}  // namespace thermopix
