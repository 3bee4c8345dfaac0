#pragma once

#include <filesystem>
#include <utility>
#include <vector>

#include "platform/linux/sensors/NvidiaCards.h"
#include "platform/linux/sensors/PacedChannel.h"
#include "platform/linux/sensors/SysfsFile.h"
#include "system/HIDSymbols.h"

namespace thermopix {

/// Answers the table of entry points from the kernel's sysfs: every temperature of a hardware monitor, the thermal
/// zones that no monitor publishes, and NVIDIA cards, each a service with a "Product" name in the vocabulary of
/// `SensorSource`. Listing the services looks at the machine anew, and drops no read under way. A service owns its open
/// files; an event is a view of its service, valid until the service's next event. Main thread.
class SysfsHIDSymbols final : public HIDSymbolLoader {
public:
    /// All outlive every service; where `nvidia` is null, its cards are none.
    explicit SysfsHIDSymbols(std::filesystem::path root, NvidiaCards* nvidia = nullptr,
                             FileAccess& access = systemFileAccess(), SensorPolling& polling = readingInPlace());

    [[nodiscard]] HIDSymbolResolution load() override;

    [[nodiscard]] Subscription poll(const SensorPolls& polls) override { return polling_.poll(polls); }
    [[nodiscard]] bool hasChanged() override;

private:
    [[nodiscard]] std::vector<HIDObject> makeServices();
    /// The names in the folders that devices come and go in.
    [[nodiscard]] std::vector<std::filesystem::path> folderEntries() const;

    std::filesystem::path root_;
    NvidiaCards* nvidia_;
    FileAccess& access_;
    SensorPolling& polling_;
    PacedChannels channels_;
    /// When the services were listed last.
    std::vector<std::filesystem::path> listedEntries_;
};

}  // namespace thermopix
