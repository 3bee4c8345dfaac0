// Contact sheets of the readout, as the program draws it: every style and size beside each other, every pet and mood
// below each other, in a dark and in a light bar. thermopix_readout_sheets FOLDER
#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "pixels/PngWriter.h"
#include "pixels/Rgba.h"
#include "pixels/StatusImageRenderer.h"

namespace {

using namespace thermopix;

constexpr std::int64_t scale = 2;
constexpr std::int64_t margin = 8 * scale;
constexpr auto barHeight = static_cast<std::int64_t>(menuBarThickness) * scale;

/// Between two bars.
constexpr std::int64_t gap = 8 * scale;
constexpr RgbaColor desktop{128, 128, 128, 255};

struct Bar {
    const char* name;
    RgbaColor ground;
    RgbaColor ink;
};

constexpr std::array bars{Bar{"dark", {45, 45, 50, 255}, {255, 255, 255, 235}},
                          Bar{"light", {240, 240, 244, 255}, {0, 0, 0, 217}}};

struct Readout {
    Display display;
    Appearance look;
};

/// A temperature for each mood, in its order.
constexpr std::array<std::int64_t, 4> temperatures{38, 55, 74, 93};

std::vector<Readout> readouts() {
    std::vector<Readout> all;
    for (const PixelPet pet : allCases<PixelPet>()) {
        for (const PetMood mood : allCases<PetMood>()) {
            Readout readout;
            readout.display.value = temperatures.at(static_cast<std::size_t>(mood));
            readout.display.mood = mood;
            readout.display.isHot = mood == PetMood::scorching;
            readout.look.pet = pet;
            all.push_back(readout);
        }
        Readout blinking;
        blinking.display.value = 55;
        blinking.look = {.pet = pet, .showsUnitLetter = true, .blinking = true};
        all.push_back(blinking);
    }
    for (const std::optional<std::int64_t> value :
         {std::optional<std::int64_t>(), std::optional<std::int64_t>(-12), std::optional<std::int64_t>(212)}) {
        Readout readout;
        readout.display.value = value;
        readout.display.unit = TemperatureUnit::fahrenheit;
        readout.look.pet = PixelPet::cat;
        readout.look.showsUnitLetter = true;
        all.push_back(readout);
    }
    return all;
}

RgbaImage filled(std::int64_t width, std::int64_t height, RgbaColor color) {
    return {width, height, std::vector<RgbaColor>(static_cast<std::size_t>(width * height), color)};
}

/// A column for each style and size, a bar for each readout.
RgbaImage sheet(const Bar& bar) {
    const auto all = readouts();
    std::vector<std::vector<RgbaImage>> columns;
    std::vector<std::int64_t> lefts;
    std::int64_t width = margin;
    for (const PixelStyle style : allCases<PixelStyle>()) {
        for (const PixelSize size : allCases<PixelSize>()) {
            std::int64_t widest = 0;
            auto& column = columns.emplace_back();
            for (const auto& readout : all) {
                Appearance look = readout.look;
                look.style = style;
                look.size = size;
                const auto image = StatusImageRenderer::image(readout.display, look);
                column.push_back(tinted(rasterize(image, scale), bar.ink));
                widest = std::max(widest, column.back().width);
            }
            lefts.push_back(width);
            width += widest + margin;
        }
    }
    auto sheet = filled(width, (barHeight + gap) * static_cast<std::int64_t>(all.size()) - gap, desktop);
    const auto ground = filled(width, barHeight, bar.ground);
    for (std::size_t row = 0; row < all.size(); ++row) {
        const auto top = static_cast<std::int64_t>(row) * (barHeight + gap);
        drawOver(sheet, ground, 0, top);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const auto& image = columns[i][row];
            drawOver(sheet, image, lefts[i], top + (barHeight - image.height) / 2);
        }
    }
    return sheet;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        return EXIT_FAILURE;
    }
    for (const auto& bar : bars) {
        const auto png = pngData(sheet(bar), scale);
        std::ofstream file(fmt::format("{}/readouts-{}.png", argv[1], bar.name), std::ios::binary);
        file << png.value_or("");
        file.close();
        if (!png || !file) {
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
