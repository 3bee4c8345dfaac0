#pragma once

#include <memory>

#include "platform/linux/glib/GLibHandles.h"
#include "system/MainLoop.h"

namespace thermopix {

/// The default main context as `MainLoop`; everything that attaches to that context is served too. All timers
/// share one source, so that those due together cost one wake-up. A callback must not throw.
class GLibMainLoop final : public MainLoop {
public:
    GLibMainLoop();
    /// Timers that are still waiting never run.
    ~GLibMainLoop() override;
    GLibMainLoop(const GLibMainLoop&) = delete;
    GLibMainLoop& operator=(const GLibMainLoop&) = delete;

    Subscription oneShot(Duration delay, Work work) override;
    Subscription repeating(Duration first, Duration period, Duration leeway, Work work) override;

    /// The system's monotonic clock, which stands still while the machine sleeps.
    [[nodiscard]] Duration now() const override;

    /// Serves the context until `quit()`; returns at once when that was called before.
    void run();
    /// Ends `run()` after the current callback.
    void quit();

private:
    struct Schedule;

    std::shared_ptr<Schedule> schedule_;
    GMainLoopHandle loop_;
    bool quitBeforeRun_ = false;
};

}  // namespace thermopix
