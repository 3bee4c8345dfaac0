#pragma once

#include "shell/StatusItem.h"

namespace thermopix {

/// The system's status bar.
class MacStatusBar final : public StatusBar {
public:
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override;
};

}  // namespace thermopix
