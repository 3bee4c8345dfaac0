#include "platform/linux/sensors/SysfsHIDSymbols.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/linux/sensors/NvidiaChannel.h"
#include "platform/linux/sensors/SensorChannel.h"
#include "platform/linux/sensors/SensorNames.h"
#include "platform/linux/sensors/SysfsTree.h"

namespace thermopix {

namespace {

constexpr std::string_view nameProperty = "Product";

struct Service {
    std::string name;
    std::shared_ptr<SensorChannel> channel;
    /// Set for a sensor other than a card that is polled, on a machine with cards: told of every reading.
    NvidiaCards* cards = nullptr;
    std::uint64_t lastSeenCardReading = 0;
    /// The reading that the last event carries.
    double celsius = std::numeric_limits<double>::quiet_NaN();
};

HIDObject owned(std::unique_ptr<Service> service) {
    return {service.release(), [](void* object) { delete static_cast<Service*>(object); }};
}

HIDObject borrowed(void* object) {
    return {object, [](void*) {}};
}

std::optional<HIDProperty> productOf(void* service, std::string_view key) {
    return key == nameProperty ? std::optional<HIDProperty>(static_cast<const Service*>(service)->name) : std::nullopt;
}

HIDObject readService(void* object) {
    auto& service = *static_cast<Service*>(object);
    if (service.cards != nullptr) {
        service.cards->noteOtherReading(service.lastSeenCardReading);
    }
    const auto celsius = service.channel->read();
    if (!celsius) {
        return noHIDObject();
    }
    service.celsius = *celsius;
    return borrowed(&service);
}

}  // namespace

SysfsHIDSymbols::SysfsHIDSymbols(std::filesystem::path root, NvidiaCards* nvidia, FileAccess& access,
                                 SensorPolling& polling)
    : root_(std::move(root)), nvidia_(nvidia), access_(access), polling_(polling), channels_(access, polling) {}

HIDSymbolResolution SysfsHIDSymbols::load() {
    HIDSymbols symbols{
        .create = [this] { return borrowed(this); },
        .setMatching = [](void*, const std::array<HIDMatching, 2>&) {},
        .copyServices = [this](void*) -> std::optional<std::vector<HIDObject>> { return makeServices(); },
        .copyProperty = productOf,
        .copyEvent = [](void* service, std::int64_t, std::int32_t, std::int64_t) { return readService(service); },
        .getFloat = [](void* event, std::int32_t) { return static_cast<const Service*>(event)->celsius; },
        .isAwaited = [](void* service) { return static_cast<const Service*>(service)->channel->isAwaited(); },
    };
    return {std::move(symbols), {}};
}

bool SysfsHIDSymbols::hasChanged() {
    return folderEntries() != listedEntries_;
}

std::vector<std::filesystem::path> SysfsHIDSymbols::folderEntries() const {
    auto found = entries(root_ / "class" / "hwmon");
    const auto thermal = entries(root_ / "class" / "thermal");
    found.insert(found.end(), thermal.begin(), thermal.end());
    return found;
}

std::vector<HIDObject> SysfsHIDSymbols::makeServices() {
    listedEntries_ = folderEntries();
    auto devices = discoverSensorDevices(root_);
    const auto cards = discoverNvidiaCards(root_);
    const auto firstCard = devices.size();
    const bool hasCards = nvidia_ != nullptr && !cards.empty() && nvidia_->areReadable();
    if (hasCards) {
        devices.insert(devices.end(), cards.begin(), cards.end());
    }

    polling_.noteDiscovery();
    channels_.forgetClosed();
    std::vector<HIDObject> services;
    for (auto& named : nameChannels(devices)) {
        const auto& device = devices[named.device];
        auto service = std::make_unique<Service>();
        if (named.device >= firstCard) {
            service->channel = std::make_shared<NvidiaChannel>(access_, device, *nvidia_, polling_);
        } else {
            service->channel = channels_.open(device, device.channels[named.channel]);
            service->cards = hasCards && polling_.reader() != nullptr ? nvidia_ : nullptr;
        }
        if (service->channel) {
            service->name = std::move(named.name);
            services.push_back(owned(std::move(service)));
        }
    }
    return services;
}

}  // namespace thermopix
