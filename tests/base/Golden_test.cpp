#include "fakes/Golden.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "sensing/RefreshInterval.h"
#include "sensing/SensorSource.h"

namespace thermopix {
namespace {

TEST(Golden, IsMissedWithTheCommandThatApprovesWhatWasSeen) {
    EXPECT_NONFATAL_FAILURE(expectGolden("settings/golden/sidebar.txt.not", "something else"), "cp -r ");
    EXPECT_NONFATAL_FAILURE(expectGolden("settings/golden/sidebar.txt.not", ""), "sidebar.txt.not");
}

TEST(Printing, CallsCasesByTheirRawValues) {
    EXPECT_EQ(testing::PrintToString(SensorSource::soc), "soc");
    EXPECT_EQ(testing::PrintToString(std::optional(RefreshInterval::tenSeconds)), "(10)");
}

}  // namespace
}  // namespace thermopix
