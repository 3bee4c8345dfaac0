#pragma once

#include <chrono>
#include <functional>

#include "system/MainLoop.h"

namespace thermopix {

/// The eyes of the pets, wherever they are drawn: in a fixed rhythm they close for a moment. Main thread.
class Blinking {
public:
    static constexpr std::chrono::milliseconds period{5500};
    /// Only lets the system join wake-ups.
    static constexpr std::chrono::milliseconds leeway{400};
    static constexpr std::chrono::milliseconds closed{160};

    /// `onChange` is called after the eyes have closed or opened by themselves. `mainLoop` outlives this.
    Blinking(MainLoop& mainLoop, std::function<void()> onChange);

    /// Opens the eyes; they close a period from now.
    void start();
    /// Opens the eyes for good.
    void stop();

    [[nodiscard]] bool areEyesClosed() const { return areEyesClosed_; }

private:
    void setEyesClosed(bool areClosed);

    MainLoop& mainLoop_;
    std::function<void()> onChange_;
    bool areEyesClosed_ = false;
    Subscription closing_;
    Subscription opening_;
};

}  // namespace thermopix
