#pragma once

#include <cstdint>
#include <vector>

#include "shell/StatusItem.h"
#include "tray/TrayHost.h"
#include "tray/TrayInk.h"

namespace thermopix {

/// Pixels as trays take them: 32 bits each, alpha, red, green, blue in this order of bytes, alpha not premultiplied,
/// row-major from the top left.
struct TrayPicture {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint8_t> argb;

    friend bool operator==(const TrayPicture&, const TrayPicture&) = default;
};

/// The part of the image that a tray shows: the readout or the digits, without a description.
[[nodiscard]] StatusImage trayArt(const StatusItemImage& image, TrayShape shape);

/// The art once for each size of the set, in whole pixels a cell and centred, so that no tray has to resample it. A
/// picture of 32 pixels or more is laid out as the double of one of half its size.
[[nodiscard]] std::vector<TrayPicture> trayPictures(const StatusImage& art, TrayPictureSet set, const TrayInk& ink);

}  // namespace thermopix
