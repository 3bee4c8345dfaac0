#pragma once

#include <string_view>

#include "environment/AppEnvironment.h"
#include "environment/Preferences.h"
#include "sensing/Display.h"
#include "shell/ViewNode.h"
#include "system/SystemInformation.h"

/// The three panes as views of the settings and of the present display.
namespace thermopix::Panes {

inline constexpr double sectionSpacing = 22;

[[nodiscard]] ViewNode readout(const Preferences& preferences, const Display& display, bool blinking);
[[nodiscard]] ViewNode general(const Preferences& preferences);

/// Counts the readable sensors anew each time.
[[nodiscard]] ViewNode about(AppEnvironment& environment, const SystemInformation& system);

}  // namespace thermopix::Panes
