#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/sensors/SensorFamily.h"

namespace thermopix {

/// A device that publishes temperatures: a hardware monitor, a thermal zone or a graphics card.
struct SensorDevice {
    struct Channel {
        /// The number in the kernel's file names.
        int index = 0;
        /// The kernel's bytes; empty when the channel has no label.
        std::string label;
        /// The file with the reading; empty for a graphics card that is read through its vendor's library.
        std::filesystem::path input;
        /// The file that is 1 while the sensor is broken; it need not exist.
        std::filesystem::path fault;
    };

    SensorFamily family = SensorFamily::other;
    /// The driver's or the zone's name, the kernel's bytes with '-' written as '_'.
    std::string chip;
    /// The device itself, every link followed; its `power` folder tells whether it sleeps.
    std::filesystem::path device;
    /// Where it hangs in the machine, without the numbers that the kernel gives out anew at each start.
    std::string place;
    /// That number; it only orders devices that hang in the same place.
    int number = 0;
    std::vector<Channel> channels;
};

/// Every device below the root of a sysfs tree that publishes a temperature, by family and then by place. A thermal
/// zone whose temperature a hardware monitor publishes too is left out.
[[nodiscard]] std::vector<SensorDevice> discoverSensorDevices(const std::filesystem::path& root);

/// The graphics cards below the root that only their vendor's library can read, by place; one channel each. The name
/// of the folder `device` is the card's PCI address.
[[nodiscard]] std::vector<SensorDevice> discoverNvidiaCards(const std::filesystem::path& root);

}  // namespace thermopix
