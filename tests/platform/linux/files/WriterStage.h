#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fakes/ManualMainLoop.h"
#include "fakes/RecordingLog.h"
#include "platform/linux/files/SettingsWriter.h"

namespace thermopix {

/// A door that another thread waits at until the test opens it; outlives the test for a thread that does.
class Gate {
public:
    void open() const {
        const std::lock_guard hold(state_->mutex);
        state_->isOpen = true;
        state_->changed.notify_all();
    }

    void pass() const {
        std::unique_lock hold(state_->mutex);
        ++state_->waiting;
        state_->changed.notify_all();
        state_->changed.wait(hold, [this] { return state_->isOpen; });
    }

    /// Until another thread has come to the gate.
    void awaitVisitor() const {
        std::unique_lock hold(state_->mutex);
        EXPECT_TRUE(state_->changed.wait_for(hold, std::chrono::minutes(1), [this] { return state_->waiting > 0; }));
    }

private:
    struct State {
        std::mutex mutex;
        std::condition_variable changed;
        bool isOpen = false;
        int waiting = 0;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

/// The main thread that a settings writer answers to: it hears of an attempt when the test lets it.
class WriterStage {
public:
    /// With patience enough for a busy machine, so that what a writer has been given is stored when it has gone.
    [[nodiscard]] SettingsWriter::Services services() {
        return {.log = log,
                .mainLoop = [this]() -> MainLoop& { return loop; },
                .makeWakeUp =
                    [this](std::function<void()> work) {
                        hear_ = std::move(work);
                        return WakeUp{[raised = raised_] {
                                          const std::lock_guard hold(raised->mutex);
                                          ++raised->count;
                                          raised->changed.notify_all();
                                      },
                                      {}};
                    },
                .isSound = [](std::string_view /*name*/, std::string_view bytes) { return bytes != "damaged"; },
                .onTrouble = [this](const std::string& cause) { troubles.push_back(cause); },
                .endPatience = std::chrono::minutes(1)};
    }

    /// Waits for the end of one attempt to store a file, and lets the writer hear of it.
    void hear() {
        {
            std::unique_lock hold(raised_->mutex);
            ASSERT_TRUE(
                raised_->changed.wait_for(hold, std::chrono::minutes(1), [this] { return raised_->count > 0; }));
            --raised_->count;
        }
        hear_();
    }

    /// Whether an attempt has ended that was not heard of; one that is under way is none.
    [[nodiscard]] bool hasUnheard() const {
        const std::lock_guard hold(raised_->mutex);
        return raised_->count > 0;
    }

    RecordingLog log;
    ManualMainLoop loop;
    std::vector<std::string> troubles;

private:
    struct Raised {
        std::mutex mutex;
        std::condition_variable changed;
        int count = 0;
    };
    std::shared_ptr<Raised> raised_ = std::make_shared<Raised>();
    std::function<void()> hear_;
};

}  // namespace thermopix
