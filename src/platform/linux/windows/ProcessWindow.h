#pragma once

#include <memory>

#include "platform/linux/windows/WindowClient.h"
#include "shell/Window.h"

namespace thermopix {

/// A window shown by the window process. It counts as visible from `show()` on, and as closed when the process ends.
class ProcessWindow final : public Window {
public:
    /// `client` outlives the window.
    ProcessWindow(WindowClient& client, WindowId id, WindowDescription description);
    ~ProcessWindow() override;
    ProcessWindow(const ProcessWindow&) = delete;
    ProcessWindow& operator=(const ProcessWindow&) = delete;

    void show() override;
    void makeKeyAndOrderFront() override { client_.send(OrderWindowFront{id_}); }
    [[nodiscard]] bool isVisible() const override { return isVisible_; }
    [[nodiscard]] bool isMiniaturized() const override { return isMiniaturized_; }
    void setContent(const ViewNode& root) override { client_.send(SetWindowContent{id_, root}); }

private:
    void handle(const WindowEvent& event);
    void changed(const WindowVisibilityChanged& change);
    void processEnded(const WindowProcessEnd& end);

    WindowClient& client_;
    WindowId id_;
    WindowDescription description_;
    bool isVisible_ = false;
    bool isMiniaturized_ = false;
    /// True until the process says that the window is shown; what it said before was on its way already.
    bool isShowing_ = false;
    bool mayShowAgain_ = false;
    /// Observers are told at the end of the closing, so that they find the window gone.
    bool isClosing_ = false;
    Subscription events_;
    Subscription end_;
};

/// Makes windows of the window process. Main thread.
class ProcessWindowSystem final : public WindowSystem {
public:
    /// `client` outlives the system.
    explicit ProcessWindowSystem(WindowClient& client) : client_(client) {}

    [[nodiscard]] std::unique_ptr<Window> makeWindow(const WindowDescription& description) override;

private:
    WindowClient& client_;
    WindowId lastId_ = aboutPanelWindow;
};

}  // namespace thermopix
