#include "diagnostics/Checklist.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/RecordingOutput.h"

namespace thermopix {
namespace {

using Lines = std::vector<std::string>;

TEST(ChecklistTest, ALineWithoutADetailEndsAfterTheLabel) {
    RecordingOutput output;
    Checklist checklist(output);
    checklist.check("it works", true);
    checklist.check("it shines", false);
    EXPECT_EQ(output.lines, (Lines{"  ok  it works", "FAIL  it shines"}));
}

TEST(ChecklistTest, ADetailFollowsADash) {
    RecordingOutput output;
    Checklist checklist(output);
    checklist.check("it works", true, "like new");
    checklist.check("it shines", false, "none");
    EXPECT_EQ(output.lines, (Lines{"  ok  it works  — like new", "FAIL  it shines  — none"}));
}

TEST(ChecklistTest, PassesWhenNothingFailed) {
    RecordingOutput output;
    Checklist checklist(output);
    checklist.check("it works", true);
    EXPECT_EQ(checklist.finish(), 0);
    EXPECT_EQ(output.lines, (Lines{"  ok  it works", "", "PASSED"}));
}

TEST(ChecklistTest, CountsItsFailures) {
    RecordingOutput output;
    Checklist checklist(output);
    checklist.check("a", false);
    checklist.check("b", true);
    checklist.check("c", false);
    EXPECT_EQ(checklist.finish(), 1);
    EXPECT_EQ(output.lines.back(), "FAILED (2)");
}

}  // namespace
}  // namespace thermopix
