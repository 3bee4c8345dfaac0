#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <cmath>
#include <string>

#include "pixels/PixelPet.h"
#include "pixels/Rgba.h"
#include "pixels/StatusImageRenderer.h"
#include "platform/qt/DesktopPalette.h"
#include "platform/qt/drawing/PixelArt.h"
#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/Symbols.h"
#include "platform/qt/drawing/TextLines.h"

namespace thermopix {
namespace {

StatusImage art(double cell, bool isRound = false) {
    StatusImage image;
    image.bitmap = PixelBitmap(3, 2, {Ink::full, Ink::none, Ink::full, Ink::none, Ink::full, Ink::ghost});
    image.cell = cell;
    image.isRound = isRound;
    image.inset = isRound ? cell / 8 : 0;
    return image;
}

QImage canvas(int width, int height, double scale) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    return image;
}

// A row of text per row of pixels: "#" opaque, ":" faint, "." nothing.
std::string rows(const QImage& image) {
    std::string text;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = qAlpha(image.pixel(x, y));
            text += alpha > 200 ? '#' : (alpha > 0 ? ':' : '.');
        }
        text += '\n';
    }
    return text;
}

std::string drawn(const StatusImage& image, int width, int height, double scale, QRectF rectangle) {
    QImage picture = canvas(width, height, scale);
    QPainter painter(&picture);
    PixelArt::draw(painter, rectangle, image, Qt::black);
    painter.end();
    return rows(picture);
}

TEST(PixelArtDrawing, DrawsWholeDevicePixelsAtEveryScaleAndWhereverItIsDrawn) {
    EXPECT_EQ(drawn(art(1), 3, 2, 1, {0, 0, 3, 2}),
              "#.#\n"
              ".#:\n");
    EXPECT_EQ(drawn(art(2), 9, 6, 1.5, {0, 0, 6, 4}),
              "###...###\n"
              "###...###\n"
              "###...###\n"
              "...###:::\n"
              "...###:::\n"
              "...###:::\n");
    EXPECT_EQ(drawn(art(1), 6, 4, 2, {0, 0, 3, 2}),
              "##..##\n"
              "##..##\n"
              "..##::\n"
              "..##::\n");
    // Smaller whole cells, where the scale gives none.
    EXPECT_EQ(drawn(art(1), 5, 3, 1.7, {0, 0, 5 / 1.7, 3 / 1.7}),
              ".#.#.\n"
              "..#:.\n"
              ".....\n");
    EXPECT_EQ(drawn(art(1), 5, 4, 1, {1.3, 0.7, 3, 2}),
              ".....\n"
              ".#.#.\n"
              "..#:.\n"
              ".....\n");
}

TEST(PixelArtDrawing, DrawsRoundDotsAsTheProgramsOwnRasterizerDoes) {
    const StatusImage image = art(3, true);
    QImage picture = canvas(18, 12, 2);
    QPainter painter(&picture);
    PixelArt::draw(painter, QRectF(0, 0, 9, 6), image, QColor(200, 10, 20));
    painter.end();
    const QImage shown = picture.convertToFormat(QImage::Format_ARGB32);
    const RgbaImage expected = rasterize(image, 2);
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 18; ++x) {
            EXPECT_EQ(qAlpha(shown.pixel(x, y)), expected.at(x, y).alpha) << x << ',' << y;
        }
    }
    EXPECT_EQ(QColor(shown.pixel(3, 3)), QColor(200, 10, 20));
}

TEST(PixelArtDrawing, DrawsNothingForABlankPicture) {
    EXPECT_EQ(drawn(StatusImage(), 2, 1, 1, {0, 0, 2, 1}), "..\n");
}

bool hasInk(const std::string& symbol) {
    QImage picture = canvas(32, 32, 2);
    QPainter painter(&picture);
    Symbols::draw(painter, QRectF(0, 0, 16, 16), symbol, Qt::red);
    painter.end();
    return rows(picture).find('#') != std::string::npos;
}

TEST(SymbolDrawing, KnowsEverySymbolOfPanesAndMenus) {
    for (const std::string symbol : {"thermometer.medium", "gearshape", "info.circle", "circle",
                                     "checkmark.circle.fill", "arrow.triangle.2.circlepath"}) {
        EXPECT_TRUE(hasInk(symbol)) << symbol;
    }
    EXPECT_FALSE(hasInk("no.such.symbol"));
}

double luminance(const QColor& color) {
    const auto linear = [](int value) {
        const double channel = value / 255.0;
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.red()) + 0.7152 * linear(color.green()) + 0.0722 * linear(color.blue());
}

// Of a text in the role's colour on an opaque ground.
double contrast(const QColor& text, const QColor& ground) {
    const float share = text.alphaF();
    const auto over = [share](float top, float bottom) { return top * share + bottom * (1 - share); };
    const QColor seen = QColor::fromRgbF(over(text.redF(), ground.redF()), over(text.greenF(), ground.greenF()),
                                         over(text.blueF(), ground.blueF()));
    const double one = luminance(seen) + 0.05;
    const double other = luminance(ground) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

TEST(RoleColors, KeepTextLegibleOnLightAndDark) {
    for (const QPalette& palette : {DesktopPalette::lightPalette(), DesktopPalette::darkPalette()}) {
        for (const QColor& ground : {palette.color(QPalette::Window), RoleColors::color(ColorRole::card, palette),
                                     RoleColors::color(ColorRole::sidebar, palette)}) {
            EXPECT_GE(contrast(RoleColors::color(ColorRole::primary, palette), ground), 10);
            EXPECT_GE(contrast(RoleColors::color(ColorRole::secondary, palette), ground), 4.5);
            EXPECT_GE(contrast(RoleColors::color(ColorRole::tertiary, palette), ground), 3);
        }
        const QColor accent = RoleColors::color(ColorRole::accent, palette);
        EXPECT_GE(contrast(RoleColors::color(ColorRole::onAccent, palette), accent), 4);
        EXPECT_GE(contrast(accent, palette.color(QPalette::Window)), 3);
    }
}

TEST(RoleColors, ReduceTheRolesOwnOpacity) {
    const QPalette palette = DesktopPalette::lightPalette();
    const QColor whole = RoleColors::color(RoleColor{ColorRole::accent, 1}, palette);
    const QColor part = RoleColors::color(RoleColor{ColorRole::accent, 0.5}, palette);
    EXPECT_EQ(whole.alpha(), 255);
    EXPECT_NEAR(part.alphaF(), 0.5, 0.01);
    EXPECT_EQ(RoleColors::color(Color(RgbaColor{1, 2, 3, 4}), palette), QColor(1, 2, 3, 4));
}

TEST(TextLines, WrapTextAndAddLineSpacing) {
    const TextStyle plain{.points = 11};
    const TextStyle spaced{.points = 11, .lineSpacing = 2};
    const std::string text = "one line\nand another one";
    const Size tight = TextLines::size(text, plain, TextLines::Wrapping::asNeeded, 400);
    const Size loose = TextLines::size(text, spaced, TextLines::Wrapping::asNeeded, 400);
    EXPECT_EQ(loose.height, tight.height + 2);
    EXPECT_EQ(loose.width, tight.width);
    const Size narrow = TextLines::size(text, plain, TextLines::Wrapping::asNeeded, tight.width * 0.6);
    EXPECT_GT(narrow.height, tight.height);
    EXPECT_LE(narrow.width, tight.width * 0.6);
}

TEST(TextLines, SetLettersApart) {
    const TextStyle plain{.points = 11};
    const TextStyle apart{.points = 11, .letterSpacing = 2};
    const auto width = [](const TextStyle& style) {
        return TextLines::size("Preview", style, TextLines::Wrapping::oneLine, 0).width;
    };
    EXPECT_NEAR(width(apart), width(plain) + 14, 1);
}

}  // namespace
}  // namespace thermopix
