#include "platform/linux/tray/TrayPictureCache.h"

#include <gtest/gtest.h>

#include "pixels/PixelRasterizer.h"

namespace thermopix {
namespace {

constexpr TrayInk white{{255, 255, 255}, {}};
constexpr TrayInk black{{0, 0, 0}, {}};

StatusImage digits(std::int64_t value) {
    Display display;
    display.value = value;
    return trayArt({StatusImage{}, PixelRasterizer::digitsBitmap(display)}, TrayShape::square);
}

TEST(TrayPictureCache, TheSameQuestionHasTheSameAnswer) {
    TrayPictureCache cache;
    const auto first = cache.pictures(digits(71), TrayPictureSet::square, white);
    const auto second = cache.pictures(digits(72), TrayPictureSet::square, white);
    EXPECT_NE(first, second);
    EXPECT_EQ(cache.pictures(digits(71), TrayPictureSet::square, white), first);
    EXPECT_EQ(cache.pictures(digits(72), TrayPictureSet::square, white), second);
}

TEST(TrayPictureCache, InkAndSizesArePartOfTheQuestion) {
    TrayPictureCache cache;
    const auto first = cache.pictures(digits(71), TrayPictureSet::square, white);
    EXPECT_NE(cache.pictures(digits(71), TrayPictureSet::square, black), first);
    EXPECT_NE(cache.pictures(digits(71), TrayPictureSet::xfcePanel, white), first);
}

TEST(TrayPictureCache, ForgetsWhatWasNotAskedForOfLate) {
    TrayPictureCache cache;
    const auto kept = cache.pictures(digits(10), TrayPictureSet::square, white);
    const auto forgotten = cache.pictures(digits(11), TrayPictureSet::square, white);
    for (std::int64_t value = 12; value < 10 + static_cast<std::int64_t>(TrayPictureCache::capacity) + 1; ++value) {
        EXPECT_EQ(cache.pictures(digits(10), TrayPictureSet::square, white), kept);
        static_cast<void>(cache.pictures(digits(value), TrayPictureSet::square, white));
    }
    EXPECT_EQ(cache.pictures(digits(10), TrayPictureSet::square, white), kept);
    EXPECT_NE(cache.pictures(digits(11), TrayPictureSet::square, white), forgotten);
}

TEST(TrayPictureCache, CarriesTheWholePictures) {
    TrayPictureCache cache;
    const auto value = cache.pictures(digits(71), TrayPictureSet::square, white);
    const auto pictures = trayPictures(digits(71), TrayPictureSet::square, white);
    ASSERT_EQ(g_variant_n_children(value.get()), pictures.size());
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        gint32 width = 0;
        gint32 height = 0;
        GVariant* bytes = nullptr;
        g_variant_get_child(value.get(), i, "(ii@ay)", &width, &height, &bytes);
        const GVariantHandle owned(bytes);
        gsize size = 0;
        const auto* data = static_cast<const std::uint8_t*>(g_variant_get_fixed_array(bytes, &size, 1));
        EXPECT_EQ((TrayPicture{width, height, {data, data + size}}), pictures[i]);
    }
}

}  // namespace
}  // namespace thermopix
