#include "platform/linux/windows/WindowStage.h"

#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "messages/MessageCodec.h"
#include "platform/linux/tray/TestBus.h"

namespace thermopix {

WindowStandIn::~WindowStandIn() {
    ::close(descriptor_);
}

void WindowStandIn::poll() {
    const ssize_t sent = ::send(descriptor_, commands_.data(), commands_.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    commands_.erase(0, sent > 0 ? static_cast<std::size_t>(sent) : 0);
    std::array<char, 65536> chunk{};
    for (ssize_t count = 0; (count = ::recv(descriptor_, chunk.data(), chunk.size(), MSG_DONTWAIT)) > 0;) {
        text_.append(chunk.data(), static_cast<std::size_t>(count));
    }
    std::size_t start = 0;
    for (auto end = text_.find('\n'); end != std::string::npos; end = text_.find('\n', start)) {
        std::string line = text_.substr(start, end - start);
        start = end + 1;
        constexpr std::string_view read = "read ";
        if (line.rfind(read, 0) == 0) {
            const auto request = MessageCodec::request(line.substr(read.size()));
            ASSERT_TRUE(request) << line;
            requests.push_back(*request);
        } else {
            told_.push_back(std::move(line));
        }
    }
    text_.erase(0, start);
}

void WindowStandIn::command(const std::string& line) {
    commands_ += line + "\n";
    poll();
}

void WindowStandIn::say(const WindowEvent& event) {
    command("say " + MessageCodec::line(event));
}

pid_t WindowStandIn::pid() const {
    return static_cast<pid_t>(std::stol(toldAfter("pid ")));
}

bool WindowStandIn::isReaped() const {
    // A zombie would still take signals.
    return ::kill(pid(), 0) != 0;
}

bool WindowStandIn::hasTold(const std::string& line) const {
    return std::find(told_.begin(), told_.end(), line) != told_.end();
}

std::string WindowStandIn::toldAfter(const std::string& prefix) const {
    for (const auto& line : told_) {
        if (line.rfind(prefix, 0) == 0) {
            return line.substr(prefix.size());
        }
    }
    return {};
}

WindowStage::WindowStage() : executable(THERMOPIX_WINDOW_STAND_IN), address_((folder.path() / "stage").string()) {
    listener_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, address_.c_str(), sizeof(address.sun_path) - 1);
    if (::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
        ::listen(listener_, 16) != 0) {
        throw std::runtime_error("no stage");
    }
    process = std::make_unique<WindowProcess>(options(), loop, log);
    events_ = process->onEvent([this](const WindowEvent& event) { events.push_back(event); });
    ends_ = process->onEnd([this](const WindowProcessEnd& end) { ends.push_back(end.failure); });
}

WindowStage::~WindowStage() {
    process.reset();
    ::close(listener_);
    for (const auto& run : runs_) {
        EXPECT_TRUE(runUntil([&] { return run->isReaped(); }));
    }
}

WindowProcess::Options WindowStage::options() const {
    return {.executable =
                [this] { return executable.empty() ? std::nullopt : std::optional<std::filesystem::path>(executable); },
            .variables = {{"DISPLAY", ":7"}, {"WINDOW_STAND_IN", address_}}};
}

void WindowStage::poll() {
    const int connected = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (connected >= 0) {
        runs_.push_back(std::make_shared<WindowStandIn>(connected));
    }
    for (const auto& run : runs_) {
        run->poll();
    }
    loop.runPending();
}

bool WindowStage::until(const std::function<bool()>& condition) {
    return runUntil([&] {
        poll();
        return condition();
    });
}

std::shared_ptr<WindowStandIn> WindowStage::nextRun() {
    const bool came = until([&] { return runs_.size() > taken_ && !runs_[taken_]->toldAfter("platform").empty(); });
    EXPECT_TRUE(came) << "no window process was started";
    return came ? runs_[taken_++] : nullptr;
}

std::shared_ptr<WindowStandIn> WindowStage::nextReadyRun() {
    auto run = nextRun();
    if (run) {
        run->sayHello();
    }
    return run;
}

bool WindowStage::untilRequests(const std::shared_ptr<WindowStandIn>& run, std::size_t count) {
    const bool came = until([&] { return run->requests.size() >= count; });
    EXPECT_EQ(run->requests.size(), count);
    return came && run->requests.size() == count;
}

bool WindowStage::settle(const std::shared_ptr<WindowStandIn>& run) {
    // Requests are read in order, and this one means nothing to the tests.
    const WindowRequest mark = UseActivationToken{"mark " + std::to_string(run->requests.size())};
    process->send(mark);
    const bool came = until([&] { return !run->requests.empty() && run->requests.back() == mark; });
    if (came) {
        run->requests.pop_back();
    }
    return came;
}

}  // namespace thermopix
