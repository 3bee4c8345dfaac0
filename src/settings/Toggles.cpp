#include "settings/Toggles.h"

#include <fmt/format.h>

#include <iterator>
#include <utility>

#include "settings/Section.h"
#include "settings/ViewBuilding.h"

namespace thermopix {

std::vector<ViewNode> toggleCard(ToggleCard which, const Preferences& preferences, std::vector<ViewNode> more) {
    std::vector<ViewNode> controls;
    std::vector<ViewNode> content(1);
    for (const Toggle& toggle : toggles) {
        if (toggle.card != which) {
            continue;
        }
        controls.push_back(Views::toggle(toggle.title, toggle.identifier, preferences.*toggle.field));
        if (!toggle.caption.empty()) {
            content.push_back(captionText(fmt::format(fmt::runtime(toggle.caption), suffix(preferences.unit))));
        }
    }
    controls.insert(controls.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
    content.front() = card(std::move(controls));
    return content;
}

}  // namespace thermopix
