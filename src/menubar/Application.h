#pragma once

#include "menubar/Menu.h"

namespace thermopix {

/// The running program as its desktop sees it. Main thread.
class Application {
public:
    virtual ~Application() = default;

    /// Ends the program in good order, with status 0, after the current callback.
    virtual void terminate() = 0;

    /// Comes to the front, ignoring other applications.
    virtual void activateIgnoringOtherApps() = 0;
};

}  // namespace thermopix
