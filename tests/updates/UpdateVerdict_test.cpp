#include "updates/UpdateVerdict.h"

#include <gtest/gtest.h>

#include <string>

namespace thermopix {
namespace {

TEST(UpdateVerdict, aVerdictIsOneLineOfJson) {
    EXPECT_EQ(verdictLine(UpToDate()), R"({"verdict":"upToDate"})");
    EXPECT_EQ(verdictLine(UpdateAvailable{"1.2", "https://example.org/1.2", true}),
              R"({"verdict":"updateAvailable","version":"1.2","page":"https://example.org/1.2","isCritical":true})");
    EXPECT_EQ(verdictLine(UpdateAvailable{"1.2", std::nullopt, false}),
              R"({"verdict":"updateAvailable","version":"1.2","isCritical":false})");
    EXPECT_EQ(verdictLine(CheckFailed{CheckFailure::tooSlow, "two\nlines"}),
              R"({"verdict":"failed","reason":"tooSlow","detail":"two\nlines"})");
}

TEST(UpdateVerdict, everyVerdictSurvivesItsLine) {
    const auto expectSurvives = [](const UpdateVerdict& verdict) {
        EXPECT_EQ(verdictFromLine(verdictLine(verdict)), verdict) << verdictLine(verdict);
    };
    expectSurvives(UpToDate());
    expectSurvives(UpdateAvailable{"1.2-rc1", "https://example.org/1.2", true});
    expectSurvives(UpdateAvailable{"1.2", std::nullopt, false});
    for (const auto failure : allCases<CheckFailure>()) {
        expectSurvives(CheckFailed{failure, "why"});
    }
}

TEST(UpdateVerdict, bytesThatAreNoTextAreRepairedOnTheirWay) {
    const auto verdict = verdictFromLine(verdictLine(CheckFailed{CheckFailure::refused, "bad \xFF byte"}));
    EXPECT_EQ(verdict, UpdateVerdict(CheckFailed{CheckFailure::refused, "bad \uFFFD byte"}));
}

TEST(UpdateVerdict, aLineThatIsNoVerdictIsNone) {
    for (const auto* line :
         {"", "{", "[]", "null", "\"upToDate\"", "{}", R"({"verdict":1})", R"({"verdict":"maybe"})",
          R"({"verdict":"upToDate"} x)", R"({"verdict":"updateAvailable"})",
          R"({"verdict":"updateAvailable","version":"1.2"})",
          R"({"verdict":"updateAvailable","version":"1.2","isCritical":"yes"})",
          R"({"verdict":"updateAvailable","version":"<b>","isCritical":false})",
          R"({"verdict":"updateAvailable","version":12,"isCritical":false})",
          R"({"verdict":"updateAvailable","version":"1.2","page":"http://example.org","isCritical":false})",
          R"({"verdict":"updateAvailable","version":"1.2","page":7,"isCritical":false})", R"({"verdict":"failed"})",
          R"({"verdict":"failed","reason":"mood"})", R"({"verdict":"failed","reason":["tooSlow"]})"}) {
        EXPECT_EQ(verdictFromLine(line), std::nullopt) << line;
    }
}

}  // namespace
}  // namespace thermopix
