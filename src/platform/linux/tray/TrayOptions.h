#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace thermopix {

struct TrayOptions {
    /// What the tray knows the item by, and its title until there is a reading.
    std::string id = "thermopix";
    std::string title = "Thermopix";
    /// Where `desktop.conf` is.
    std::filesystem::path settingsFolder;
    std::filesystem::path processRoot = "/proc";
    /// Shows the menu at a place on the screen, for trays that cannot show it themselves. Without it, a log line.
    std::function<void(std::int32_t x, std::int32_t y)> showPopup;
    /// Takes the token with which the next window may come to the front.
    std::function<void(std::string_view token)> useActivationToken;
};

}  // namespace thermopix
