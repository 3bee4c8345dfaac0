#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "system/Platform.h"

namespace thermopix {

/// A program that this one has started. It is reaped on the main loop whenever it ends, even after this object, whose
/// end asks it to terminate. Main thread.
class ChildProcess {
public:
    /// The inherited descriptor's number there; standard streams are inherited too, and nothing else.
    static constexpr int inheritedDescriptor = 3;

    /// `arguments` without the program's own name. Null, and the reason in `error`, when it cannot be started.
    [[nodiscard]] static std::unique_ptr<ChildProcess> start(const std::filesystem::path& program,
                                                             const std::vector<std::string>& arguments,
                                                             const EnvironmentVariables& variables, int inherited,
                                                             std::error_code& error);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Called once with the status as of `waitpid(2)`; may end this object.
    std::function<void(int status)> onExit;

    [[nodiscard]] pid_t pid() const { return pid_; }

    /// Ends it at once.
    void kill() const;

private:
    struct Watch;

    explicit ChildProcess(pid_t pid);

    pid_t pid_;
    std::shared_ptr<Watch> watch_;
};

}  // namespace thermopix
