#include "platform/linux/windows/ChildProcess.h"

#include <fmt/core.h>
#include <glib.h>
#include <spawn.h>

#include <csignal>
#include <utility>

namespace thermopix {

namespace {

std::vector<char*> nullTerminated(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (auto& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

class SpawnSettings {
public:
    explicit SpawnSettings(int inherited) {
        posix_spawn_file_actions_init(&actions_);
        // Also clears the flag that would close it, when it has that number already.
        posix_spawn_file_actions_adddup2(&actions_, inherited, ChildProcess::inheritedDescriptor);

        // Ignored signals and blocked ones would be inherited.
        posix_spawnattr_init(&attributes_);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigaddset(&signals, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    ~SpawnSettings() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* actions() const { return &actions_; }
    [[nodiscard]] const posix_spawnattr_t* attributes() const { return &attributes_; }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

}  // namespace

/// What the main loop holds on to until the process has ended.
struct ChildProcess::Watch {
    /// Null when nobody wants to know any more.
    ChildProcess* child;

    void exited(int status) const {
        if (child != nullptr) {
            child->pid_ = -1;
            if (const auto handler = std::move(child->onExit)) {
                handler(status);
            }
        }
    }
};

std::unique_ptr<ChildProcess> ChildProcess::start(const std::filesystem::path& program,
                                                  const std::vector<std::string>& arguments,
                                                  const EnvironmentVariables& variables, int inherited,
                                                  std::error_code& error) {
    std::vector<std::string> words{program.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> settings;
    for (const auto& [name, value] : variables) {
        settings.push_back(fmt::format("{}={}", name, value));
    }
    const SpawnSettings spawn(inherited);
    pid_t pid = -1;
    const int failure = posix_spawn(&pid, program.c_str(), spawn.actions(), spawn.attributes(),
                                    nullTerminated(words).data(), nullTerminated(settings).data());
    if (failure != 0) {
        error = std::error_code(failure, std::generic_category());
        return nullptr;
    }
    return std::unique_ptr<ChildProcess>(new ChildProcess(pid));
}

ChildProcess::ChildProcess(pid_t pid) : pid_(pid), watch_(std::make_shared<Watch>(Watch{this})) {
    using Held = std::shared_ptr<Watch>;
    g_child_watch_add_full(
        G_PRIORITY_DEFAULT, pid,
        [](GPid, gint status, gpointer held) { Held(*static_cast<Held*>(held))->exited(status); }, new Held(watch_),
        [](gpointer held) { delete static_cast<Held*>(held); });
}

ChildProcess::~ChildProcess() {
    watch_->child = nullptr;
    if (pid_ > 0) {
        ::kill(pid_, SIGTERM);
    }
}

void ChildProcess::kill() const {
    if (pid_ > 0) {
        ::kill(pid_, SIGKILL);
    }
}

}  // namespace thermopix
