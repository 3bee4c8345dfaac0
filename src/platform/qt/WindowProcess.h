#pragma once

#include <QTimer>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "messages/WindowEvent.h"
#include "messages/WindowRequest.h"
#include "platform/qt/views/ViewWalker.h"
#include "platform/qt/windows/PopupMenu.h"
#include "platform/qt/windows/ReadoutStrip.h"
#include "platform/qt/windows/ShellWindow.h"
#include "platform/qt/windows/TaskbarEntry.h"

namespace thermopix {

/// All that this process shows: does what requests ask, and tells what the user does. Main thread.
class WindowProcess {
public:
    using Tell = std::function<void(const WindowEvent&)>;

    /// `finished` is called when something was shown and nothing is any more.
    WindowProcess(Tell tell, std::function<void()> finished);

    void perform(const WindowRequest& request);

    /// Null for a window that has not been shown yet, or not any more.
    [[nodiscard]] ShellWindow* window(WindowId window);
    [[nodiscard]] ReadoutStrip* strip() { return strip_.get(); }
    [[nodiscard]] PopupMenu* popup() { return popup_.get(); }
    [[nodiscard]] TaskbarEntry* taskbarEntry() { return taskbarEntry_.get(); }

private:
    struct OpenWindow {
        std::unique_ptr<ShellWindow> shell;
        std::unique_ptr<ViewWalker> walker;
        std::optional<ViewNode> root;
    };

    void handle(const ShowWindow& request);
    void handle(const SetWindowContent& request);
    void handle(const OrderWindowFront& request);
    void handle(const DiscardWindow& request);
    void handle(const SetMainMenu& request);
    void handle(const SetActivationPolicy& request);
    void handle(const ShowAboutPanel& request);
    static void handle(const UseActivationToken& request);
    void handle(const OpenPopupMenu& request);
    void handle(const UpdatePopupMenu& request);
    void handle(const SetStripReadout& request);
    void handle(const SetStripMenu& request);
    void handle(const ShowStrip& request);
    void handle(const HideStrip& request);

    void connectWindow(WindowId id, ShellWindow& shell);
    [[nodiscard]] MenuView::Chosen chosenIn(MenuPlace place);
    void connectMenu(MenuPlace place, PopupMenu& menu);
    ReadoutStrip& madeStrip();
    [[nodiscard]] bool hasMenuOrStrip() const;
    [[nodiscard]] bool hasWindow() const;
    void somethingChanged();
    void settle();

    Tell tell_;
    std::function<void()> finished_;
    std::map<WindowId, OpenWindow> windows_;
    Menu mainMenu_;
    std::optional<AboutPanelContent> about_;
    ActivationPolicy policy_ = ActivationPolicy::accessory;
    std::unique_ptr<PopupMenu> popup_;
    std::unique_ptr<ReadoutStrip> strip_;
    std::unique_ptr<TaskbarEntry> taskbarEntry_;
    bool hasShownSomething_ = false;
    QTimer settleTimer_;
};

}  // namespace thermopix
