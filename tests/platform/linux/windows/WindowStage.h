#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fakes/ManualMainLoop.h"
#include "fakes/RecordingLog.h"
#include "messages/WindowEvent.h"
#include "messages/WindowRequest.h"
#include "platform/linux/tray/TemporaryFolder.h"
#include "platform/linux/windows/WindowProcess.h"

namespace thermopix {

/// One run of the stand-in for the window process, as its test sees it. Gone with the object at the latest.
class WindowStandIn {
public:
    explicit WindowStandIn(int descriptor) : descriptor_(descriptor) {}
    ~WindowStandIn();
    WindowStandIn(const WindowStandIn&) = delete;
    WindowStandIn& operator=(const WindowStandIn&) = delete;

    /// Reads what it tells and passes on the commands, without waiting.
    void poll();

    void command(const std::string& line);
    void say(const WindowEvent& event);
    void sayHello() { say(Hello{}); }

    [[nodiscard]] pid_t pid() const;
    /// No longer running and reaped.
    [[nodiscard]] bool isReaped() const;
    /// Whether it has told this line.
    [[nodiscard]] bool hasTold(const std::string& line) const;
    [[nodiscard]] std::string toldAfter(const std::string& prefix) const;

    /// Every request, in order.
    std::vector<WindowRequest> requests;

private:
    int descriptor_;
    std::string text_;
    std::string commands_;
    std::vector<std::string> told_;
};

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
    [[nodiscard]] bool untilRequests(const std::shared_ptr<WindowStandIn>& run, std::size_t count);
    /// Waits until everything that the program has sent so far was read.
    [[nodiscard]] bool settle(const std::shared_ptr<WindowStandIn>& run);

    [[nodiscard]] WindowProcess::Options options() const;

    TemporaryFolder folder;
    ManualMainLoop loop;
    RecordingLog log;
    /// Empty where it is not installed.
    std::filesystem::path executable;
    std::unique_ptr<WindowProcess> process;
    std::vector<WindowEvent> events;
    std::vector<std::string> ends;

private:
    void poll();

    int listener_ = -1;
    std::string address_;
    std::vector<std::shared_ptr<WindowStandIn>> runs_;
    std::size_t taken_ = 0;
    Subscription events_;
    Subscription ends_;
};

}  // namespace thermopix
