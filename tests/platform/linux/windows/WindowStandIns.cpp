#include "platform/linux/windows/WindowStandIns.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string_view>
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

bool WindowStandIn::hasEnded() const {
    std::ifstream file("/proc/" + std::to_string(pid()) + "/stat");
    std::string status;
    std::getline(file, status);
    return status.empty() || status.find(") Z ") != std::string::npos;
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

WindowStandIns::WindowStandIns() : address_((folder_.path() / "stage").string()) {
    listener_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, address_.c_str(), sizeof(address.sun_path) - 1);
    if (::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
        ::listen(listener_, 16) != 0) {
        throw std::runtime_error("no stage");
    }
}

WindowStandIns::~WindowStandIns() {
    ::close(listener_);
    for (const auto& run : runs_) {
        EXPECT_TRUE(runUntil([&] { return run->hasEnded(); }));
    }
}

void WindowStandIns::poll() {
    for (int connected = 0; (connected = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
        runs_.push_back(std::make_shared<WindowStandIn>(connected));
    }
    for (const auto& run : runs_) {
        run->poll();
    }
}

std::shared_ptr<WindowStandIn> WindowStandIns::take(const std::string& platform) {
    const auto found = std::find_if(runs_.begin(), runs_.end(), [&](const auto& run) {
        return run->hasTold("platform " + platform) && std::find(taken_.begin(), taken_.end(), run) == taken_.end();
    });
    if (found == runs_.end()) {
        return nullptr;
    }
    taken_.push_back(*found);
    return *found;
}

}  // namespace thermopix
