#pragma once

#include <filesystem>

#include "platform/linux/sensors/NvidiaCards.h"
#include "platform/linux/sensors/SysfsFile.h"
#include "system/HIDSymbols.h"

namespace thermopix {

/// Answers the table of entry points from the kernel's sysfs: every temperature of a hardware monitor, the thermal
/// zones that no monitor publishes, and NVIDIA cards, each a service with a "Product" name in
/// the vocabulary of `SensorSource`. Listing the services looks at the machine anew. A service owns its open files;
/// an event is a view of its service, valid until the service's next event. Main thread.
class SysfsHIDSymbols final : public HIDSymbolLoader {
public:
    /// `nvidia` and `access` outlive every service; where `nvidia` is null, its cards are none.
    explicit SysfsHIDSymbols(std::filesystem::path root, NvidiaCards* nvidia = nullptr,
                             FileAccess& access = systemFileAccess());

    [[nodiscard]] HIDSymbolResolution load() override;

private:
    std::filesystem::path root_;
    NvidiaCards* nvidia_;
    FileAccess& access_;
};

}  // namespace thermopix
