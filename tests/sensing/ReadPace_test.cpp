#include "sensing/ReadPace.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Answers = ReadPace::Answers;

/// What is said of a sensor after reads as given: `q` for a quick one, `s` for a slow one.
Answers after(std::string_view reads) {
    ReadPace pace;
    for (const char read : reads) {
        pace.record(read == 's' ? 21ms : 20ms);
    }
    return pace.answers();
}

TEST(ReadPace, TheFirstReadDecides) {
    EXPECT_EQ(after(""), Answers::untried);
    EXPECT_EQ(after("q"), Answers::atOnce);
    EXPECT_EQ(after("s"), Answers::slowly);
}

TEST(ReadPace, TwoSlowReadsOfThreeMakeASensorSlow) {
    EXPECT_EQ(after("qs"), Answers::atOnce);
    EXPECT_EQ(after("qss"), Answers::slowly);
    EXPECT_EQ(after("qsqs"), Answers::slowly);
    EXPECT_EQ(after("qsqqsqqs"), Answers::atOnce);
}

TEST(ReadPace, TenQuickReadsInARowMakeItQuickAgain) {
    EXPECT_EQ(after("sqqqqqqqqq"), Answers::slowly);
    EXPECT_EQ(after("sqqqqqqqqqq"), Answers::atOnce);
    EXPECT_EQ(after("qssqqqqqqqqqsqqqqqqqqq"), Answers::slowly);
    EXPECT_EQ(after("qssqqqqqqqqqsqqqqqqqqqq"), Answers::atOnce);
    EXPECT_EQ(after("sqqqqqqqqqqs"), Answers::atOnce);
    EXPECT_EQ(after("sqqqqqqqqqqss"), Answers::slowly);
}

}  // namespace
}  // namespace thermopix
