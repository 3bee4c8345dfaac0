#pragma once

#include <sys/types.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "fakes/TemporaryFolder.h"
#include "messages/Fields.h"
#include "messages/WindowEvent.h"
#include "messages/WindowRequest.h"

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
    [[nodiscard]] bool hasEnded() const;
    /// Ended, and no zombie either.
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

/// Takes hold of every run of the stand-in that finds `address` in its environment.
class WindowStandIns {
public:
    static constexpr const char* variable = "WINDOW_STAND_IN";
    static constexpr const char* executable = THERMOPIX_WINDOW_STAND_IN;

    WindowStandIns();
    /// Expects that all of them have ended, or are about to.
    ~WindowStandIns();
    WindowStandIns(const WindowStandIns&) = delete;
    WindowStandIns& operator=(const WindowStandIns&) = delete;

    [[nodiscard]] const std::string& address() const { return address_; }

    /// Serves them all, without waiting.
    void poll();

    /// Of those that have come up and were not taken before, the first with this platform; null for none.
    [[nodiscard]] std::shared_ptr<WindowStandIn> take(const std::string& platform = "");

    [[nodiscard]] std::size_t count() const { return runs_.size(); }

private:
    TemporaryFolder folder_;
    std::string address_;
    int listener_ = -1;
    std::vector<std::shared_ptr<WindowStandIn>> runs_;
    std::vector<std::shared_ptr<WindowStandIn>> taken_;
};

}  // namespace thermopix
