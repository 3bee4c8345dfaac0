#pragma once

#include <string_view>

#include "system/DiagnosticLog.h"
#include "system/SystemLog.h"

namespace thermopix {

/// The program's diagnostic log: every message goes to the system's log and, as "[Thermopix/{category}] {message}",
/// to standard error. Any thread.
class Log final : public DiagnosticLog {
public:
    /// `systemLog` outlives the log.
    explicit Log(SystemLog& systemLog) : systemLog_(systemLog) {}

    void diag(std::string_view category, std::string_view message) override;

private:
    SystemLog& systemLog_;
};

}  // namespace thermopix
