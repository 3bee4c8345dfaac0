#include <string>
#include <string_view>

#include "settings/Identifiers.h"
#include "settings/Panes.h"
#include "settings/Section.h"
#include "settings/ViewBuilding.h"

namespace thermopix::Panes {

namespace {

ViewNode menuPicker(std::string_view title, std::string_view identifier, std::string selection) {
    ViewNode picker;
    picker.kind = ViewKind::picker;
    picker.pickerStyle = PickerStyle::menu;
    picker.text = title;
    picker.identifier = identifier;
    picker.selection = std::move(selection);
    return picker;
}

ViewNode sourcePicker(SensorSource selection) {
    ViewNode picker = menuPicker("Show", Identifiers::source, std::string(rawValue(selection)));
    for (const SensorSource source : sensorSourceDisplayOrder()) {
        picker.items.push_back({std::string(title(source)), std::string(rawValue(source))});
    }
    return picker;
}

ViewNode intervalPicker(RefreshInterval selection) {
    ViewNode picker = menuPicker("Refresh", Identifiers::interval, std::to_string(rawValue(selection)));
    for (const RefreshInterval interval : allCases<RefreshInterval>()) {
        picker.items.push_back({std::string(title(interval)), std::to_string(rawValue(interval))});
    }
    return picker;
}

}  // namespace

ViewNode general(const Preferences& preferences) {
    return Views::vertical(
        sectionSpacing,
        {section("Sensor",
                 {card({sourcePicker(preferences.source), intervalPicker(preferences.refreshInterval)}),
                  captionText(subtitle(preferences.source)),
                  captionText("Always the hottest matching sensor, never an average — a mean is dragged down by the "
                              "powered-off sensors every Mac reports, and it hides the one core that is actually "
                              "being throttled."),
                  captionText("The reading is smoothed and held inside a small dead band, so the number moves when "
                              "the Mac does and not when the sensor jitters.")}),
         section("Application",
                 {card({Views::toggle("Open at login", Identifiers::openAtLogin, preferences.openAtLogin),
                        Views::toggle("Open Settings when the app launches", Identifiers::showPrefsOnLaunch,
                                      preferences.showPreferencesOnLaunch),
                        Views::toggle("Show in Dock", Identifiers::showInDock, preferences.showInDock)}),
                  captionText("Turning this off takes effect once Settings closes — an app cannot drop its Dock icon "
                              "while it has a window on screen without sending that window behind everything else.")}),
         section("Updates", {card({Views::toggle("Check for updates automatically", Identifiers::autoUpdate,
                                                 preferences.checkForUpdatesAutomatically),
                                   Views::pushButton("Check Now", Identifiers::checkNow)})})});
}

}  // namespace thermopix::Panes
