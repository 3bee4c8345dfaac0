#pragma once

#include <functional>
#include <optional>
#include <string>

namespace thermopix {

/// What the user is told outside of any window, as plain text.
struct UserNotice {
    struct Button {
        std::string label;
        /// Opened by the program that the desktop has for its scheme; where there is none, there is no button.
        std::string address;
        friend bool operator==(const Button&, const Button&) = default;
    };

    std::string title;
    std::string body;
    std::optional<Button> button = std::nullopt;
    /// An answer has been read when it was seen; anything else stays until it is read.
    bool isAnswer = false;

    friend bool operator==(const UserNotice&, const UserNotice&) = default;
};

/// Tells the user about one subject. Main thread.
class UserNotices {
public:
    /// Hears whether the desktop took the notice.
    using Shown = std::function<void(bool)>;

    virtual ~UserNotices() = default;

    /// Shows the notice in place of an earlier one of the subject. `shown` may be empty; it is called at once or later,
    /// and never when another notice comes first.
    virtual void show(const UserNotice& notice, Shown shown) = 0;
};

}  // namespace thermopix
