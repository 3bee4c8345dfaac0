#include "diagnostics/FixedWidthCheck.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "fakes/RecordingOutput.h"

namespace thermopix {
namespace {

using Lines = std::vector<std::string>;

class FixedWidthCheckTest : public testing::Test {
protected:
    RecordingOutput output;
    Checklist checklist{output};
};

TEST_F(FixedWidthCheckTest, PassesWithTheOneWidthInBrackets) {
    checkFixedWidth(
        "Arcade", TemperatureUnit::celsius, [](const Display&) { return 23; }, checklist);
    EXPECT_EQ(output.lines, (Lines{"  ok  Arcade/C has one width from 0–99 °C  — [23]"}));
    EXPECT_EQ(checklist.finish(), 0);
}

TEST_F(FixedWidthCheckTest, AStyleThatWidensBetweenNineAndTenDegreesFailsWithBothWidthsInOrder) {
    checkFixedWidth(
        "Slim", TemperatureUnit::celsius, [](const Display& display) { return *display.value < 10 ? 17 : 23; },
        checklist);
    EXPECT_EQ(output.lines, (Lines{"FAIL  Slim/C has one width from 0–99 °C  — [17, 23]"}));
    EXPECT_EQ(checklist.finish(), 1);
}

TEST_F(FixedWidthCheckTest, CelsiusIsSweptInHalfDegreesFrom0To99) {
    std::vector<std::int64_t> values;
    const auto width = [&](const Display& display) {
        EXPECT_EQ(display.unit, TemperatureUnit::celsius);
        EXPECT_FALSE(display.isHot);
        values.push_back(*display.value);
        return 1;
    };
    checkFixedWidth("Any", TemperatureUnit::celsius, width, checklist);
    ASSERT_EQ(values.size(), 199U);
    EXPECT_EQ(values.front(), 0);
    EXPECT_EQ(values[1], 1);  // 0.5 rounds away from zero
    EXPECT_EQ(values[2], 1);
    EXPECT_EQ(values.back(), 99);
}

TEST_F(FixedWidthCheckTest, FahrenheitIsSweptFrom32To302) {
    std::vector<std::int64_t> values;
    const auto width = [&](const Display& display) {
        EXPECT_EQ(display.unit, TemperatureUnit::fahrenheit);
        values.push_back(*display.value);
        return 1;
    };
    checkFixedWidth("Any", TemperatureUnit::fahrenheit, width, checklist);
    ASSERT_EQ(values.size(), 301U);
    EXPECT_EQ(values.front(), 32);
    EXPECT_EQ(values.back(), 302);
    EXPECT_EQ(output.lines, (Lines{"  ok  Any/F has one width from 0–150 °C  — [1]"}));
}

}  // namespace
}  // namespace thermopix
