#include "diagnostics/SensorCaptureMode.h"

#include <fmt/format.h>

namespace thermopix::SensorCaptureMode {

std::int32_t run(const std::string& directory, SensorCapture* capture, StandardOutput& output) {
    if (capture == nullptr) {
        output.line("this system's sensors cannot be captured");
        return 1;
    }
    const auto result = capture->captureTo(directory);
    if (result.error) {
        output.line(fmt::format("cannot capture to {}: {}", directory, *result.error));
        return 1;
    }
    output.line(fmt::format("captured {} files to {}; try it with THERMOPIX_SYSFS_ROOT={} thermopix --sensors",
                            result.fileCount, directory, directory));
    return 0;
}

}  // namespace thermopix::SensorCaptureMode
