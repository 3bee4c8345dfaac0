#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

#include "system/DiagnosticLog.h"

namespace thermopix {

/// Passes a message that comes again and again on once; how often it was repeated is said when another one follows, and
/// at the end. Any thread.
class RepetitionLog final : public DiagnosticLog {
public:
    /// `log` outlives this one.
    explicit RepetitionLog(DiagnosticLog& log) : log_(log) {}
    ~RepetitionLog() override { sayCount(); }
    RepetitionLog(const RepetitionLog&) = delete;
    RepetitionLog& operator=(const RepetitionLog&) = delete;

    void diag(std::string_view category, std::string_view message) override;

private:
    void sayCount();

    DiagnosticLog& log_;
    std::mutex mutex_;
    /// What was passed on last, and how often it has come since.
    std::string category_;
    std::string message_;
    std::int64_t repetitions_ = 0;
};

}  // namespace thermopix
