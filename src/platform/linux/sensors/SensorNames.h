#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/linux/sensors/SensorDevice.h"

namespace thermopix {

/// A channel of a device under the name that it is published by.
struct NamedChannel {
    std::string name;
    std::size_t device;
    std::size_t channel;
};

/// Names for all channels of all devices, in the vocabulary of `SensorSource`: a channel's name matches the patterns
/// of its own family and of no other. Names are distinct, one line of UTF-8 and at most 64 characters, whatever the
/// kernel's texts hold. The list is ordered by family and then as the devices are.
[[nodiscard]] std::vector<NamedChannel> nameChannels(const std::vector<SensorDevice>& devices);

}  // namespace thermopix
