#pragma once

#include <functional>
#include <string_view>

#include "platform/linux/files/Descriptor.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

/// Hears from the kernel that a hardware monitor or a thermal zone has come or gone (uevents over netlink, as udev(7)
/// reads them). Anyone may write to the socket: what is heard is a reason to look, and nothing more. Main thread.
class KernelEvents {
public:
    /// None where the kernel gives no socket; inside a sandbox the socket may stay silent.
    [[nodiscard]] static Descriptor openSocket();

    /// Calls `onSensors` while it lives; without a socket it does nothing.
    KernelEvents(Descriptor socket, std::function<void()> onSensors);
    KernelEvents(const KernelEvents&) = delete;
    KernelEvents& operator=(const KernelEvents&) = delete;

    /// Whether a message of the kernel ("add@/devices/...", then fields that end in zero bytes) is about sensors.
    [[nodiscard]] static bool concernsSensors(std::string_view message);

private:
    void receive();

    Descriptor socket_;
    std::function<void()> onSensors_;
    GSourceHandle source_;
};

}  // namespace thermopix
