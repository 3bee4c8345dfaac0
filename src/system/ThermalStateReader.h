#pragma once

namespace thermopix {

/// The system's coarse thermal state: 0 nominal, 1 fair, 2 serious, 3 critical, in the numbering of Foundation's
/// ProcessInfo.ThermalState; read anew at each call, main thread. 0 where the system tells nothing.
class ThermalStateReader {
public:
    virtual ~ThermalStateReader() = default;
    [[nodiscard]] virtual int thermalState() = 0;
};

}  // namespace thermopix
