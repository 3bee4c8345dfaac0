#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace thermopix {

/// How a capture went: the number of files written, or why there is none.
struct SensorCaptureResult {
    std::int64_t fileCount = 0;
    std::optional<std::string> error;
};

/// Copies what the sensors of this machine are read from into a folder that can stand in for the machine later.
class SensorCapture {
public:
    virtual ~SensorCapture() = default;

    /// Into a folder that is missing or empty. Serial numbers, addresses and host names are left out.
    [[nodiscard]] virtual SensorCaptureResult captureTo(const std::filesystem::path& folder) = 0;
};

}  // namespace thermopix
