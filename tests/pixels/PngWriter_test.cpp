#include "pixels/PngWriter.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cstring>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace thermopix {
namespace {

/// The chunks of a PNG file by name, its image data joined.
std::map<std::string, std::string> chunks(const std::string& file) {
    std::map<std::string, std::string> found;
    std::size_t position = 8;
    while (position + 12 <= file.size()) {
        std::uint32_t length = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            length = length << 8U | static_cast<std::uint8_t>(file[position + i]);
        }
        found[file.substr(position + 4, 4)] += file.substr(position + 8, length);
        position += 12 + length;
    }
    return found;
}

RgbaImage decoded(const std::string& file) {
    png_image reader{};
    reader.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_memory(&reader, file.data(), file.size()), 0) << reader.message;
    reader.format = PNG_FORMAT_RGBA;
    RgbaImage image{reader.width, reader.height, std::vector<RgbaColor>(std::size_t{reader.width} * reader.height)};
    EXPECT_NE(png_image_finish_read(&reader, nullptr, image.pixels.data(), 0, nullptr), 0) << reader.message;
    return image;
}

RgbaImage sample() {
    return {3, 2, {{255, 0, 0, 255}, {0, 255, 0, 31}, {1, 2, 3, 0}, {9, 8, 7, 128}, {0, 0, 0, 255}, {50, 60, 70, 1}}};
}

TEST(PngWriter, KeepsEveryPixelAsItIs) {
    const auto file = pngData(sample(), 1);
    ASSERT_TRUE(file.has_value());
    EXPECT_EQ(decoded(*file), sample());
}

TEST(PngWriter, WritesEightBitsOfRedGreenBlueAndAlpha) {
    const auto file = pngData(sample(), 1);
    ASSERT_TRUE(file.has_value());
    EXPECT_EQ(file->substr(0, 8), "\x89PNG\r\n\x1a\n");
    EXPECT_EQ(chunks(*file)["IHDR"], std::string("\0\0\0\3\0\0\0\2\x08\x06\0\0\0", 13));
}

TEST(PngWriter, SaysTheDensityInPixelsPerMetre) {
    const auto density = [](std::int64_t scale) { return chunks(pngData(sample(), scale).value_or(""))["pHYs"]; };
    EXPECT_EQ(density(1), std::string("\0\0\x0b\x13\0\0\x0b\x13\1", 9)) << "2835";
    EXPECT_EQ(density(2), std::string("\0\0\x16\x25\0\0\x16\x25\1", 9)) << "5669";
}

TEST(PngWriter, GivesTheSameBytesForTheSameImage) {
    const auto file = pngData(sample(), 2);
    ASSERT_TRUE(file.has_value());
    EXPECT_EQ(pngData(sample(), 2), file);
    std::string names;
    for (const auto& [name, bytes] : chunks(*file)) {
        names += name + " ";
    }
    EXPECT_EQ(names, "IDAT IEND IHDR pHYs ") << "no time stamp, no text";
}

TEST(PngWriter, DeclinesWhatAPngCannotHold) {
    EXPECT_EQ(pngData(RgbaImage(), 1), std::nullopt);
    EXPECT_EQ(pngData({0, 7, {}}, 1), std::nullopt);
    EXPECT_EQ(pngData(sample(), 0), std::nullopt);
    EXPECT_EQ(pngData(sample(), -2), std::nullopt);
    EXPECT_EQ(pngData(sample(), std::numeric_limits<std::int64_t>::max()), std::nullopt);
    // The encoder's own limit of a million columns, which it reports by a jump.
    const RgbaImage tooWide{1'000'001, 1, std::vector<RgbaColor>(1'000'001)};
    EXPECT_EQ(pngData(tooWide, 1), std::nullopt);
}

TEST(PngWriterDeathTest, EndsTheProcessWhenPixelsAndSizeDisagree) {
    EXPECT_DEATH((void)pngData({2, 2, std::vector<RgbaColor>(3)}, 1), "width × height");
}

}  // namespace
}  // namespace thermopix
