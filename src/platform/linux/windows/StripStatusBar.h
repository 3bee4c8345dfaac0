#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/windows/WindowClient.h"
#include "shell/StatusItem.h"
#include "system/MainLoop.h"
#include "system/UserDefaults.h"

namespace thermopix {

/// The floating strip as a status bar with room for one item: a small window above the others, in a process of its
/// own, which comes back when that ends. It stays where the user has moved it. Main thread.
class StripStatusBar final : public StatusBar {
public:
    static constexpr std::string_view positionKey = "strip.position";
    /// How long an ended strip stays away; doubled each time that it did not live for a minute.
    static constexpr std::chrono::seconds firstPause{1};
    static constexpr std::chrono::seconds longestPause{300};

    /// `client` and `mainLoop` outlive the bar, which outlives its item.
    StripStatusBar(WindowClient& client, MainLoop& mainLoop, std::shared_ptr<UserDefaults> defaults);

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override;

private:
    WindowClient& client_;
    MainLoop& mainLoop_;
    std::shared_ptr<UserDefaults> defaults_;
};

/// The position as the settings hold it: both coordinates in decimal with a space between them; none for anything else.
[[nodiscard]] std::optional<ScreenPoint> stripPosition(std::string_view text);
[[nodiscard]] std::string stripPositionText(ScreenPoint position);

}  // namespace thermopix
