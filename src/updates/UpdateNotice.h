#pragma once

#include <optional>
#include <string>

#include "updates/UpdateVerdict.h"

namespace thermopix {

/// Where new versions of this copy come from.
enum class UpdateOrigin { feed, packageManager, elsewhere };

/// What the user is told about updates, as plain text.
struct UpdateNotice {
    struct Button {
        std::string label;
        /// Fit for `isPageAddress`.
        std::string page;
        friend bool operator==(const Button&, const Button&) = default;
    };

    std::string title;
    std::string body;
    std::optional<Button> button = std::nullopt;
    bool isCritical = false;
    /// News stay until they are read; an answer has been read when it was seen.
    bool isNews = false;

    friend bool operator==(const UpdateNotice&, const UpdateNotice&) = default;
};

[[nodiscard]] UpdateNotice noticeOf(const UpdateVerdict& verdict, const std::string& ownVersion);

/// The answer of a copy that does not look for updates itself.
[[nodiscard]] UpdateNotice noticeOfOrigin(UpdateOrigin origin);

}  // namespace thermopix
