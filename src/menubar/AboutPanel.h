#pragma once

#include "shell/AboutPanelContent.h"
#include "system/SystemInformation.h"

namespace thermopix {

[[nodiscard]] AboutPanelContent aboutPanelContent(const SystemInformation& system);

}  // namespace thermopix
