// A window process without windows: it passes on what it reads, and does what its test tells it. Both go through a
// socket of the test's, as lines.
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

class Lines {
public:
    explicit Lines(int descriptor) : descriptor_(descriptor) {}

    [[nodiscard]] int descriptor() const { return descriptor_; }

    /// False at the end of the stream.
    template <typename Handler>
    bool serve(Handler handler) {
        std::array<char, 65536> chunk{};
        const ssize_t count = ::read(descriptor_, chunk.data(), chunk.size());
        if (count <= 0) {
            return false;
        }
        text_.append(chunk.data(), static_cast<std::size_t>(count));
        std::size_t start = 0;
        for (auto end = text_.find('\n'); end != std::string::npos; end = text_.find('\n', start)) {
            handler(text_.substr(start, end - start));
            start = end + 1;
        }
        text_.erase(0, start);
        return true;
    }

    void write(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t count = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (count < 0) {
                return;
            }
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
    }

private:
    int descriptor_;
    std::string text_;
};

int connectTo(const char* path) {
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path, sizeof(address.sun_path) - 1);
    if (::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        std::abort();
    }
    return descriptor;
}

// At once: a check for leaks would trace this process, and GLib does not reap a child that is killed while it is
// traced.
[[noreturn]] void end(int status) {
    ::_exit(status);
}

// What the program left open for this process.
std::string descriptors() {
    constexpr int enough = 1024;
    std::string numbers;
    for (int descriptor = 0; descriptor < enough; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) >= 0) {
            numbers += " " + std::to_string(descriptor);
        }
    }
    return numbers;
}

}  // namespace

int main(int argc, char** argv) {
    const char* control = std::getenv("WINDOW_STAND_IN");
    if (control == nullptr || argc != 3 || std::string_view(argv[1]) != "--socket") {
        return 64;
    }
    const std::string inherited = descriptors();
    const bool ignoresBrokenPipes = std::signal(SIGPIPE, SIG_DFL) == SIG_IGN;
    Lines program(std::atoi(argv[2]));
    Lines test(connectTo(control));
    const auto tell = [&](const std::string& line) { test.write(line + "\n"); };
    tell("pid " + std::to_string(::getpid()));
    tell("descriptors" + inherited);
    tell(std::string("SIGPIPE ") + (ignoresBrokenPipes ? "ignored" : "default"));
    const char* platform = std::getenv("QT_QPA_PLATFORM");
    tell(std::string("platform ") + (platform == nullptr ? "" : platform));

    bool isReading = true;
    bool hasProgram = true;
    bool isStubborn = false;
    while (true) {
        std::array<pollfd, 2> ready{
            {{test.descriptor(), POLLIN, 0}, {hasProgram && isReading ? program.descriptor() : -1, POLLIN, 0}}};
        if (::poll(ready.data(), ready.size(), -1) < 0) {
            return 65;
        }
        if (ready[1].revents != 0 && !program.serve([&](const std::string& line) { tell("read " + line); })) {
            hasProgram = false;
            if (!isStubborn) {
                end(0);
            }
        }
        if (ready[0].revents == 0) {
            continue;
        }
        const bool isWatched = test.serve([&](const std::string& line) {
            const std::string word = line.substr(0, line.find(' '));
            const std::string rest = word.size() < line.size() ? line.substr(word.size() + 1) : "";
            if (word == "say") {
                program.write(rest + "\n");
            } else if (word == "mumble") {
                program.write(rest);
            } else if (word == "flood") {
                program.write(std::string(std::stoul(rest), 'x'));
            } else if (word == "deafen") {
                isReading = false;
                tell("deaf");
            } else if (word == "listen") {
                isReading = true;
            } else if (word == "close") {
                hasProgram = false;
                ::close(program.descriptor());
            } else if (word == "stubborn") {
                isStubborn = true;
                tell("stubborn");
            } else if (word == "exit") {
                end(std::stoi(rest));
            } else if (word == "abort") {
                std::abort();
            }
        });
        if (!isWatched) {
            end(0);
        }
    }
}
