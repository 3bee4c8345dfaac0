#pragma once

#include "system/SystemLog.h"

namespace thermopix {

/// The journal, through GLib's structured log; any thread. Without a journal messages are dropped.
class JournalLog final : public SystemLog {
public:
    void write(std::string_view category, std::string_view message) override;
};

}  // namespace thermopix
