#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "system/MainLoop.h"

namespace thermopix {

/// A main loop whose time moves only by `advance`. Timers fire at their deadlines, in the order of their deadlines
/// and then of their making. Work that is posted is no timer in what is recorded.
class ManualMainLoop final : public MainLoop {
public:
    /// What was asked for, kept after the timer has ended.
    struct Scheduled {
        Duration at;
        Duration first;
        /// Zero for a one-shot timer.
        Duration period;
        Duration leeway;
        friend bool operator==(const Scheduled&, const Scheduled&) = default;
    };

    Subscription oneShot(Duration delay, Work work) override {
        return add({now_, delay, Duration::zero(), Duration::zero()}, std::move(work));
    }

    Subscription repeating(Duration first, Duration period, Duration leeway, Work work) override {
        return add({now_, first, period, leeway}, std::move(work));
    }

    [[nodiscard]] Duration now() const override { return now_; }

    /// Runs what was posted and what is due now, without moving the time.
    void runPending() { advance(Duration::zero()); }

    /// Moves the time on, running everything that falls due on the way.
    void advance(Duration duration) {
        const Duration end = now_ + duration;
        for (;;) {
            const auto timer = nextTimer();
            if (timer == nullptr || timer->deadline > end) {
                break;
            }
            now_ = std::max(now_, timer->deadline);
            ++firings;
            if (timer->period == Duration::zero()) {
                timer->active = false;
            } else {
                timer->deadline += timer->period;
            }
            const auto work = timer->work;
            work();
        }
        now_ = end;
    }

    [[nodiscard]] std::size_t activeTimerCount() const {
        return static_cast<std::size_t>(std::count_if(
            timers_.begin(), timers_.end(), [](const auto& timer) { return timer->active && !timer->isPosted; }));
    }
    [[nodiscard]] bool hasPostedWork() const {
        return std::any_of(timers_.begin(), timers_.end(),
                           [](const auto& timer) { return timer->active && timer->isPosted; });
    }

    /// Every timer ever made, in order.
    std::vector<Scheduled> scheduled;
    /// How many timer expirations have run.
    std::int64_t firings = 0;

private:
    struct Timer {
        Duration deadline;
        Duration period;
        Work work;
        bool isPosted;
        bool active = true;
    };

    Subscription add(Scheduled request, Work work) {
        const bool isPosted = request.first + request.period == Duration::zero();
        if (!isPosted) {
            scheduled.push_back(request);
        }
        auto timer = std::make_shared<Timer>(Timer{now_ + request.first, request.period, std::move(work), isPosted});
        timers_.push_back(timer);
        return Subscription([weak = std::weak_ptr(timer)] {
            if (const auto held = weak.lock()) {
                held->active = false;
            }
        });
    }

    [[nodiscard]] std::shared_ptr<Timer> nextTimer() {
        std::erase_if(timers_, [](const auto& timer) { return !timer->active; });
        const auto next = std::min_element(timers_.begin(), timers_.end(),
                                           [](const auto& a, const auto& b) { return a->deadline < b->deadline; });
        return next == timers_.end() ? nullptr : *next;
    }

    Duration now_ = Duration::zero();
    std::vector<std::shared_ptr<Timer>> timers_;
};

}  // namespace thermopix
