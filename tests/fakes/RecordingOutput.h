#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "system/StandardOutput.h"

namespace thermopix {

class RecordingOutput final : public StandardOutput {
public:
    void line(std::string_view text) override { lines.emplace_back(text); }
    [[nodiscard]] bool hasFailed() const override { return false; }

    [[nodiscard]] std::string text() const {
        std::string all;
        for (const auto& line : lines) {
            all += line + "\n";
        }
        return all;
    }

    std::vector<std::string> lines;
};

}  // namespace thermopix
