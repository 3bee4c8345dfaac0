// Prints, as JSON, what the product shows: the rows of every readout, a journey through the temperatures, one dot.
#include <array>
#include <cstdint>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "pixels/PixelPet.h"
#include "pixels/PixelRasterizer.h"
#include "pixels/PixelStyle.h"
#include "pixels/Rgba.h"
#include "pixels/StatusImageRenderer.h"
#include "sensing/Display.h"
#include "sensing/PetMood.h"
#include "sensing/TemperatureMonitor.h"
#include "sensing/TemperatureSmoother.h"
#include "sensing/TemperatureUnit.h"
#include "sensing/ThermalPressure.h"

namespace {

using namespace thermopix;
using Json = nlohmann::ordered_json;

constexpr std::array<std::optional<std::int64_t>, 5> values{std::nullopt, -12, 7, 52, 100};
constexpr std::array bothWays{false, true};

Json rowsOf(const PixelBitmap& bitmap) {
    auto rows = Json::array();
    std::istringstream signature(bitmap.signature());
    for (std::string row; std::getline(signature, row);) {
        rows.push_back(row);
    }
    return rows;
}

Json valueOf(const Display& display) {
    return display.value ? Json(*display.value) : Json(nullptr);
}

Json readout(const Display& display, const Appearance& look) {
    return {
        {"value", valueOf(display)},
        {"unit", rawValue(display.unit)},
        {"mood", rawValue(display.mood)},
        {"hot", display.isHot},
        {"style", rawValue(look.style)},
        {"pet", rawValue(look.pet)},
        {"letter", look.showsUnitLetter},
        {"blinking", look.blinking},
        {"rows", rowsOf(PixelRasterizer::bitmap(display, look))},
        {"description", StatusImageRenderer::accessibilityDescription(display, look.pet)},
    };
}

std::vector<Display> displays() {
    std::vector<Display> all;
    for (const auto& value : values) {
        for (const auto unit : allCases<TemperatureUnit>()) {
            for (const auto mood : allCases<PetMood>()) {
                for (const bool isHot : bothWays) {
                    Display display;
                    display.value = value;
                    display.unit = unit;
                    display.mood = mood;
                    display.isHot = isHot;
                    all.push_back(display);
                }
            }
        }
    }
    return all;
}

Json readouts() {
    auto all = Json::array();
    for (const auto& display : displays()) {
        for (const auto style : allCases<PixelStyle>()) {
            for (const auto pet : allCases<PixelPet>()) {
                for (const bool showsUnitLetter : bothWays) {
                    for (const bool blinking : bothWays) {
                        all.push_back(readout(
                            display,
                            {.style = style, .pet = pet, .showsUnitLetter = showsUnitLetter, .blinking = blinking}));
                    }
                }
            }
        }
    }
    return all;
}

/// Half degrees from cold to hot and back, then falls that stop short of each threshold's margin and go past it.
std::vector<double> journeyTemperatures() {
    std::vector<double> all;
    for (int halfDegrees = 0; halfDegrees <= 220; ++halfDegrees) {
        all.push_back(halfDegrees / 2.0);
    }
    for (int halfDegrees = 220; halfDegrees >= 0; --halfDegrees) {
        all.push_back(halfDegrees / 2.0);
    }
    for (const auto& threshold : moodThresholds()) {
        for (const double offset : {0.0, -0.5, -2.5, 0.0, -3.0, -2.5, 0.0, -30.0}) {
            all.push_back(threshold.upperBound + offset);
        }
    }
    return all;
}

Json journey(ThermalPressure pressure) {
    auto stages = Json::array();
    std::optional<PetMood> previous;
    for (const double celsius : journeyTemperatures()) {
        Display display;
        display.value = TemperatureSmoother(1.0, 0.0).accept(celsius, TemperatureUnit::celsius);
        display.mood = mood(celsius, pressure, previous);
        display.isHot = isElevated(pressure) || celsius >= TemperatureMonitor::hotThresholdCelsius;
        previous = display.mood;
        stages.push_back({
            {"celsius", celsius},
            {"value", valueOf(display)},
            {"fahrenheit", TemperatureSmoother(1.0, 0.0).accept(celsius, TemperatureUnit::fahrenheit)},
            {"mood", title(display.mood)},
            {"caption", caption(display.mood)},
            {"description", StatusImageRenderer::accessibilityDescription(display, PixelPet::cat)},
            {"rows", rowsOf(PixelRasterizer::bitmap(display, {.pet = PixelPet::cat}))},
            {"rowsWithoutPet", rowsOf(PixelRasterizer::bitmap(display, {}))},
        });
    }
    return stages;
}

Json journeys() {
    auto all = Json::object();
    for (const auto pressure : allCases<ThermalPressure>()) {
        all[std::string(rawValue(pressure))] = journey(pressure);
    }
    return all;
}

/// The coverage of one dot's pixels, row by row, 0 to 255.
Json dot() {
    constexpr std::int64_t scale = 8;
    const PixelBitmap cell(1, 1, {Ink::full});
    const auto raster = rasterize(StatusImageRenderer::image(cell, PixelStyle::dotMatrix, PixelSize::compact), scale);
    auto alphas = Json::array();
    for (const auto& pixel : raster.pixels) {
        alphas.push_back(pixel.alpha);
    }
    return {{"pixels", raster.width}, {"alphas", alphas}};
}

}  // namespace

int main() {
    std::cout << Json{{"readouts", readouts()}, {"journeys", journeys()}, {"dot", dot()}}.dump() << '\n';
    return std::cout.flush() ? 0 : 1;
}
