#pragma once

#include <string>

#include "fakes/TemporaryFolder.h"

namespace thermopix {

/// The home of a program, with a machine of one processor sensor.
class ProgramHome : public TemporaryFolder {
public:
    ProgramHome() { heat(57); }

    void heat(int celsius) const {
        write("sys/class/hwmon/hwmon0/name", "coretemp\n");
        write("sys/class/hwmon/hwmon0/temp1_label", "Package id 0\n");
        write("sys/class/hwmon/hwmon0/temp1_input", std::to_string(celsius) + "000\n");
    }
};

}  // namespace thermopix
