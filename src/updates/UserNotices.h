#pragma once

#include <functional>

#include "updates/UpdateNotice.h"

namespace thermopix {

/// Tells the user something that he did not see happen; the button opens its page. Main thread.
class UserNotices {
public:
    virtual ~UserNotices() = default;

    /// Shows the notice in place of an earlier one; `shown` hears, at once or later, whether the desktop
    /// took it; never when another notice comes first.
    virtual void show(const UpdateNotice& notice, std::function<void(bool)> shown) = 0;
};

}  // namespace thermopix
