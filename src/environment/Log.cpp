#include "environment/Log.h"

#include <fmt/core.h>

#include <cstdio>
#include <string>

#include "base/Unicode.h"

namespace thermopix {

void Log::diag(std::string_view category, std::string_view message) {
    const std::string text = repairedUtf8(message);
    systemLog_.write(category, text);

    // Standard error has no buffer, so the line goes out whole, in one write.
    const std::string line = fmt::format("[Thermopix/{}] {}\n", category, text);
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace thermopix
