#include "messages/LineReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace thermopix {
namespace {

std::vector<std::string> takeAll(LineReader& reader) {
    std::vector<std::string> lines;
    while (auto line = reader.takeLine()) {
        lines.push_back(*std::move(line));
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(LineReader, GivesNothingBeforeALineIsWhole) {
    LineReader reader(10);
    EXPECT_EQ(reader.takeLine(), std::nullopt);
    reader.append("half");
    EXPECT_EQ(reader.takeLine(), std::nullopt);
    reader.append("\n");
    EXPECT_EQ(reader.takeLine(), "half");
    EXPECT_EQ(reader.takeLine(), std::nullopt);
}

TEST(LineReader, GivesTheSameLinesHoweverTheBytesArrive) {
    const std::string text = "one\n\nthree\nlast";
    for (std::size_t step = 1; step <= text.size(); ++step) {
        LineReader reader(5);
        Lines lines;
        for (std::size_t at = 0; at < text.size(); at += step) {
            reader.append(text.substr(at, step));
            for (auto& line : takeAll(reader)) {
                lines.push_back(line);
            }
        }
        EXPECT_EQ(lines, (Lines{"one", "", "three"})) << step;
    }
}

TEST(LineReader, GivesLinesThatArriveTogetherOneByOne) {
    LineReader reader(5);
    reader.append("one\ntwo\nthr");
    EXPECT_EQ(reader.takeLine(), "one");
    reader.append("ee\nfour\n");
    EXPECT_EQ(takeAll(reader), (Lines{"two", "three", "four"}));
}

TEST(LineReader, TakesALineOfTheGreatestLength) {
    LineReader reader(4);
    reader.append("1234\n5678\n");
    EXPECT_EQ(takeAll(reader), (Lines{"1234", "5678"}));
    EXPECT_FALSE(reader.hasFailed());
}

TEST(LineReader, EndsAtALineThatIsTooLongEvenBeforeItsEnd) {
    for (const char* tooLong : {"12345", "12345\n"}) {
        LineReader reader(4);
        reader.append(std::string("ok\n") + tooLong);
        EXPECT_EQ(takeAll(reader), Lines{"ok"});
        EXPECT_TRUE(reader.hasFailed());
        reader.append("\nmore\n");
        EXPECT_EQ(reader.takeLine(), std::nullopt);
    }
}

}  // namespace
}  // namespace thermopix
