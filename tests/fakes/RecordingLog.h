#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "system/DiagnosticLog.h"

namespace thermopix {

/// Keeps every message as "category: message".
class RecordingLog final : public DiagnosticLog {
public:
    void diag(std::string_view category, std::string_view message) override {
        lines.push_back(std::string(category) + ": " + std::string(message));
    }

    std::vector<std::string> lines;
};

}  // namespace thermopix
