#pragma once

#include <sys/types.h>

#include <array>
#include <chrono>
#include <map>
#include <string>
#include <vector>

#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

/// The real program as a child process, with an environment of the test's own: nothing is inherited but PATH.
/// Killed when the object goes.
class Program {
public:
    using Environment = std::map<std::string, std::string>;

    struct Result {
        int status = -1;
        std::string output;
        std::string errors;
    };

    /// Starts it with standard output and error on pipes, unless the shell's `redirections` say otherwise.
    Program(const std::vector<std::string>& arguments, const Environment& environment,
            const std::string& redirections = {});
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    [[nodiscard]] pid_t pid() const;

    /// Collects output until it holds `text`; false when the program ends or the patience is over before.
    [[nodiscard]] bool waitForOutput(const std::string& text) { return waitFor(result_.output, text); }
    [[nodiscard]] bool waitForErrors(const std::string& text) { return waitFor(result_.errors, text); }

    void signal(int number) const { g_subprocess_send_signal(process_.get(), number); }

    /// Whether the program has ended by itself; does not wait.
    [[nodiscard]] bool hasEnded() const { return g_subprocess_get_identifier(process_.get()) == nullptr; }

    /// Reads everything until the program ends by itself; a program that does not end is killed and has status -1.
    [[nodiscard]] Result finish();

    /// Runs it to its end.
    [[nodiscard]] static Result run(const std::vector<std::string>& arguments, const Environment& environment,
                                    const std::string& redirections = {});

    [[nodiscard]] const std::string& output() const { return result_.output; }
    [[nodiscard]] const std::string& errors() const { return result_.errors; }

private:
    /// Waits for more output of either kind; false when both have ended or the deadline has passed.
    bool collect(std::chrono::steady_clock::time_point deadline);
    [[nodiscard]] bool waitFor(const std::string& collected, const std::string& text);

    GObjectHandle<GSubprocess> process_;
    /// Of output and errors; negative after their end.
    std::array<int, 2> pipes_{};
    Result result_;
};

}  // namespace thermopix
