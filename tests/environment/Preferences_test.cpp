#include "environment/Preferences.h"

#include <gtest/gtest.h>

#include <string>

namespace thermopix {
namespace {

constexpr std::string_view defaultDocument =
    R"({"unit":"celsius","style":"arcade","size":"compact","pet":"cat","source":"cpu","refreshInterval":2,)"
    R"("showsUnitLetter":false,"openAtLogin":false,"showPreferencesOnLaunch":false,"showInDock":false,)"
    R"("checkForUpdatesAutomatically":true})";

constexpr std::string_view otherDocument =
    R"({"unit":"fahrenheit","style":"dotMatrix","size":"large","pet":"ghost","source":"hottest","refreshInterval":30,)"
    R"("showsUnitLetter":true,"openAtLogin":true,"showPreferencesOnLaunch":true,"showInDock":true,)"
    R"("checkForUpdatesAutomatically":false})";

constexpr Preferences otherRecord{.unit = TemperatureUnit::fahrenheit,
                                  .style = PixelStyle::dotMatrix,
                                  .size = PixelSize::large,
                                  .pet = PixelPet::ghost,
                                  .source = SensorSource::hottest,
                                  .refreshInterval = RefreshInterval::thirtySeconds,
                                  .showsUnitLetter = true,
                                  .openAtLogin = true,
                                  .showPreferencesOnLaunch = true,
                                  .showInDock = true,
                                  .checkForUpdatesAutomatically = false};

template <typename Value>
Preferences defaultsWith(Value Preferences::*member, Value value) {
    Preferences preferences;
    preferences.*member = value;
    return preferences;
}

template <typename Value>
void expectEveryCaseSurvives(Value Preferences::*member) {
    for (const Value value : allCases<Value>()) {
        const Preferences preferences = defaultsWith(member, value);
        EXPECT_EQ(decodePreferences(encodePreferences(preferences)), preferences) << encodePreferences(preferences);
    }
}

TEST(Preferences, EncodesAllFieldsInOrderWithoutSpaces) {
    EXPECT_EQ(encodePreferences(Preferences{}), defaultDocument);
    EXPECT_EQ(encodePreferences(otherRecord), otherDocument);
}

TEST(Preferences, DecodesWhatItEncodes) {
    EXPECT_EQ(decodePreferences(defaultDocument), Preferences{});
    EXPECT_EQ(decodePreferences(otherDocument), otherRecord);
}

TEST(Preferences, EveryCaseOfEveryFieldSurvives) {
    expectEveryCaseSurvives(&Preferences::unit);
    expectEveryCaseSurvives(&Preferences::style);
    expectEveryCaseSurvives(&Preferences::size);
    expectEveryCaseSurvives(&Preferences::pet);
    expectEveryCaseSurvives(&Preferences::source);
    expectEveryCaseSurvives(&Preferences::refreshInterval);
}

TEST(Preferences, MissingMembersTakeTheirDefaults) {
    EXPECT_EQ(decodePreferences("{}"), Preferences{});
    EXPECT_EQ(decodePreferences(R"({"style":"segment"})"), defaultsWith(&Preferences::style, PixelStyle::segment));
}

TEST(Preferences, UnknownPetBecomesTheCatAndTheOthersStay) {
    std::string document(otherDocument);
    document.replace(document.find("ghost"), 5, "dragon");
    Preferences expected = otherRecord;
    expected.pet = PixelPet::cat;
    EXPECT_EQ(decodePreferences(document), expected);
}

TEST(Preferences, UnknownMembersAreIgnored) {
    EXPECT_EQ(decodePreferences(R"({"theme":{"dark":[1,2]},"pet":"mac","Pet":"ghost"})"),
              defaultsWith(&Preferences::pet, PixelPet::mac));
}

TEST(Preferences, OneBadFieldTakesItsDefaultAndTheOthersStay) {
    struct Case {
        std::string_view field;
        std::string_view badValue;
    };
    constexpr Case cases[] = {
        {"unit", "null"},
        {"unit", "1"},
        {"unit", R"("Celsius")"},
        {"style", R"(["segment"])"},
        {"style", R"("")"},
        {"size", R"({"large":true})"},
        {"pet", "true"},
        {"source", R"("gpu ")"},
        {"refreshInterval", "3"},
        {"refreshInterval", "-30"},
        {"refreshInterval", "30.5"},
        {"refreshInterval", R"("30")"},
        {"refreshInterval", "true"},
        {"refreshInterval", "null"},
        {"refreshInterval", "18446744073709551646"},  // 30 more than 2^64
        {"refreshInterval", "1e308"},
        {"refreshInterval", "1e999"},
        {"refreshInterval", "-1.5E+99999"},
        {"showsUnitLetter", "1"},
        {"showsUnitLetter", "0"},
        {"openAtLogin", R"("true")"},
        {"showPreferencesOnLaunch", "1.0"},
        {"showInDock", "null"},
        {"checkForUpdatesAutomatically", "0"},
        {"checkForUpdatesAutomatically", "[false]"},
    };
    for (const auto& [field, badValue] : cases) {
        std::string document(otherDocument);
        const std::string key = "\"" + std::string(field) + "\":";
        const std::size_t start = document.find(key) + key.size();
        document.replace(start, document.find_first_of(",}", start) - start, badValue);

        const auto decoded = decodePreferences(document);
        ASSERT_TRUE(decoded) << document;
        // Every other field is as stored, so only this one differs, and it is the default's.
        std::string expected(otherDocument);
        const std::size_t expectedStart = expected.find(key) + key.size();
        const std::size_t defaultStart = defaultDocument.find(key) + key.size();
        expected.replace(
            expectedStart, expected.find_first_of(",}", expectedStart) - expectedStart,
            defaultDocument.substr(defaultStart, defaultDocument.find_first_of(",}", defaultStart) - defaultStart));
        EXPECT_EQ(encodePreferences(*decoded), expected) << document;
    }
}

TEST(Preferences, WholeNumberMayBeWrittenWithFraction) {
    for (const std::string_view number : {"5", "5.0", "5e0", "0.5e1", "50E-1"}) {
        EXPECT_EQ(decodePreferences(R"({"refreshInterval":)" + std::string(number) + "}"),
                  defaultsWith(&Preferences::refreshInterval, RefreshInterval::fiveSeconds))
            << number;
    }
}

TEST(Preferences, WhatIsNoObjectIsNoRecord) {
    for (const std::string_view document :
         {"", " ", "[]", R"([{"style":"segment"}])", "null", "true", "2", R"("celsius")", "not JSON", "{", "}",
          R"({"style":"segment")", R"({"style":"segment"} x)", R"({'style':'segment'})", R"({"style":"segment",})",
          R"({"refreshInterval":1e999)", R"({"refreshInterval":1e999e1})", R"({"refreshInterval":-inf})", "1e999"}) {
        EXPECT_EQ(decodePreferences(document), std::nullopt) << document;
    }
}

TEST(Preferences, NumbersInsideTextsAreNoNumbers) {
    EXPECT_EQ(decodePreferences(R"({"note":"\"1e999 ","other":1e999,"1e999":"-1e999","pet":"mac"})"),
              defaultsWith(&Preferences::pet, PixelPet::mac));
}

TEST(Preferences, WhitespaceIsNoMatter) {
    EXPECT_EQ(decodePreferences("\r\n\t{ \"pet\" :\n\"mac\" }\n"), defaultsWith(&Preferences::pet, PixelPet::mac));
}

TEST(Preferences, InvalidUtf8IsNoRecord) {
    EXPECT_EQ(decodePreferences("{\"style\":\"\xff\xfe\"}"), std::nullopt);
    EXPECT_EQ(decodePreferences("{\"\xc3\":1}"), std::nullopt);
    EXPECT_EQ(decodePreferences("\xff\xfe{}"), std::nullopt);
}

TEST(Preferences, DeepNestingIsHarmless) {
    constexpr std::size_t depth = 200'000;
    EXPECT_EQ(decodePreferences(std::string(depth, '[')), std::nullopt);
    EXPECT_EQ(decodePreferences(std::string(depth, '[') + std::string(depth, ']')), std::nullopt);
    EXPECT_EQ(decodePreferences(R"({"pet":"mac","style":)" + std::string(depth, '[') + std::string(depth, ']') + "}"),
              defaultsWith(&Preferences::pet, PixelPet::mac));
}

TEST(Preferences, DocumentOfAFileIsARecordOfLimitedDepth) {
    const auto nested = [](std::size_t depth) {
        return R"({"pet":"mac","x":)" + std::string(depth, '[') + std::string(depth, ']') + "}";
    };
    EXPECT_TRUE(isPreferencesDocument("{}"));
    EXPECT_TRUE(isPreferencesDocument(nested(63)));
    EXPECT_FALSE(isPreferencesDocument(nested(64)));
    EXPECT_TRUE(isPreferencesDocument(R"({"x":")" + std::string(100, '[') + R"(\"[{"})"));
    EXPECT_TRUE(isPreferencesDocument(R"({"x":[)" + std::string(100, ' ') + R"([],[],{},[],[]]})"));
    for (const std::string document : {"", "[]", "{", "null", "damaged"}) {
        EXPECT_FALSE(isPreferencesDocument(document)) << document;
    }
    // Each opens one more and closes it again.
    std::string wide = R"({"x":[0)";
    for (int i = 0; i < 100; ++i) {
        wide += ",[{}]";
    }
    EXPECT_TRUE(isPreferencesDocument(wide + "]}"));
}

TEST(Preferences, ManyMembersAreHarmless) {
    std::string document = "{";
    for (int i = 0; i < 50'000; ++i) {
        document += "\"" + std::to_string(i) + "\":0,";
    }
    EXPECT_EQ(decodePreferences(document + R"("pet":"mac"})"), defaultsWith(&Preferences::pet, PixelPet::mac));
}

}  // namespace
}  // namespace thermopix
