#include "updates/Version.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

namespace thermopix {
namespace {

Version version(std::string_view text) {
    const auto parsed = Version::parse(text);
    if (!parsed) {
        ADD_FAILURE() << "not a version: " << text;
        return *Version::parse("0");
    }
    return *parsed;
}

TEST(Version, everyVersionOfALineIsNewerThanAllBeforeIt) {
    constexpr std::array line{"0.9",        "1.0-alpha", "1.0-alpha.1", "1.0-beta", "1.0-beta.2", "1.0-beta.10",
                              "1.0-beta11", "1.0rc1",    "1.0-rc.2",    "1.0",      "1.0.1",      "1.9",
                              "1.9.0.1",    "1.10-pre",  "1.10",        "1.10-1",   "2.0",        "10"};
    for (std::size_t newer = 0; newer < line.size(); ++newer) {
        for (std::size_t older = 0; older < newer; ++older) {
            EXPECT_LT(version(line[older]), version(line[newer])) << line[older] << " and " << line[newer];
            EXPECT_GT(version(line[newer]), version(line[older])) << line[older] << " and " << line[newer];
        }
    }
}

TEST(Version, theSameVersionCanBeWrittenInSeveralWays) {
    struct Row {
        const char* one;
        const char* other;
    };
    for (const auto& row :
         {Row{"1", "1.0.0"}, Row{"v1.2", "1.2"}, Row{"V1.2", "1.2"}, Row{"1.02", "1.2"}, Row{"1.0-RC1", "1.0rc.1"},
          Row{"1.0-beta", "1.0.0~beta"}, Row{"1.2+g1a2b3c", "1.2"}, Row{"1.2-rc1+7.8", "1.2-rc1"}, Row{"0", "0.0"}}) {
        EXPECT_EQ(version(row.one), version(row.other)) << row.one << " and " << row.other;
    }
}

TEST(Version, aNumberMayBeLongButNotLongerThanTheArithmetic) {
    EXPECT_LT(version("20261121000000"), version("20261121000001"));
    EXPECT_LT(version("18446744073709551614"), version("18446744073709551615"));
    EXPECT_FALSE(Version::parse("18446744073709551616"));
}

TEST(Version, aTextThatIsNoVersionIsNone) {
    for (const auto& text : {"", "v", "vv1", "beta", ".1", "-1", " 1.0", "1.0 beta", "1.0\n", "1,0", "1.0<b>",
                             "1.0\xC3\xA9", "—", "+1", "1.0/2"}) {
        EXPECT_FALSE(Version::parse(text)) << text;
    }
    EXPECT_TRUE(Version::parse(std::string(64, '1')
                                   .replace(10, 1, ".")
                                   .replace(20, 1, ".")
                                   .replace(30, 1, ".")
                                   .replace(40, 1, ".")
                                   .replace(50, 1, ".")));
    EXPECT_FALSE(Version::parse("1" + std::string(64, '.')));
}

TEST(Version, aSystemReachesAMinimumByItsNumbersAlone) {
    EXPECT_TRUE(version("6.1.0-13-amd64").reaches(version("6.1")));
    EXPECT_TRUE(version("6.6-arch1-1").reaches(version("6.6")));
    EXPECT_TRUE(version("6.10").reaches(version("6.9")));
    EXPECT_TRUE(version("6.1").reaches(version("6.1.0")));
    EXPECT_FALSE(version("6.1").reaches(version("6.1.1")));
    EXPECT_FALSE(version("6.9").reaches(version("6.10")));
}

}  // namespace
}  // namespace thermopix
