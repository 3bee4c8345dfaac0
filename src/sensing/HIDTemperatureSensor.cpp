#include "sensing/HIDTemperatureSensor.h"

#include <fmt/format.h>

#include <array>
#include <utility>

#include "sensing/SampleWriter.h"

namespace thermopix {

namespace {

constexpr std::array temperatureServices{
    HIDMatching{"PrimaryUsagePage", 0xFF00},  // defined by the vendor
    HIDMatching{"PrimaryUsage", 5},           // temperature sensor
};
constexpr std::string_view nameProperty = "Product";

constexpr std::int64_t temperatureEvent = 15;
constexpr std::int32_t temperatureLevelField = temperatureEvent << 16;
constexpr std::int32_t noOptions = 0;
constexpr std::int64_t noTimestamp = 0;

struct Summary {
    std::string operator()(const HIDTemperatureSensor::Ready& ready) const {
        return fmt::format("ready ({} sensors)", ready.sensorCount);
    }
    std::string operator()(const HIDTemperatureSensor::SymbolsUnavailable& symbols) const {
        return fmt::format("unavailable — IOKit symbol {} did not resolve", symbols.missing);
    }
    std::string operator()(const HIDTemperatureSensor::NoSensorsPublished& none) const {
        if (none.servicesSeen == 0) {
            return "unavailable — no thermal HID services on this Mac";
        }
        return fmt::format("unavailable — {} thermal HID services, none with a Product name", none.servicesSeen);
    }
    std::string operator()(const HIDTemperatureSensor::ClientUnavailable&) const {
        return "unavailable — IOHIDEventSystemClientCreate returned null";
    }
};

}  // namespace

HIDTemperatureSensor::HIDTemperatureSensor(HIDSymbolLoader& loader, DiagnosticLog& log)
    : log_(log), client_(noHIDObject()), availability_(NoSensorsPublished{0}) {
    auto resolution = loader.load();
    if (!resolution.resolved) {
        availability_ = SymbolsUnavailable{std::move(resolution.failed)};
    } else if (HIDObject client = resolution.resolved->create(); client == nullptr) {
        availability_ = ClientUnavailable{};
    } else {
        symbols_ = std::move(resolution.resolved);
        client_ = std::move(client);
        resolveSensors();
    }
    log_.diag("sensor", summary(availability_));
}

HIDTemperatureSensor::~HIDTemperatureSensor() = default;

bool HIDTemperatureSensor::isAvailable() const {
    return std::holds_alternative<Ready>(availability_);
}

void HIDTemperatureSensor::sample(SensorNamePredicate wanted, std::vector<SensorSample>& samples) {
    SampleWriter writer(samples);
    isAwaitingAnswer_ = false;
    for (const auto& sensor : sensors_) {
        if (!wanted(sensor.name)) {
            continue;
        }
        if (const auto celsius = read(sensor)) {
            writer.append(sensor.name, *celsius);
        } else if (isAwaited(sensor)) {
            isAwaitingAnswer_ = true;
        }
    }
}

void HIDTemperatureSensor::refresh() {
    const Availability previous = availability_;
    resolveSensors();
    if (availability_ != previous) {
        log_.diag("sensor", fmt::format("re-resolved: {} → {}", summary(previous), summary(availability_)));
    }
}

std::optional<double> HIDTemperatureSensor::read(const NamedService& sensor) const {
    if (!symbols_) {
        return std::nullopt;
    }
    const HIDObject event = symbols_->copyEvent(sensor.service.get(), temperatureEvent, noOptions, noTimestamp);
    if (event == nullptr) {
        return std::nullopt;
    }
    const double celsius = symbols_->getFloat(event.get(), temperatureLevelField);
    return isPlausible(celsius) ? std::optional(celsius) : std::nullopt;
}

bool HIDTemperatureSensor::isAwaited(const NamedService& sensor) const {
    return symbols_ && symbols_->isAwaited && symbols_->isAwaited(sensor.service.get());
}

void HIDTemperatureSensor::resolveSensors() {
    if (!symbols_ || client_ == nullptr) {
        return;
    }
    symbols_->setMatching(client_.get(), temperatureServices);
    auto services = symbols_->copyServices(client_.get());
    if (!services) {
        sensors_.clear();
        availability_ = NoSensorsPublished{0};
        return;
    }
    std::vector<NamedService> named;
    for (HIDObject& service : *services) {
        auto property = symbols_->copyProperty(service.get(), nameProperty);
        auto* const name = property ? std::get_if<std::string>(&*property) : nullptr;
        if (name != nullptr && !name->empty()) {
            named.push_back({std::move(*name), std::move(service)});
        }
    }
    sensors_ = std::move(named);
    if (sensors_.empty()) {
        availability_ = NoSensorsPublished{static_cast<std::int64_t>(services->size())};
    } else {
        availability_ = Ready{static_cast<std::int64_t>(sensors_.size())};
    }
}

bool isPlausible(double celsius) {
    return celsius >= HIDTemperatureSensor::minimumPlausibleCelsius &&
           celsius <= HIDTemperatureSensor::maximumPlausibleCelsius;
}

std::string summary(const HIDTemperatureSensor::Availability& availability) {
    return std::visit(Summary{}, availability);
}

}  // namespace thermopix
