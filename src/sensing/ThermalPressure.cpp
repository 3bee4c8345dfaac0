#include "sensing/ThermalPressure.h"

namespace thermopix {

ThermalPressure thermalPressure(int thermalState) {
    const bool isKnown = thermalState >= 0 && thermalState <= static_cast<int>(ThermalPressure::critical);
    return isKnown ? static_cast<ThermalPressure>(thermalState) : ThermalPressure::nominal;
}

}  // namespace thermopix
