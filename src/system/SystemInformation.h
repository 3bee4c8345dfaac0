#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace thermopix {

/// Facts about the machine, the system and the program's own bundle, asked each time; any thread. A text that is not
/// optional is `unknown` where nothing tells.
class SystemInformation {
public:
    static constexpr std::string_view unknown = "unknown";

    virtual ~SystemInformation() = default;

    [[nodiscard]] virtual std::string model() const = 0;
    [[nodiscard]] virtual std::string processor() const = 0;
    [[nodiscard]] virtual bool isVirtualMachine() const = 0;

    /// The operating system's name and version as a person reads it.
    [[nodiscard]] virtual std::string operatingSystemVersion() const = 0;

    /// The real path of the folder that holds the program.
    [[nodiscard]] virtual std::string bundlePath() const = 0;

    /// The program's version and build as its bundle has them; none when they are missing or no text.
    [[nodiscard]] virtual std::optional<std::string> shortVersion() const = 0;
    [[nodiscard]] virtual std::optional<std::string> build() const = 0;
};

}  // namespace thermopix
