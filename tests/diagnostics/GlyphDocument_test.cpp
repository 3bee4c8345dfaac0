#include "diagnostics/GlyphDocument.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "fakes/Golden.h"

namespace thermopix {
namespace {

using Json = nlohmann::json;
using Rows = std::vector<std::string>;

Json document() {
    return Json::parse(glyphDocument());
}

TEST(GlyphDocumentTest, IsThisText) {
    expectGolden("diagnostics/golden/glyphs.json", glyphDocument());
}

TEST(GlyphDocumentTest, IsTheSameEachTime) {
    EXPECT_EQ(glyphDocument(), glyphDocument());
}

TEST(GlyphDocumentTest, StartsWithTheWarningNotToEditIt) {
    EXPECT_TRUE(
        glyphDocument().starts_with("{\n  \"_generated\": \"Thermopix --export-web-assets — do not edit by hand\",\n"));
    EXPECT_TRUE(glyphDocument().ends_with("\n}\n"));
}

TEST(GlyphDocumentTest, ListsTheKeysOfEveryObjectByCodePoint) {
    std::vector<std::string> keys;
    // The order in the text itself, which a parsed object no longer has.
    const auto text = nlohmann::ordered_json::parse(glyphDocument());
    for (const auto& [key, value] : text.items()) {
        keys.push_back(key);
    }
    EXPECT_EQ(keys, (std::vector<std::string>{"_generated", "fonts", "menuBarThickness", "moodThresholds", "moods",
                                              "petGap", "pets", "slots", "styles"}));
    keys.clear();
    for (const auto& [key, value] : text["fonts"]["micro3x5"]["glyphs"].items()) {
        keys.push_back(key);
    }
    EXPECT_EQ(keys, (std::vector<std::string>{" ", "-", "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "C", "F", "~",
                                              "°"}));
    EXPECT_EQ(nlohmann::ordered_json(document()).dump(), text.dump());
}

TEST(GlyphDocumentTest, DescribesEachStyle) {
    const auto styles = document()["styles"];
    ASSERT_EQ(styles.size(), 4U);
    EXPECT_EQ(styles[0], Json::parse(R"({"id": "arcade", "title": "Arcade",
        "subtitle": "Chunky 5×7 pixels. The default.", "font": "arcade5x7", "tracking": 1, "round": false,
        "cells": {"compact": {"cell": 2, "dotInset": 0}, "large": {"cell": 3, "dotInset": 0}}})"));
    EXPECT_EQ(styles[1]["font"], "micro3x5");
    EXPECT_EQ(styles[2]["font"], "segment4x7");
    EXPECT_EQ(styles[3], Json::parse(R"({"id": "dotMatrix", "title": "Dot Matrix",
        "subtitle": "5×7 drawn as separated dots.", "font": "arcade5x7", "tracking": 1, "round": true,
        "cells": {"compact": {"cell": 2, "dotInset": 0.5}, "large": {"cell": 3, "dotInset": 0.75}}})"));
}

TEST(GlyphDocumentTest, ListsThePetsInTheOrderOfThePickerWithSevenRowsEach) {
    const auto pets = document()["pets"];
    std::vector<std::string> order;
    for (const auto& pet : pets) {
        order.push_back(pet["id"]);
        if (pet["id"] == "none") {
            continue;
        }
        EXPECT_EQ(pet["moods"].size(), 4U);
        EXPECT_EQ(pet["blink"].size(), 7U);
        for (const auto& [mood, rows] : pet["moods"].items()) {
            EXPECT_EQ(rows.size(), 7U) << pet["id"] << mood;
        }
    }
    EXPECT_EQ(order, (std::vector<std::string>{"cat", "westie", "mac", "ghost", "none"}));
    EXPECT_EQ(pets[2]["blink"].get<Rows>(),
              (Rows{"########", "#..##..#", "########", "##....##", "########", "...##...", ".######."}));
}

TEST(GlyphDocumentTest, TheAbsentPetHasNoMoodsAndNoBlink) {
    const auto none = document()["pets"][4];
    EXPECT_EQ(none,
              Json::parse(R"({"id": "none", "title": "No pet", "subtitle": "Just the temperature.", "moods": {}})"));
    EXPECT_NE(glyphDocument().find("\"moods\": {}"), std::string::npos);
}

TEST(GlyphDocumentTest, HasTheMoodsWithTheirBoundsAndTheMetrics) {
    const auto all = document();
    EXPECT_EQ(all["moodThresholds"], Json::parse(R"([{"mood": "chilly", "upperBound": 45},
        {"mood": "content", "upperBound": 65}, {"mood": "warm", "upperBound": 85}])"));
    EXPECT_EQ(all["moods"].size(), 4U);
    EXPECT_EQ(all["moods"][3], Json::parse(R"({"id": "scorching", "title": "Burning",
        "caption": "Everything is fine. Everything is FINE."})"));
    EXPECT_EQ(all["slots"], Json::parse(R"({"celsius": 2, "fahrenheit": 3})"));
    EXPECT_EQ(all["petGap"], 2);
    EXPECT_EQ(all["menuBarThickness"], 22);
}

TEST(GlyphDocumentTest, WritesWholeNumbersWithoutAFraction) {
    EXPECT_EQ(glyphDocument().find(".0"), std::string::npos);
    EXPECT_NE(glyphDocument().find("\"upperBound\": 45\n"), std::string::npos);
    EXPECT_NE(glyphDocument().find("\"dotInset\": 0.75\n"), std::string::npos);
}

}  // namespace
}  // namespace thermopix
