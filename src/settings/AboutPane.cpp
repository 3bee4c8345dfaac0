#include <fmt/format.h>

#include <string>
#include <utility>
#include <vector>

#include "environment/AppInfo.h"
#include "settings/Identifiers.h"
#include "settings/Panes.h"
#include "settings/Section.h"
#include "settings/ViewBuilding.h"

namespace thermopix::Panes {

namespace {

constexpr double namePoints = 22;
constexpr double versionPoints = 12;
constexpr double taglinePoints = 13;
constexpr double headerSpacing = 4;

ViewNode header(const SystemInformation& system) {
    const std::string shortVersion = AppInfo::shortVersion(system);
    const std::string build = AppInfo::build(system);
    ViewNode name = Views::text(AppInfo::name, namePoints);
    name.textStyle.isSemibold = true;
    ViewNode node = Views::vertical(
        headerSpacing,
        {std::move(name),
         Views::text(fmt::format("Version {} ({})", shortVersion, build), versionPoints, ColorRole::secondary),
         Views::text("Watch your Mac sweat.", taglinePoints, ColorRole::tertiary)});
    node.accessibility.label = fmt::format("{}, version {} build {}", AppInfo::name, shortVersion, build);
    node.accessibility.hidesChildren = true;
    return node;
}

std::vector<ViewNode> sensorParagraph(AppEnvironment& environment) {
    const auto readable = environment.sensor().sample().size();
    if (readable > 0) {
        return {captionText(
            fmt::format("{} thermal sensors readable on this Mac. Each refresh reads only the ones the source you "
                        "picked in General names, and shows the hottest of those — widening to the CPU, GPU and SoC "
                        "sensors only if that source names nothing on this Mac.",
                        readable))};
    }
    return {captionText("No thermal sensor could be read on this Mac. The readout falls back to `—°` and the menu "
                        "shows the system's thermal state instead."),
            captionText(fmt::format("Thermal state right now: {}", title(environment.currentPressure())))};
}

}  // namespace

ViewNode about(AppEnvironment& environment, const SystemInformation& system) {
    return Views::vertical(
        sectionSpacing,
        {header(system), section("Requirements", {captionText("macOS 13 or later · Apple silicon and Intel")}),
         section("What it reads", sensorParagraph(environment)),
         section("Permissions",
                 {captionText("None. Thermopix asks for no Accessibility grant, no Full Disk Access, no automation "
                              "permission and no network access beyond checking for its own updates. Nothing about "
                              "your Mac leaves it.")}),
         Views::pushButton("Quit " + std::string(AppInfo::name), Identifiers::quit)});
}

}  // namespace thermopix::Panes
