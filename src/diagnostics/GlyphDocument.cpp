#include "diagnostics/GlyphDocument.h"

#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string_view>

#include "pixels/PixelFont.h"
#include "pixels/PixelGlyph.h"
#include "pixels/PixelPet.h"
#include "pixels/PixelRasterizer.h"
#include "pixels/PixelSize.h"
#include "pixels/PixelStyle.h"
#include "sensing/PetMood.h"
#include "sensing/TemperatureUnit.h"

namespace thermopix {

namespace {

/// Objects of this type keep their keys sorted.
using Json = nlohmann::json;

/// A whole number is written without a fraction.
Json number(double value) {
    return value == std::trunc(value) ? Json(static_cast<std::int64_t>(value)) : Json(value);
}

Json artRows(const PixelGlyph& glyph, char (*character)(Ink)) {
    auto rows = Json::array();
    for (std::int64_t y = 0; y < glyph.height(); ++y) {
        std::string art;
        for (std::int64_t x = 0; x < glyph.width(); ++x) {
            art += character(glyph.at(x, y));
        }
        rows.push_back(art);
    }
    return rows;
}

Json glyphRows(const PixelGlyph& glyph) {
    return artRows(glyph, artCharacter);
}

Json spriteRows(const PixelGlyph& sprite) {
    return artRows(sprite, [](Ink ink) { return ink == Ink::full ? '#' : '.'; });
}

Json fontObject(const PixelFont& font) {
    auto glyphs = Json::object();
    for (const auto character : PixelFont::requiredCharacters) {
        if (const auto* glyph = font.glyph(character)) {
            glyphs[std::string(character)] = glyphRows(*glyph);
        }
    }
    return {{"width", font.glyphWidth()}, {"height", font.glyphHeight()}, {"glyphs", glyphs}};
}

Json fonts() {
    auto object = Json::object();
    for (const auto style : allCases<PixelStyle>()) {
        object[std::string(row(style).fontName)] = fontObject(font(style));
    }
    return object;
}

Json cells(PixelStyle style) {
    auto object = Json::object();
    for (const auto size : allCases<PixelSize>()) {
        object[std::string(rawValue(size))] = {{"cell", number(cell(size))},
                                               {"dotInset", number(dotInset(style, size))}};
    }
    return object;
}

Json styles() {
    auto array = Json::array();
    for (const auto style : pixelStyleDisplayOrder()) {
        array.push_back({
            {"id", rawValue(style)},
            {"title", title(style)},
            {"subtitle", subtitle(style)},
            {"font", row(style).fontName},
            {"tracking", tracking(style)},
            {"round", isRound(style)},
            {"cells", cells(style)},
        });
    }
    return array;
}

Json petObject(PixelPet pet) {
    Json object{{"id", rawValue(pet)}, {"title", title(pet)}, {"subtitle", subtitle(pet)}, {"moods", Json::object()}};
    for (const auto mood : allCases<PetMood>()) {
        if (const auto face = sprite(pet, mood, false)) {
            object["moods"][std::string(rawValue(mood))] = spriteRows(*face);
        }
    }
    if (const auto closedEyes = sprite(pet, PetMood::content, true)) {
        object["blink"] = spriteRows(*closedEyes);
    }
    return object;
}

Json pets() {
    auto array = Json::array();
    for (const auto pet : pixelPetDisplayOrder()) {
        array.push_back(petObject(pet));
    }
    return array;
}

Json moods() {
    auto array = Json::array();
    for (const auto mood : allCases<PetMood>()) {
        array.push_back({{"id", rawValue(mood)}, {"title", title(mood)}, {"caption", caption(mood)}});
    }
    return array;
}

Json thresholds() {
    auto array = Json::array();
    for (const auto& threshold : moodThresholds()) {
        array.push_back({{"mood", rawValue(threshold.mood)}, {"upperBound", number(threshold.upperBound)}});
    }
    return array;
}

Json slots() {
    auto object = Json::object();
    for (const auto unit : allCases<TemperatureUnit>()) {
        object[std::string(rawValue(unit))] = digitSlots(unit);
    }
    return object;
}

}  // namespace

std::string glyphDocument() {
    const Json document{
        {"_generated", "Thermopix --export-web-assets — do not edit by hand"},
        {"fonts", fonts()},
        {"styles", styles()},
        {"pets", pets()},
        {"petGap", PixelRasterizer::petGap},
        {"moods", moods()},
        {"moodThresholds", thresholds()},
        {"menuBarThickness", number(menuBarThickness)},
        {"slots", slots()},
    };
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace thermopix
