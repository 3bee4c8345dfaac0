#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "pixels/PixelRasterizer.h"
#include "sensing/PetMood.h"

// Prints the rows that the rasterizer makes of a temperature: art readout|digits VALUE UNIT STYLE PET

namespace {

using namespace thermopix;

double celsius(std::int64_t value, TemperatureUnit unit) {
    const auto degrees = static_cast<double>(value);
    return unit == TemperatureUnit::celsius ? degrees : (degrees - 32) / 1.8;
}

}  // namespace

int main(int argc, char** argv) {
    constexpr int argumentCount = 6;
    if (argc != argumentCount) {
        return EXIT_FAILURE;
    }
    const std::string_view shape(argv[1]);
    const std::int64_t value = std::strtoll(argv[2], nullptr, 10);
    const auto unit = fromRawValue<TemperatureUnit>(argv[3]);
    const auto style = fromRawValue<PixelStyle>(argv[4]);
    const auto pet = fromRawValue<PixelPet>(argv[5]);
    if (!unit || !style || !pet || (shape != "readout" && shape != "digits")) {
        return EXIT_FAILURE;
    }
    Display display;
    display.value = value;
    display.unit = *unit;
    display.mood = mood(celsius(value, *unit), ThermalPressure::nominal, std::nullopt);
    const PixelBitmap art = shape == "digits" ? PixelRasterizer::digitsBitmap(display)
                                              : PixelRasterizer::bitmap(display, {.style = *style, .pet = *pet});
    std::fputs(art.signature().c_str(), stdout);
    return EXIT_SUCCESS;
}
