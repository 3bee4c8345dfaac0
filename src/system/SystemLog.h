#pragma once

#include <string_view>

namespace thermopix {

/// The system's own log (journal, unified log), under the program's identifier; any thread. Where there is none,
/// the message is dropped.
class SystemLog {
public:
    virtual ~SystemLog() = default;
    virtual void write(std::string_view category, std::string_view message) = 0;
};

}  // namespace thermopix
