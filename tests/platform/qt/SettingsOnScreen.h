#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <string>
#include <vector>

#include "environment/AppEnvironment.h"
#include "fakes/FakePlatform.h"
#include "fakes/Printing.h"
#include "platform/qt/views/ViewWalker.h"
#include "settings/PreferencesView.h"

namespace thermopix {

inline void PrintTo(const ViewEvent& event, std::ostream* out) {
    *out << event.identifier << '=' << event.value;
}

/// The product's Settings panes in real widgets. What the user does is recorded; with `obeys` it also takes effect.
class SettingsOnScreen : public testing::Test {
protected:
    SettingsOnScreen() {
        host.resize(720, 520);
        view.appear();
        platform.manualMainLoop.runPending();
        host.show();
        showView();
        QApplication::setActiveWindow(&host);
    }

    /// What the resident program does once a second and after each event.
    void showView() {
        platform.manualMainLoop.runPending();
        walker.show(view.node());
        QApplication::processEvents();
    }

    void openPane(const std::string& pane) {
        view.handle({"prefs.pane." + pane, {}});
        showView();
        events.clear();
    }

    template <typename Widget = QWidget>
    [[nodiscard]] Widget& find(const std::string& identifier) {
        auto* found = host.findChild<Widget*>(QString::fromStdString(identifier));
        if (found == nullptr) {
            throw std::runtime_error("no control is called " + identifier);
        }
        return *found;
    }

    FakePlatform platform;
    std::vector<std::string> arguments{"thermopix", "--uitest-fake-sensor"};
    AppEnvironment environment{arguments, {}, platform};
    PreferencesView view{environment, [] {}};
    std::vector<ViewEvent> events;
    bool obeys = false;
    QWidget host;
    ViewWalker walker{host, [this](const ViewEvent& event) {
                          events.push_back(event);
                          if (obeys) {
                              view.handle(event);
                              platform.manualMainLoop.runPending();
                              walker.show(view.node());
                          }
                      }};
};

}  // namespace thermopix
