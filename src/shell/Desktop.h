#pragma once

#include <memory>

#include "shell/Application.h"
#include "shell/StatusItem.h"
#include "shell/Window.h"
#include "system/Platform.h"

namespace thermopix {

/// The desktop that the interactive program lives on. Main thread.
class Desktop {
public:
    virtual ~Desktop() = default;

    [[nodiscard]] virtual Application& application() = 0;
    [[nodiscard]] virtual StatusBar& statusBar() = 0;
    [[nodiscard]] virtual WindowSystem& windows() = 0;

    /// Runs the event loop until the program is told to end; returns the exit status.
    [[nodiscard]] virtual int run(ApplicationDelegate& delegate) = 0;
};

/// Each platform defines this once. `platform` outlives the desktop.
[[nodiscard]] std::unique_ptr<Desktop> makeDesktop(Platform& platform, Arguments arguments,
                                                   const EnvironmentVariables& variables);

}  // namespace thermopix
