#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fakes/ManualMainLoop.h"
#include "fakes/RecordingLog.h"
#include "fakes/TemporaryFolder.h"
#include "messages/Fields.h"
#include "messages/WindowEvent.h"
#include "platform/linux/windows/WindowClient.h"
#include "platform/linux/windows/WindowStandIns.h"

namespace thermopix {

/// Where stand-ins for the window process perform: a window process under test, and hold of each run that it starts.
class WindowStage : public testing::Test {
protected:
    WindowStage();
    ~WindowStage() override;

    /// Serves program and stand-ins until the condition holds; time stands still.
    [[nodiscard]] bool until(const std::function<bool()>& condition);

    /// The next run that was started; null when none comes.
    [[nodiscard]] std::shared_ptr<WindowStandIn> nextRun();
    /// The same, and it has said hello.
    [[nodiscard]] std::shared_ptr<WindowStandIn> nextReadyRun();
    [[nodiscard]] bool untilEvents(std::size_t count) {
        return until([&] { return events.size() >= count; });
    }
    [[nodiscard]] bool untilEnd(std::size_t count = 1) {
        return until([&] { return ends.size() >= count; });
    }
    [[nodiscard]] bool untilRequests(const std::shared_ptr<WindowStandIn>& run, std::size_t count);
    /// What has been asked of it once there are so many requests.
    [[nodiscard]] std::vector<WindowRequest> received(const std::shared_ptr<WindowStandIn>& run, std::size_t count) {
        EXPECT_TRUE(untilRequests(run, count));
        return run->requests;
    }
    /// Waits until everything that the program has sent so far was read.
    [[nodiscard]] bool settle(const std::shared_ptr<WindowStandIn>& run);

    [[nodiscard]] WindowClient::Options options() const;
    void install(const std::filesystem::path& executable) const;
    void uninstall() const;
    [[nodiscard]] std::filesystem::path installed() const { return folder.path() / "windows"; }

    TemporaryFolder folder;
    ManualMainLoop loop;
    RecordingLog log;
    WindowStandIns standIns;
    std::unique_ptr<WindowClient> process;
    std::vector<WindowEvent> events;
    std::vector<std::string> ends;

private:
    Subscription events_;
    Subscription ends_;
};

}  // namespace thermopix
