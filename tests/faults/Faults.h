#pragma once

#include <fcntl.h>
#include <sys/stat.h>

#include <string>
#include <string_view>

#include "fakes/TemporaryFolder.h"
#include "platform/linux/files/Descriptor.h"
#include "program/Program.h"

namespace thermopix {

/// What goes wrong in a program that is started with `environment()`: the rules of the injector, and its gate.
class Faults {
public:
    Faults() { mkfifo(folder_.path("gate").c_str(), 0600); }

    [[nodiscard]] Program::Environment environment() const {
        return {{"LD_PRELOAD", THERMOPIX_INJECTOR}, {"THERMOPIX_FAULTS", folder_.path().string()}};
    }

    /// From now on these rules hold.
    void set(std::string_view rules) const {
        folder_.write("rules.new", rules);
        std::filesystem::rename(folder_.path("rules.new"), folder_.path("rules"));
    }

    /// Whether a call to this path is held, or was.
    [[nodiscard]] bool hasHeld(std::string_view call, std::string_view pathEnd) const {
        const std::string held = folder_.read("held");
        return held.find(std::string(pathEnd) + "\n") != std::string::npos &&
               held.find(std::string(call) + " ") != std::string::npos;
    }

    /// Lets every held call go on, and those to come.
    void openGate() { gate_ = Descriptor(::open(folder_.path("gate").c_str(), O_RDWR | O_CLOEXEC)); }

private:
    TemporaryFolder folder_;
    Descriptor gate_{-1};
};

}  // namespace thermopix
