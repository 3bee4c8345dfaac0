#include "sensing/TemperatureUnit.h"

namespace thermopix {

double valueFromCelsius(TemperatureUnit unit, double celsius) {
    switch (unit) {
        case TemperatureUnit::celsius:
            return celsius;
        case TemperatureUnit::fahrenheit:
            return celsius * 9.0 / 5.0 + 32.0;
    }
    return celsius;
}

}  // namespace thermopix
