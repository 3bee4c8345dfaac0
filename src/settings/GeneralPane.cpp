#include <string_view>

#include "settings/CasePicker.h"
#include "settings/Identifiers.h"
#include "settings/Panes.h"
#include "settings/Section.h"
#include "settings/Toggles.h"
#include "settings/ViewBuilding.h"

namespace thermopix::Panes {

namespace {

template <typename Case, typename Cases>
ViewNode menuPicker(std::string_view name, std::string_view identifier, Case selection, const Cases& cases) {
    return casePicker(PickerStyle::menu, name, identifier, selection, cases, [](Case item) { return title(item); });
}

}  // namespace

ViewNode general(const Preferences& preferences) {
    return Views::vertical(
        sectionSpacing,
        {section("Sensor",
                 {card({menuPicker("Show", Identifiers::source, preferences.source, sensorSourceDisplayOrder()),
                        menuPicker("Refresh", Identifiers::interval, preferences.refreshInterval,
                                   allCases<RefreshInterval>())}),
                  captionText(subtitle(preferences.source)),
                  captionText("Always the hottest matching sensor, never an average — a mean is dragged down by the "
                              "powered-off sensors every Mac reports, and it hides the one core that is actually "
                              "being throttled."),
                  captionText("The reading is smoothed and held inside a small dead band, so the number moves when "
                              "the Mac does and not when the sensor jitters.")}),
         section("Application", toggleCard(ToggleCard::application, preferences)),
         section("Updates", toggleCard(ToggleCard::updates, preferences,
                                       {Views::pushButton("Check Now", Identifiers::checkNow)}))});
}

}  // namespace thermopix::Panes
