#pragma once

#include <memory>

#include "shell/Window.h"
#include "system/DiagnosticLog.h"

namespace thermopix {

/// Where no window can be shown: windows exist, are never visible, and each attempt to show one is a line in the log.
class UnavailableWindows final : public WindowSystem {
public:
    /// `log` outlives the windows.
    explicit UnavailableWindows(DiagnosticLog& log) : log_(log) {}

    [[nodiscard]] std::unique_ptr<Window> makeWindow(const WindowDescription& description) override;

private:
    DiagnosticLog& log_;
};

}  // namespace thermopix
