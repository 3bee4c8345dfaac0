#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/FunctionView.h"
#include "environment/AppEnvironment.h"
#include "fakes/FakePlatform.h"
#include "settings/Identifiers.h"
#include "settings/PreferencesView.h"

// Prints what happens when somebody operates every control of the Settings window, one after another: after each
// operation the stored settings, and what assistive technology is to find in the window. The program's own core tells
// it: story VERSION BUILD

namespace thermopix {
namespace {

using Json = nlohmann::ordered_json;
using namespace std::chrono_literals;

/// Longer than a reading takes to settle.
constexpr auto settling = 20s;

struct Operation {
    ViewEvent event;
    /// How it is done: press, toggle, choose.
    std::string how;
    std::string name;
    /// Of a picker that opens a menu.
    std::string item;
};

std::string spokenName(const ViewNode& node) {
    return node.accessibility.label.empty() ? node.text : node.accessibility.label;
}

Json element(std::string_view kind, std::string_view identifier, std::string_view name) {
    return {{"kind", kind}, {"identifier", identifier}, {"name", name}};
}

/// Appends what the tree is to assistive technology, in reading order.
void describe(Json& elements, const ViewNode& node) {
    if (node.accessibility.hidesChildren && node.kind == ViewKind::stack) {
        const bool isPreview = node.identifier == Identifiers::preview;
        elements.push_back(element(isPreview ? "picture" : "text", node.identifier, node.accessibility.label));
        return;
    }
    switch (node.kind) {
        case ViewKind::text:
            elements.push_back(element("text", node.identifier, spokenName(node)));
            break;
        case ViewKind::button:
            if (node.children.empty()) {
                elements.push_back(element("button", node.identifier, spokenName(node)));
            } else {
                elements.push_back(element("choice", node.identifier, spokenName(node)));
                elements.back()["isOn"] = node.accessibility.isSelected;
            }
            return;
        case ViewKind::toggle:
            elements.push_back(element("toggle", node.identifier, spokenName(node)));
            elements.back()["isOn"] = node.isOn;
            break;
        case ViewKind::picker:
            if (node.pickerStyle == PickerStyle::menu) {
                elements.push_back(element("text", "", node.text));
                elements.push_back(element("picker", node.identifier, spokenName(node)));
                for (const auto& item : node.items) {
                    if (item.value == node.selection) {
                        elements.back()["choice"] = item.title;
                    }
                }
            } else {
                elements.push_back(element("group", node.identifier, spokenName(node)));
                for (const auto& item : node.items) {
                    elements.push_back(element("choice", node.identifier + '.' + item.value, item.title));
                    elements.back()["isOn"] = item.value == node.selection;
                }
            }
            break;
        default:
            break;
    }
    for (const auto& child : node.children) {
        describe(elements, child);
    }
}

/// The first node, from above, of which this is true; null when there is none.
const ViewNode* find(const ViewNode& node, FunctionView<bool(const ViewNode&)> isWanted) {
    if (isWanted(node)) {
        return &node;
    }
    for (const auto& child : node.children) {
        if (const auto* found = find(child, isWanted)) {
            return found;
        }
    }
    return nullptr;
}

const ViewNode* find(const ViewNode& root, std::string_view identifier) {
    return find(root, [identifier](const ViewNode& node) { return node.identifier == identifier; });
}

/// Every choice but the present one, which comes last: so each operation changes something.
template <typename Item, typename IsChosen>
std::vector<Item> presentOneLast(std::vector<Item> items, IsChosen isChosen) {
    std::stable_partition(items.begin(), items.end(), [&](const Item& item) { return !isChosen(item); });
    return items;
}

void addPicker(std::vector<Operation>& operations, const ViewNode& picker) {
    for (const auto& item : presentOneLast(
             picker.items, [&](const PickerItem& candidate) { return candidate.value == picker.selection; })) {
        const bool isMenu = picker.pickerStyle == PickerStyle::menu;
        operations.push_back({{picker.identifier, item.value},
                              isMenu ? "choose" : "toggle",
                              isMenu ? spokenName(picker) : item.title,
                              isMenu ? item.title : ""});
    }
}

/// Everything that can be operated in the tree; what ends the program is not among it.
void addOperations(std::vector<Operation>& operations, const ViewNode& node) {
    std::vector<ViewNode> rows;
    for (const auto& child : node.children) {
        if (child.kind == ViewKind::button && !child.children.empty()) {
            rows.push_back(child);
        }
    }
    for (const auto& row : presentOneLast(rows, [](const ViewNode& one) { return one.accessibility.isSelected; })) {
        operations.push_back({{row.identifier, {}}, "press", spokenName(row), {}});
    }
    if (node.kind == ViewKind::toggle) {
        for (const bool isOn : {!node.isOn, node.isOn}) {
            operations.push_back({{node.identifier, isOn ? "true" : "false"}, "toggle", spokenName(node), {}});
        }
    } else if (node.kind == ViewKind::picker) {
        addPicker(operations, node);
    } else if (node.kind == ViewKind::button && node.children.empty() && node.identifier != Identifiers::quit) {
        operations.push_back({{node.identifier, {}}, "press", spokenName(node), {}});
    }
    for (const auto& child : node.children) {
        addOperations(operations, child);
    }
}

class Narrator {
public:
    Narrator(std::string version, std::string build) {
        platform_.system.bundleVersion = std::move(version);
        platform_.system.bundleBuild = std::move(build);
        view_.appear();
    }

    [[nodiscard]] Json story() {
        Json steps = Json::array({step({})});
        for (const auto pane : allCases<Pane>()) {
            const std::string identifier = std::string(Identifiers::pane) + std::string(rawValue(pane));
            const ViewNode sidebar = view_.node();
            steps.push_back(perform({{identifier, {}}, "press", spokenName(*find(sidebar, identifier)), {}}));
            std::vector<Operation> operations;
            const ViewNode shown = view_.node();
            addOperations(operations, shown.children.back());
            for (const auto& operation : operations) {
                steps.push_back(perform(operation));
            }
        }
        return {{"steps", steps}, {"quit", spokenName(*find(view_.node(), Identifiers::quit))}};
    }

private:
    [[nodiscard]] Json perform(const Operation& operation) {
        view_.handle(operation.event);
        return step(operation);
    }

    [[nodiscard]] Json step(const Operation& operation) {
        platform_.manualMainLoop.advance(settling);
        const ViewNode root = view_.node();
        Json elements = Json::array();
        describe(elements, root);
        Json step{{"identifier", operation.event.identifier},
                  {"how", operation.how},
                  {"name", operation.name},
                  {"item", operation.item},
                  {"settings", Json::parse(encodePreferences(environment_.preferences()))},
                  {"elements", std::move(elements)}};
        if (const auto* preview = find(root, Identifiers::preview)) {
            const StatusImage& image =
                find(*preview, [](const ViewNode& node) { return node.kind == ViewKind::pixelImage; })->image;
            step["art"] = {{"rows", image.bitmap.signature()}, {"cell", image.cell}};
        }
        return step;
    }

    FakePlatform platform_;
    std::vector<std::string> arguments_{"thermopix", "--uitest-fake-sensor"};
    AppEnvironment environment_{arguments_, {}, platform_};
    PreferencesView view_{environment_, [] {}};
};

}  // namespace
}  // namespace thermopix

int main(int argc, char** argv) {
    if (argc != 3) {
        return EXIT_FAILURE;
    }
    std::puts(thermopix::Narrator(argv[1], argv[2]).story().dump().c_str());
    return EXIT_SUCCESS;
}
