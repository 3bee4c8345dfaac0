#pragma once

#include "system/MainLoop.h"

namespace thermopix {

/// The main dispatch queue, which the application's event loop serves, also while a menu is open. Main thread.
class MacMainLoop final : public MainLoop {
public:
    Subscription oneShot(Duration delay, Work work) override;
    Subscription repeating(Duration first, Duration period, Duration leeway, Work work) override;
    [[nodiscard]] Duration now() const override;
};

}  // namespace thermopix
