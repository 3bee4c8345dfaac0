#pragma once

#include <cstdint>
#include <string>

#include "system/StandardOutput.h"

namespace thermopix::WebAssetExport {

/// Writes "glyphs.json" and the sample pictures into a directory, which is made if need be; 0, or 1 on failure.
[[nodiscard]] std::int32_t run(const std::string& directory, StandardOutput& output);

}  // namespace thermopix::WebAssetExport
