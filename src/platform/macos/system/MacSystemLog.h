#pragma once

#include "system/SystemLog.h"

namespace thermopix {

/// The unified log, at the default level; messages are not redacted. Any thread.
class MacSystemLog final : public SystemLog {
public:
    void write(std::string_view category, std::string_view message) override;
};

}  // namespace thermopix
