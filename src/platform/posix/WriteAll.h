#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <cstddef>
#include <functional>
#include <string_view>
#include <system_error>

namespace thermopix {

/// As `write(2)`; replaced where a test plays a full disk.
using WriteFunction = std::function<ssize_t(int descriptor, const void* bytes, std::size_t count)>;

/// Writes all bytes, through interruptions, short writes and a descriptor that is not ready yet. On an error some
/// of the bytes may have been written.
[[nodiscard]] std::error_code writeAll(int descriptor, std::string_view bytes, const WriteFunction& write = ::write);

}  // namespace thermopix
