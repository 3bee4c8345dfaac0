#pragma once

#include <vector>

#include "system/UserNotices.h"

namespace thermopix {

/// Keeps every notice.
class RecordingNotices final : public UserNotices {
public:
    void show(const UserNotice& notice, Shown taken) override {
        shown.push_back(notice);
        if (taken) {
            taken(true);
        }
    }

    std::vector<UserNotice> shown;
};

}  // namespace thermopix
