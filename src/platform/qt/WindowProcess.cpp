#include "platform/qt/WindowProcess.h"

#include <QApplication>
#include <QCursor>
#include <algorithm>
#include <utility>

#include "platform/qt/drawing/Strings.h"
#include "platform/qt/windows/AboutContent.h"

namespace thermopix {

namespace {

/// After its last window has closed the program says whether it stays in the taskbar.
constexpr int settleMilliseconds = 200;

QPoint toPoint(const ScreenPoint& point) {
    return {point.x, point.y};
}

}  // namespace

WindowProcess::WindowProcess(Tell tell, std::function<void()> finished)
    : tell_(std::move(tell)), finished_(std::move(finished)) {
    settleTimer_.setSingleShot(true);
    settleTimer_.setInterval(settleMilliseconds);
    QObject::connect(&settleTimer_, &QTimer::timeout, &settleTimer_, [this] { settle(); });
}

void WindowProcess::perform(const WindowRequest& request) {
    std::visit([this](const auto& known) { this->handle(known); }, request);
    somethingChanged();
}

ShellWindow* WindowProcess::window(WindowId window) {
    const auto found = windows_.find(window);
    return found == windows_.end() ? nullptr : found->second.shell.get();
}

void WindowProcess::handle(const ShowWindow& request) {
    OpenWindow& open = windows_[request.window];
    if (!open.shell) {
        const WindowDescription& description = request.description;
        auto content = std::make_unique<QWidget>();
        content->resize(static_cast<int>(description.width), static_cast<int>(description.height));
        QWidget& host = *content;
        open.shell = std::make_unique<ShellWindow>(qtString(description.title), qtString(description.identifier),
                                                   std::move(content), ShellWindow::MenuBar::shown);
        open.walker = std::make_unique<ViewWalker>(host, [this, id = request.window](const ViewEvent& event) {
            tell_(ControlOperated{id, event});
        });
        connectWindow(request.window, *open.shell);
        if (open.root) {
            open.walker->show(*open.root);
        }
    }
    open.shell->present();
}

void WindowProcess::handle(const SetWindowContent& request) {
    OpenWindow& open = windows_[request.window];
    open.root = request.root;
    if (open.walker) {
        open.walker->show(*open.root);
    }
}

void WindowProcess::handle(const OrderWindowFront& request) {
    if (auto* shell = window(request.window); shell != nullptr && shell->isVisible()) {
        shell->comeForward();
    }
}

void WindowProcess::handle(const DiscardWindow& request) {
    windows_.erase(request.window);
}

void WindowProcess::handle(const SetMainMenu& request) {
    mainMenu_ = request.menu;
    for (auto& [id, open] : windows_) {
        if (open.shell) {
            open.shell->setMainMenu(mainMenu_);
        }
    }
}

void WindowProcess::handle(const SetActivationPolicy& request) {
    policy_ = request.policy;
    hasShownSomething_ = hasShownSomething_ || policy_ == ActivationPolicy::regular;
}

void WindowProcess::handle(const ShowAboutPanel& request) {
    OpenWindow& open = windows_[aboutPanelWindow];
    if (!open.shell || about_ != request.content) {
        about_ = request.content;
        open.shell = std::make_unique<ShellWindow>(qtString("About " + request.content.applicationName),
                                                   QStringLiteral("about.panel"), makeAboutContent(request.content),
                                                   ShellWindow::MenuBar::shortcutsOnly);
        connectWindow(aboutPanelWindow, *open.shell);
    }
    open.shell->present();
}

void WindowProcess::handle(const UseActivationToken& request) {
    // Read, and forgotten, by the toolkit when the next window is activated.
    qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(request.token));
}

void WindowProcess::handle(const OpenPopupMenu& request) {
    popup_ = std::make_unique<PopupMenu>(chosenIn(MenuPlace::popup));
    connectMenu(MenuPlace::popup, *popup_);
    popup_->showMenu(request.menu);
    popup_->open(request.position ? toPoint(*request.position) : QCursor::pos());
}

void WindowProcess::handle(const UpdatePopupMenu& request) {
    if (popup_ && popup_->isVisible()) {
        popup_->showMenu(request.menu);
    }
}

void WindowProcess::handle(const SetStripReadout& request) {
    madeStrip().setReadout(request.image, request.note);
}

void WindowProcess::handle(const SetStripMenu& request) {
    madeStrip().setMenu(request.menu);
}

void WindowProcess::handle(const ShowStrip& request) {
    madeStrip().present(request.position ? std::optional(toPoint(*request.position)) : std::nullopt);
}

void WindowProcess::handle(const HideStrip& /*request*/) {
    if (strip_) {
        strip_->hide();
    }
}

void WindowProcess::connectWindow(WindowId id, ShellWindow& shell) {
    shell.setMainMenu(mainMenu_);
    shell.onMainMenu = [this](MenuAction action) { tell_(MainMenuActionChosen{action}); };
    shell.onWillClose = [this, id] { tell_(WindowWillClose{id}); };
    shell.onVisibilityChange = [this, id](bool isVisible, bool isMiniaturized) {
        tell_(WindowVisibilityChanged{id, isVisible, isMiniaturized});
        somethingChanged();
    };
}

MenuView::Chosen WindowProcess::chosenIn(MenuPlace place) {
    return [this, place](const MenuItem& item) { tell_(MenuItemChosen{place, item}); };
}

void WindowProcess::connectMenu(MenuPlace place, PopupMenu& menu) {
    QObject::connect(&menu, &QMenu::aboutToShow, &menu, [this, place] { tell_(MenuWillOpen{place}); });
    QObject::connect(&menu, &QMenu::aboutToHide, &menu, [this, place] {
        tell_(MenuDidClose{place});
        somethingChanged();
    });
}

ReadoutStrip& WindowProcess::madeStrip() {
    if (!strip_) {
        strip_ = std::make_unique<ReadoutStrip>(chosenIn(MenuPlace::strip));
        connectMenu(MenuPlace::strip, strip_->menu());
        strip_->onMoved = [this](QPoint position) { tell_(StripMoved{{position.x(), position.y()}}); };
    }
    return *strip_;
}

bool WindowProcess::hasMenuOrStrip() const {
    return (popup_ && popup_->isVisible()) || (strip_ && strip_->isVisible());
}

bool WindowProcess::hasWindow() const {
    return std::any_of(windows_.begin(), windows_.end(),
                       [](const auto& entry) { return entry.second.shell && entry.second.shell->isVisible(); });
}

void WindowProcess::somethingChanged() {
    hasShownSomething_ = hasShownSomething_ || hasWindow() || hasMenuOrStrip();
    if (hasWindow()) {
        taskbarEntry_.reset();
        settleTimer_.stop();
    } else if (hasShownSomething_) {
        settleTimer_.start();
    }
}

void WindowProcess::settle() {
    if (policy_ == ActivationPolicy::regular) {
        if (!taskbarEntry_) {
            taskbarEntry_ = std::make_unique<TaskbarEntry>();
            taskbarEntry_->onReopen = [this] { tell_(Reopened{}); };
            taskbarEntry_->showMinimized();
        }
        return;
    }
    taskbarEntry_.reset();
    if (!hasMenuOrStrip()) {
        finished_();
    }
}

}  // namespace thermopix
