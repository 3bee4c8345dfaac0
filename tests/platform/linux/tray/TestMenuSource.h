#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/Published.h"
#include "shell/Menu.h"

namespace thermopix {

/// A small menu of all kinds of items, which records what is asked of it.
class TestMenuSource final : public MenuSource {
public:
    Subscription observe(std::function<void(const Menu&)> handler) override {
        return menu.subscribe(std::move(handler));
    }

    void menuWillOpen() override {
        ++openings;
        if (onOpening) {
            onOpening();
        }
    }

    void perform(const MenuItem& item) override {
        performed.push_back(item);
        if (onPerform) {
            onPerform();
        }
    }

    /// Changes one item.
    void edit(std::size_t index, const std::function<void(MenuItem&)>& change) {
        Menu next = menu.value();
        change(next.items[index]);
        menu.send(std::move(next));
    }

    enum Position : std::size_t { reading, detail, firstLine, header, celsius, fahrenheit, secondLine, quit, hidden };

    static Menu sample() {
        const auto choice = [](std::string title, std::string value) {
            MenuItem item;
            item.title = std::move(title);
            item.identifier = "menu.unit." + value;
            item.representedValue = std::move(value);
            item.action = MenuAction::selectUnit;
            return item;
        };
        const auto line = [](MenuItemKind kind, std::string title) {
            MenuItem item;
            item.kind = kind;
            item.title = std::move(title);
            item.isEnabled = false;
            return item;
        };
        Menu menu;
        menu.items = {line(MenuItemKind::information, "72°C"),
                      line(MenuItemKind::information, "coretemp_package & nvme_0"),
                      line(MenuItemKind::separator, ""),
                      line(MenuItemKind::sectionHeader, "Unit"),
                      choice("Celsius", "celsius"),
                      choice("Fahrenheit", "fahrenheit"),
                      line(MenuItemKind::separator, ""),
                      {},
                      {}};
        menu.items[celsius].isOn = true;
        menu.items[quit].title = "Quit Thermopix";
        menu.items[quit].key = "q";
        menu.items[quit].symbol = "power";
        menu.items[quit].action = MenuAction::quit;
        menu.items[hidden].title = "Hidden";
        menu.items[hidden].isHidden = true;
        menu.items[hidden].action = MenuAction::showAbout;
        return menu;
    }

    Published<Menu> menu{sample()};
    int openings = 0;
    std::vector<MenuItem> performed;
    std::function<void()> onOpening;
    std::function<void()> onPerform;
};

}  // namespace thermopix
