#include <fmt/format.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "sensing/PetMood.h"
#include "settings/CasePicker.h"
#include "settings/ChoiceRow.h"
#include "settings/Identifiers.h"
#include "settings/Panes.h"
#include "settings/Section.h"
#include "settings/StatusBarPreview.h"
#include "settings/Toggles.h"
#include "settings/ViewBuilding.h"

namespace thermopix::Panes {

namespace {

ViewNode previewSection(const Preferences& preferences, const Display& display) {
    return section("Preview", {StatusBarPreview{display, preferences.appearance()}.node(),
                               captionText("Light and dark menu bars, at actual size. The status image is a template, "
                                           "so macOS tints it for both — and inverts it again while the menu is "
                                           "open.")});
}

std::string moodCaption() {
    const auto thresholds = moodThresholds();
    return fmt::format(
        "Four moods, from a chilly {:.0f}° up to a scorching {:.0f}°. The highlighted one is how your Mac is doing "
        "right now. It blinks, too.",
        thresholds.front().upperBound, thresholds.back().upperBound);
}

ViewNode petSection(const Preferences& preferences, const Display& display, bool blinking) {
    std::vector<ViewNode> rows;
    for (const PixelPet pet : allCases<PixelPet>()) {
        rows.push_back(PetRow{pet, display, preferences.appearance(blinking)}.node());
    }
    return section("Pet", {choiceList(std::move(rows)), captionText(moodCaption())});
}

ViewNode styleSection(const Preferences& preferences, const Display& display) {
    std::vector<ViewNode> rows;
    for (const PixelStyle style : allCases<PixelStyle>()) {
        rows.push_back(StyleRow{style, display, preferences.appearance()}.node());
    }
    return section("Style", {choiceList(std::move(rows)),
                             captionText("Every style is drawn on a 48-pixel grid at whole-point cells, so it lands "
                                         "on exact device pixels and is never resampled.")});
}

template <typename Case, typename ItemTitle>
ViewNode segmentedPicker(std::string_view heading, std::string_view identifier, Case selection, ItemTitle itemTitle) {
    return casePicker(PickerStyle::segmented, heading, identifier, selection, allCases<Case>(), itemTitle);
}

ViewNode sizeSection(const Preferences& preferences) {
    constexpr std::string_view heading = "Size";
    return section(
        heading,
        {segmentedPicker(heading, Identifiers::size, preferences.size, [](PixelSize size) { return title(size); }),
         captionText(fmt::format(
             "Compact draws each pixel at 2 pt — {:.0f} pt tall, in proportion with the system's own menu bar items. "
             "Large draws it at 3 pt, which fills the bar. Only whole points, because a fractional cell would stop "
             "the art landing on device pixels.",
             renderedHeight(preferences.style, PixelSize::compact, PixelPet::none)))});
}

ViewNode unitSection(const Preferences& preferences) {
    constexpr std::string_view heading = "Unit";
    auto content = toggleCard(ToggleCard::unit, preferences);
    content.insert(content.begin(),
                   segmentedPicker(heading, Identifiers::unit, preferences.unit, [](TemperatureUnit unit) {
                       return fmt::format("{} ({})", title(unit), symbol(unit));
                   }));
    return section(heading, std::move(content));
}

}  // namespace

ViewNode readout(const Preferences& preferences, const Display& display, bool blinking) {
    return Views::vertical(sectionSpacing,
                           {previewSection(preferences, display), petSection(preferences, display, blinking),
                            styleSection(preferences, display), sizeSection(preferences), unitSection(preferences)});
}

}  // namespace thermopix::Panes
