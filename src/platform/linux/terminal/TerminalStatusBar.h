#pragma once

#include <functional>
#include <memory>

#include "platform/linux/terminal/TerminalOutput.h"
#include "shell/StatusItem.h"
#include "system/Platform.h"

namespace thermopix {

/// The readout in a terminal, redrawn in place in half blocks; where the output is no terminal, one line for each
/// change of its description. There is no menu. Main thread, which serves the default main context.
class TerminalStatusBar final : public StatusBar {
public:
    /// Writes to `descriptor`, which stays open and is not owned. A terminal without abilities (TERM) is none, and
    /// colour can be refused (NO_COLOR). `outputLost` is called once, inside a redraw, when the reader has gone.
    TerminalStatusBar(int descriptor, const EnvironmentVariables& variables, std::function<void()> outputLost);

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override;

private:
    TerminalOutput output_;
    bool drawsPictures_;
    TerminalColor color_;
};

}  // namespace thermopix
