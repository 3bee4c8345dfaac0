#include "sensing/SensorSource.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sensing/FakeTemperatureSensor.h"

namespace thermopix {
namespace {

using Texts = std::vector<std::string_view>;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

Texts texts(NamePatterns patterns) {
    return {patterns.begin(), patterns.end()};
}

struct Answer {
    std::size_t stage;
    double celsius;
    friend bool operator==(const Answer&, const Answer&) = default;
};

/// The stage of a source that finds a reading first, counted from 1, and that reading.
std::optional<Answer> answer(SensorSource source, const std::vector<SensorSample>& samples) {
    const auto stages = samplingStages(source);
    for (std::size_t i = 0; i < stages.size(); ++i) {
        if (const auto celsius = reduce(samples, stages[i])) {
            return Answer{i + 1, *celsius};
        }
    }
    return std::nullopt;
}

std::vector<SensorSample> fixtureWithout(std::string_view name) {
    auto samples = FakeTemperatureSensor::appleSiliconFixture();
    std::erase_if(samples, [&](const SensorSample& sample) { return sample.name == name; });
    return samples;
}

TEST(SensorSource, ListsItsPatternsInOrder) {
    EXPECT_EQ(texts(namePatterns(SensorSource::cpu)),
              (Texts{"pACC MTR Temp", "eACC MTR Temp", "CPU", "TC0P", "TCXC", "TCAD"}));
    EXPECT_EQ(texts(namePatterns(SensorSource::gpu)), (Texts{"GPU MTR Temp", "TG0P", "TGDD"}));
    EXPECT_EQ(texts(namePatterns(SensorSource::soc)), (Texts{"SOC MTR Temp", "PMGR SOC Die"}));
    EXPECT_EQ(texts(namePatterns(SensorSource::battery)),
              (Texts{"gas gauge battery", "battery", "TB0T", "TB1T", "TB2T"}));
    EXPECT_EQ(texts(namePatterns(SensorSource::storage)), (Texts{"NAND", "TH0P", "SSD"}));
}

TEST(SensorSource, TheSiliconPatternsAreThoseOfProcessorGraphicsAndChip) {
    Texts expected;
    for (const auto source : {SensorSource::cpu, SensorSource::gpu, SensorSource::soc}) {
        const auto patterns = texts(namePatterns(source));
        expected.insert(expected.end(), patterns.begin(), patterns.end());
    }
    EXPECT_EQ(expected.size(), 11U);
    EXPECT_EQ(texts(namedSiliconPatterns()), expected);

    expected.insert(expected.end(), {"MTR Temp", "tdie"});
    EXPECT_EQ(texts(namePatterns(SensorSource::hottest)), expected);
}

TEST(SensorSource, AFamilyWidensToTheSiliconAndThenToEveryDie) {
    for (const auto source :
         {SensorSource::cpu, SensorSource::gpu, SensorSource::soc, SensorSource::battery, SensorSource::storage}) {
        const auto stages = samplingStages(source);
        ASSERT_EQ(stages.size(), 3U) << rawValue(source);
        EXPECT_EQ(texts(stages[0]), texts(namePatterns(source)));
        EXPECT_EQ(texts(stages[1]), texts(namedSiliconPatterns()));
        EXPECT_EQ(texts(stages[2]), texts(namePatterns(SensorSource::hottest)));
    }
}

TEST(SensorSource, TheHottestSensorHasTwoStages) {
    const auto stages = samplingStages(SensorSource::hottest);
    ASSERT_EQ(stages.size(), 2U);
    EXPECT_EQ(texts(stages[0]), texts(namedSiliconPatterns()));
    EXPECT_EQ(texts(stages[1]), texts(namePatterns(SensorSource::hottest)));
}

TEST(SensorSource, ThePickerShowsTheHottestSensorFourth) {
    const auto order = sensorSourceDisplayOrder();
    EXPECT_EQ(std::vector(order.begin(), order.end()),
              (std::vector{SensorSource::cpu, SensorSource::gpu, SensorSource::soc, SensorSource::hottest,
                           SensorSource::battery, SensorSource::storage}));
}

TEST(SensorSource, IsFoundByItsRawValue) {
    EXPECT_EQ(fromRawValue<SensorSource>("storage"), SensorSource::storage);
    EXPECT_EQ(fromRawValue<SensorSource>("Storage"), std::nullopt);
    EXPECT_EQ(title(SensorSource::hottest), "Hottest sensor");
    EXPECT_EQ(subtitle(SensorSource::gpu), "Average of the GPU die sensors.");
}

TEST(SensorNameMatching, IgnoresLetterCase) {
    for (const std::string_view name : {"pACC MTR Temp Sensor2", "PACC MTR TEMP SENSOR2", "pacc mtr temp sensor2"}) {
        EXPECT_TRUE(matches(SensorSource::cpu, name)) << name;
        EXPECT_TRUE(matches(name, namePatterns(SensorSource::cpu))) << name;
    }
}

TEST(SensorNameMatching, FindsPatternsAnywhereInTheName) {
    EXPECT_TRUE(matches(SensorSource::cpu, "package of cpu 0"));
    EXPECT_TRUE(matches(SensorSource::battery, "spare BATTERY pack"));
    EXPECT_TRUE(matches(SensorSource::cpu, "SMC TC0P core"));
    EXPECT_TRUE(matches(SensorSource::battery, "xtb1tx"));
    EXPECT_FALSE(matches(SensorSource::cpu, "CP U"));
    EXPECT_FALSE(matches(SensorSource::cpu, "CP"));
}

TEST(SensorNameMatching, FindsEveryPatternOfEverySourceInAnyLetterCase) {
    for (const auto source : allCases<SensorSource>()) {
        for (const auto pattern : namePatterns(source)) {
            std::string swapped(pattern);
            for (char& letter : swapped) {
                const bool isLetter = std::isalpha(static_cast<unsigned char>(letter)) != 0;
                letter = isLetter ? static_cast<char>(letter ^ 0x20) : letter;
            }
            EXPECT_TRUE(matches(source, pattern));
            EXPECT_TRUE(matches(source, swapped)) << swapped;
            EXPECT_TRUE(matches(source, "x" + swapped + "y")) << swapped;
        }
    }
}

TEST(SensorNameMatching, MatchesNothingWithoutPatterns) {
    EXPECT_FALSE(matches("pACC MTR Temp Sensor2", NamePatterns()));
    EXPECT_FALSE(matches("", NamePatterns()));
}

TEST(SensorNameMatching, AnEmptyPatternIsInEveryName) {
    const std::array<std::string_view, 1> patterns{""};
    EXPECT_TRUE(matches("tdie", patterns));
    EXPECT_TRUE(matches("", patterns));
    EXPECT_FALSE(matches(SensorSource::cpu, ""));
}

TEST(SensorNameMatching, LowerCasesTextsOutsideAsciiToo) {
    struct Case {
        std::string_view name;
        std::string_view pattern;
        bool isMatch;
    };
    constexpr std::array cases{
        Case{"WÄRME 1", "wärme", true},
        Case{"wärme 1", "WÄRME", true},
        Case{"ДАТЧИК ядра", "датчик", true},
        Case{"Wärme CPU", "cpu", true},
        Case{"Wärme", "Warme", false},
        // The Kelvin sign is a lower-case k of ASCII.
        Case{"kelvin", "\u212Aelvin", true},
        Case{"\u212Aelvin", "KELVIN", true},
        Case{"k", "\u212A", true},
        // A capital I with a dot becomes an i and a combining dot.
        Case{"sensor \u0130", "i", true},
        Case{"sensor i", "\u0130", false},
        Case{"caf\xE9 CPU", "cpu", true},
    };
    for (const auto& [name, pattern, isMatch] : cases) {
        const std::array patterns{std::string_view("no such text"), pattern};
        EXPECT_EQ(matches(name, patterns), isMatch) << name << " / " << pattern;
    }
}

TEST(Reduce, TakesTheHottestMatchingSample) {
    const std::vector<SensorSample> samples{{"CPU 1", 50}, {"my cpu 2", 70}, {"Cpu", 60}, {"NAND", 90}};
    EXPECT_EQ(reduce(samples, namePatterns(SensorSource::cpu)), 70.0);
    EXPECT_EQ(reduce(SensorSource::cpu, samples), 70.0);
    EXPECT_EQ(reduce(SensorSource::storage, samples), 90.0);
}

TEST(Reduce, HasNoValueWithoutAMatchingSample) {
    EXPECT_EQ(reduce({}, namePatterns(SensorSource::cpu)), std::nullopt);
    EXPECT_EQ(reduce(SensorSource::gpu, FakeTemperatureSensor::appleSiliconFixture()), 30.0);
    const std::vector<SensorSample> samples{{"fan", 50}};
    EXPECT_EQ(reduce(SensorSource::cpu, samples), std::nullopt);
}

TEST(Reduce, ALaterNaNIsPassedOver) {
    const std::vector<SensorSample> samples{{"CPU 1", 50}, {"CPU 2", notANumber}, {"CPU 3", 51}};
    EXPECT_EQ(reduce(SensorSource::cpu, samples), 51.0);
}

TEST(Reduce, AFirstNaNStays) {
    const std::vector<SensorSample> samples{{"CPU 1", notANumber}, {"CPU 2", 51}};
    const auto reduced = reduce(SensorSource::cpu, samples);
    ASSERT_TRUE(reduced);
    EXPECT_TRUE(std::isnan(*reduced));
}

TEST(Reduce, TheFirstOfEqualReadingsStays) {
    const std::vector<SensorSample> samples{{"CPU 1", -0.0}, {"CPU 2", 0.0}};
    EXPECT_TRUE(std::signbit(reduce(SensorSource::cpu, samples).value()));
}

TEST(SamplingStages, AnswerForTheFixtureFromTheFamilyItself) {
    const auto& fixture = FakeTemperatureSensor::appleSiliconFixture();
    EXPECT_EQ(answer(SensorSource::cpu, fixture), (Answer{1, 60.56}));
    EXPECT_EQ(answer(SensorSource::gpu, fixture), (Answer{1, 30.0}));
    EXPECT_EQ(answer(SensorSource::soc, fixture), (Answer{1, 52.06}));
    EXPECT_EQ(answer(SensorSource::battery, fixture), (Answer{1, 32.4}));
    EXPECT_EQ(answer(SensorSource::storage, fixture), (Answer{1, 44.0}));
    EXPECT_EQ(answer(SensorSource::hottest, fixture), (Answer{1, 60.56}));
}

TEST(SamplingStages, ALoneDieSensorAnswersEverySourceFromItsLastStage) {
    const std::vector<SensorSample> samples{{"PMU tdie1", 52.74}};
    for (const auto source : allCases<SensorSource>()) {
        EXPECT_EQ(answer(source, samples), (Answer{samplingStages(source).size(), 52.74})) << rawValue(source);
    }
}

TEST(SamplingStages, ALoneBatteryAnswersOnlyTheBatterySource) {
    const std::vector<SensorSample> samples{{"gas gauge battery", 32.4}};
    for (const auto source : allCases<SensorSource>()) {
        const auto expected =
            source == SensorSource::battery ? std::optional(Answer{1, 32.4}) : std::optional<Answer>();
        EXPECT_EQ(answer(source, samples), expected) << rawValue(source);
    }
}

TEST(SamplingStages, AMissingFamilyIsAnsweredByTheSilicon) {
    EXPECT_EQ(answer(SensorSource::battery, fixtureWithout("gas gauge battery")), (Answer{2, 60.56}));
    EXPECT_EQ(answer(SensorSource::storage, fixtureWithout("NAND CH0 temp")), (Answer{2, 60.56}));
}

}  // namespace
}  // namespace thermopix
