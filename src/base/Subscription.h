#pragma once

#include <functional>
#include <utility>

namespace thermopix {

/// Keeps a registration (an observer, a timer) alive; ends it when destroyed. Movable, may be dropped inside the
/// callback that it belongs to, and may outlive what it was registered with. Used on the thread that made it.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> onEnd) : end_(std::move(onEnd)) {}
    Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            auto previous = std::exchange(end_, std::exchange(other.end_, nullptr));
            if (previous) {
                previous();
            }
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { cancel(); }

    /// Ends the registration now; later calls do nothing.
    void cancel() {
        if (auto end = std::exchange(end_, nullptr)) {
            end();
        }
    }

    [[nodiscard]] bool isActive() const { return static_cast<bool>(end_); }

private:
    std::function<void()> end_;
};

}  // namespace thermopix
