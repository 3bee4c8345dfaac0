#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fakes/RecordingStatusBar.h"
#include "shell/Desktop.h"

namespace thermopix {

/// Records what the program asked of its desktop, as words in order.
class RecordingApplication final : public Application {
public:
    explicit RecordingApplication(std::vector<std::string>& events) : events_(events) {}

    [[nodiscard]] bool hasOtherRunningInstance() override {
        events_.emplace_back("look for other instance");
        return otherInstanceRuns;
    }
    [[nodiscard]] bool activateOtherRunningInstance() override {
        events_.emplace_back("activate other instance");
        return otherInstanceIsOurs;
    }
    void terminate() override { events_.emplace_back("terminate"); }
    void activateIgnoringOtherApps() override { events_.emplace_back("activate"); }
    [[nodiscard]] ActivationPolicy activationPolicy() const override { return policy; }
    void setActivationPolicy(ActivationPolicy wanted) override {
        policy = wanted;
        events_.emplace_back(wanted == ActivationPolicy::regular ? "policy regular" : "policy accessory");
    }
    void setMainMenu(const Menu& menu) override {
        mainMenu = menu;
        events_.emplace_back("main menu");
    }
    void showAboutPanel(const AboutPanelContent& content) override {
        aboutPanel = content;
        events_.emplace_back("about panel");
    }

    bool otherInstanceRuns = false;
    bool otherInstanceIsOurs = true;
    ActivationPolicy policy = ActivationPolicy::accessory;
    Menu mainMenu;
    AboutPanelContent aboutPanel;

private:
    std::vector<std::string>& events_;
};

/// A window whose state a test moves by hand. The fake of the window system keeps it reachable.
class FakeWindow final : public Window {
public:
    FakeWindow(WindowDescription described, std::vector<std::string>& events)
        : description(std::move(described)), events_(events) {}

    void show() override {
        events_.emplace_back("show window");
        miniaturized = false;
        if (!std::exchange(visible, true)) {
            visibilityObservers.tell(true);
        }
    }
    void makeKeyAndOrderFront() override { events_.emplace_back("order front"); }
    [[nodiscard]] bool isVisible() const override { return visible; }
    [[nodiscard]] bool isMiniaturized() const override { return miniaturized; }
    void setContent(const ViewNode& root) override { contents.push_back(root); }

    /// What the user's click on the close button does.
    void close() {
        closeObservers.tell();
        visible = false;
        visibilityObservers.tell(false);
    }
    void miniaturize() {
        visible = false;
        miniaturized = true;
        visibilityObservers.tell(false);
    }
    void operate(const std::string& identifier, const std::string& value = "") {
        eventObservers.tell(ViewEvent{identifier, value});
    }

    [[nodiscard]] std::size_t closeObserverCount() const { return closeObservers.count(); }

    WindowDescription description;
    bool visible = false;
    bool miniaturized = false;
    /// Every tree that was shown, newest last.
    std::vector<ViewNode> contents;

private:
    std::vector<std::string>& events_;
};

class FakeWindowSystem final : public WindowSystem {
public:
    explicit FakeWindowSystem(std::vector<std::string>& events) : events_(events) {}

    [[nodiscard]] std::unique_ptr<Window> makeWindow(const WindowDescription& description) override {
        ++windowsMade;
        auto made = std::make_unique<FakeWindow>(description, events_);
        window = made.get();
        return made;
    }

    std::int64_t windowsMade = 0;
    FakeWindow* window = nullptr;

private:
    std::vector<std::string>& events_;
};

class FakeDesktop final : public Desktop {
public:
    [[nodiscard]] Application& application() override { return recordingApplication; }
    [[nodiscard]] StatusBar& statusBar() override { return recordingStatusBar; }
    [[nodiscard]] WindowSystem& windows() override { return windowSystem; }
    [[nodiscard]] int run(ApplicationDelegate& delegate) override {
        delegate.applicationDidFinishLaunching();
        return 0;
    }

    std::vector<std::string> events;
    RecordingApplication recordingApplication{events};
    RecordingStatusBar recordingStatusBar;
    FakeWindowSystem windowSystem{events};
};

}  // namespace thermopix
