#pragma once

#include <cstdint>

#include "system/Platform.h"
#include "system/StandardOutput.h"

namespace thermopix::AcceptanceSelfTest {

/// Checks sensors and rendering on this machine, a line a check; 0 when all passed, else 1.
[[nodiscard]] std::int32_t run(Platform& platform, StandardOutput& output);

}  // namespace thermopix::AcceptanceSelfTest
