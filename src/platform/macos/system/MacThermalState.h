#pragma once

#include "system/ThermalStateReader.h"

namespace thermopix {

class MacThermalState final : public ThermalStateReader {
public:
    [[nodiscard]] int thermalState() override;
};

}  // namespace thermopix
