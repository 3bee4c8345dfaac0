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
    std::unique_ptr<SensorChannel> channel;
    /// Set for a sensor other than a card, on a machine with cards: told of every reading.
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

std::vector<HIDObject> makeServices(const std::filesystem::path& root, NvidiaCards* nvidia, FileAccess& access) {
    auto devices = discoverSensorDevices(root);
    const auto cards = discoverNvidiaCards(root);
    const auto firstCard = devices.size();
    const bool hasCards = nvidia != nullptr && !cards.empty() && nvidia->areReadable();
    if (hasCards) {
        devices.insert(devices.end(), cards.begin(), cards.end());
    }

    std::vector<HIDObject> services;
    for (auto& named : nameChannels(devices)) {
        const auto& device = devices[named.device];
        auto service = std::make_unique<Service>();
        service->name = std::move(named.name);
        if (named.device >= firstCard) {
            service->channel = std::make_unique<NvidiaChannel>(access, device, *nvidia);
        } else {
            auto channel = std::make_unique<SysfsChannel>(access, device, device.channels[named.channel]);
            if (!channel->isOpen()) {
                continue;
            }
            service->channel = std::move(channel);
            service->cards = hasCards ? nvidia : nullptr;
        }
        services.push_back(owned(std::move(service)));
    }
    return services;
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

SysfsHIDSymbols::SysfsHIDSymbols(std::filesystem::path root, NvidiaCards* nvidia, FileAccess& access)
    : root_(std::move(root)), nvidia_(nvidia), access_(access) {}

HIDSymbolResolution SysfsHIDSymbols::load() {
    HIDSymbols symbols{
        .create = [this] { return borrowed(this); },
        .setMatching = [](void*, const std::array<HIDMatching, 2>&) {},
        .copyServices = [this](void*) -> std::optional<std::vector<HIDObject>> {
            return makeServices(root_, nvidia_, access_);
        },
        .copyProperty = productOf,
        .copyEvent = [](void* service, std::int64_t, std::int32_t, std::int64_t) { return readService(service); },
        .getFloat = [](void* event, std::int32_t) { return static_cast<const Service*>(event)->celsius; },
    };
    return {std::move(symbols), {}};
}

}  // namespace thermopix
