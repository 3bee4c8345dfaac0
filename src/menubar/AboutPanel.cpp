#include "menubar/AboutPanel.h"

#include <fmt/format.h>

#include "environment/AppInfo.h"

namespace thermopix {

AboutPanelContent aboutPanelContent(const SystemInformation& system) {
    return {
        .applicationName = std::string(AppInfo::name),
        .version = fmt::format("{} ({})", AppInfo::shortVersion(system), AppInfo::build(system)),
        .credits =
            "Your Mac's temperature, in pixels.\n"
            "Reads the thermal sensors directly — no permissions, no network, no telemetry.",
        .creditsStyle = {},
    };
}

}  // namespace thermopix
