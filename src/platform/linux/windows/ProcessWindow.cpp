#include "platform/linux/windows/ProcessWindow.h"

#include <utility>
#include <variant>

namespace thermopix {

ProcessWindow::ProcessWindow(WindowClient& client, WindowId id, WindowDescription description)
    : client_(client),
      id_(id),
      description_(std::move(description)),
      events_(client.onEvent([this](const WindowEvent& event) { handle(event); })),
      end_(client.onEnd([this](const WindowProcessEnd& end) { processEnded(end); })) {}

ProcessWindow::~ProcessWindow() {
    client_.send(DiscardWindow{id_});
}

void ProcessWindow::show() {
    client_.send(ShowWindow{id_, description_});
    isMiniaturized_ = false;
    mayShowAgain_ = true;
    if (!std::exchange(isVisible_, true)) {
        isShowing_ = true;
        visibilityObservers.tell(true);
    }
}

void ProcessWindow::handle(const WindowEvent& event) {
    if (const auto* operated = std::get_if<ControlOperated>(&event); operated != nullptr && operated->window == id_) {
        eventObservers.tell(operated->event);
    } else if (const auto* change = std::get_if<WindowVisibilityChanged>(&event);
               change != nullptr && change->window == id_) {
        changed(*change);
    } else if (const auto* closing = std::get_if<WindowWillClose>(&event);
               closing != nullptr && closing->window == id_ && !isShowing_) {
        isClosing_ = true;
    }
}

void ProcessWindow::changed(const WindowVisibilityChanged& change) {
    if (isShowing_ && !change.isVisible) {
        return;
    }
    isShowing_ = false;
    if (std::exchange(isClosing_, false) && !change.isVisible) {
        closeObservers.tell();
    }
    isMiniaturized_ = change.isMiniaturized;
    if (std::exchange(isVisible_, change.isVisible) != change.isVisible) {
        visibilityObservers.tell(change.isVisible);
    }
}

void ProcessWindow::processEnded(const WindowProcessEnd& end) {
    const bool isMissed = end.wasSilent ? isVisible_ : isShowing_;
    if (isMissed && !end.isFailure() && std::exchange(mayShowAgain_, false)) {
        // The process was about to end with its last window when it was asked for this one, or did not hear it.
        isClosing_ = false;
        isVisible_ = false;
        visibilityObservers.tell(false);
        isVisible_ = true;
        isShowing_ = true;
        client_.send(ShowWindow{id_, description_});
        visibilityObservers.tell(true);
        return;
    }
    isShowing_ = false;
    isClosing_ = false;
    if (isVisible_ || isMiniaturized_) {
        closeObservers.tell();
        isMiniaturized_ = false;
        if (std::exchange(isVisible_, false)) {
            visibilityObservers.tell(false);
        }
    }
}

std::unique_ptr<Window> ProcessWindowSystem::makeWindow(const WindowDescription& description) {
    return std::make_unique<ProcessWindow>(client_, ++lastId_, description);
}

}  // namespace thermopix
