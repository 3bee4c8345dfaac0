#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "platform/linux/sensors/SensorChannel.h"
#include "system/MonotonicClock.h"

namespace thermopix {

/// A clock that a test sets, read by any thread. Copies show the same time, also to a read that outlives its test.
class TestClock final : public MonotonicClock {
public:
    [[nodiscard]] std::chrono::nanoseconds now() const override { return std::chrono::nanoseconds(*nanoseconds_); }
    void advance(std::chrono::nanoseconds by) { *nanoseconds_ += by.count(); }

private:
    std::shared_ptr<std::atomic<std::int64_t>> nanoseconds_ = std::make_shared<std::atomic<std::int64_t>>(0);
};

/// A sensor whose reads take as long as a test says, on its clock, and that can be held in the middle of one.
class HeldChannel final : public SensorChannel {
public:
    explicit HeldChannel(TestClock clock, double celsius = 50) : clock_(std::move(clock)), celsius_(celsius) {}

    std::optional<double> read() override {
        std::unique_lock lock(mutex_);
        readers_.push_back(std::this_thread::get_id());
        changed_.notify_all();
        changed_.wait(lock, [this] { return !isHeld_; });
        clock_.advance(takes_);
        return celsius_;
    }

    [[nodiscard]] bool isGone() const override { return isGone_; }

    /// The device is there no more.
    void leave() { isGone_ = true; }
    void hold() { set(isHeld_, true); }
    void release() { set(isHeld_, false); }
    void take(std::chrono::nanoseconds time) { set(takes_, time); }
    void answer(std::optional<double> celsius) { set(celsius_, celsius); }

    /// Blocks until so many reads have begun.
    void awaitReads(std::size_t count) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return readers_.size() >= count; });
    }

    /// The threads that read, in order.
    [[nodiscard]] std::vector<std::thread::id> readers() {
        const std::lock_guard lock(mutex_);
        return readers_;
    }

private:
    template <typename Value>
    void set(Value& member, Value value) {
        const std::lock_guard lock(mutex_);
        member = value;
        changed_.notify_all();
    }

    TestClock clock_;
    bool isGone_ = false;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isHeld_ = false;
    std::chrono::nanoseconds takes_{};
    std::optional<double> celsius_;
    std::vector<std::thread::id> readers_;
};

}  // namespace thermopix
