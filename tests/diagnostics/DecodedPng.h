#pragma once

#include <png.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "pixels/Rgba.h"

namespace thermopix {

/// The pixels of a PNG file; none when it cannot be decoded.
[[nodiscard]] inline std::optional<RgbaImage> decodedPng(const std::string& bytes) {
    png_image file{};
    file.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&file, bytes.data(), bytes.size()) == 0) {
        return std::nullopt;
    }
    file.format = PNG_FORMAT_RGBA;
    RgbaImage image{file.width, file.height, std::vector<RgbaColor>(std::size_t{file.width} * file.height)};
    static_assert(sizeof(RgbaColor) == 4);
    if (png_image_finish_read(&file, nullptr, image.pixels.data(), 0, nullptr) == 0) {
        return std::nullopt;
    }
    return image;
}

[[nodiscard]] inline std::uint32_t bigEndian(const std::string& bytes, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8U | static_cast<std::uint8_t>(bytes.at(offset + i));
    }
    return value;
}

/// The data of the first chunk with this name; none when the file has no such chunk.
[[nodiscard]] inline std::optional<std::string> pngChunk(const std::string& bytes, const std::string& name) {
    for (std::size_t offset = 8; offset + 12 <= bytes.size();) {
        const auto length = bigEndian(bytes, offset);
        if (bytes.compare(offset + 4, 4, name) == 0) {
            return bytes.substr(offset + 8, length);
        }
        offset += 12 + length;
    }
    return std::nullopt;
}

}  // namespace thermopix
