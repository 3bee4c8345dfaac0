#include "tray/TrayChoices.h"

#include <charconv>
#include <cstdint>

namespace thermopix {

std::optional<TrayInkChoice> trayInkChoice(std::string_view text) {
    if (const auto tone = fromRawValue<TrayInkTone>(text)) {
        return TrayInkChoice{*tone, std::nullopt};
    }
    constexpr std::size_t colorLength = 7;
    if (text.size() != colorLength || text.front() != '#') {
        return std::nullopt;
    }
    const auto* end = text.data() + text.size();
    std::uint32_t color = 0;
    const auto [rest, error] = std::from_chars(text.data() + 1, end, color, 16);
    if (error != std::errc() || rest != end) {
        return std::nullopt;
    }
    const auto byte = [color](unsigned shift) { return static_cast<std::uint8_t>(color >> shift); };
    return TrayInkChoice{TrayInkTone::automatic, RgbaColor{byte(16), byte(8), byte(0)}};
}

}  // namespace thermopix
