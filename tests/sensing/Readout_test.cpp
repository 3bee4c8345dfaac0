#include "sensing/Readout.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

TEST(Readout, CarriesATemperatureOrItsAbsence) {
    EXPECT_EQ(Readout::celsius(42.5).celsiusValue(), 42.5);
    EXPECT_EQ(Readout::unavailable(ThermalPressure::serious).celsiusValue(), std::nullopt);
}

TEST(Readout, IsEqualByCaseAndContent) {
    EXPECT_EQ(Readout::celsius(42.5), Readout::celsius(42.5));
    EXPECT_NE(Readout::celsius(42.5), Readout::celsius(43));
    EXPECT_NE(Readout::celsius(0), Readout::unavailable(ThermalPressure::nominal));
    EXPECT_EQ(Readout::unavailable(ThermalPressure::fair), Readout::unavailable(ThermalPressure::fair));
    EXPECT_NE(Readout::unavailable(ThermalPressure::fair), Readout::unavailable(ThermalPressure::critical));
}

}  // namespace
}  // namespace thermopix
