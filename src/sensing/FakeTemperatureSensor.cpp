#include "sensing/FakeTemperatureSensor.h"

#include <algorithm>
#include <utility>

#include "base/Fatal.h"
#include "sensing/SampleWriter.h"

namespace thermopix {

FakeTemperatureSensor::FakeTemperatureSensor(std::vector<SensorSample> scripted, bool isAvailable)
    : available(isAvailable), samples(std::move(scripted)) {}

const std::vector<SensorSample>& FakeTemperatureSensor::appleSiliconFixture() {
    static const std::vector<SensorSample> fixture{
        {"pACC MTR Temp Sensor2", 53.97}, {"pACC MTR Temp Sensor3", 60.56}, {"pACC MTR Temp Sensor4", 59.25},
        {"eACC MTR Temp Sensor0", 47.48}, {"eACC MTR Temp Sensor3", 47.86}, {"GPU MTR Temp Sensor1", 30.0},
        {"GPU MTR Temp Sensor4", 30.0},   {"SOC MTR Temp Sensor1", 52.06},  {"PMGR SOC Die Temp Sensor0", 47.47},
        {"gas gauge battery", 32.4},      {"NAND CH0 temp", 44.0},          {"PMU tdie1", 52.74},
    };
    return fixture;
}

void FakeTemperatureSensor::sample(SensorNamePredicate wanted, std::vector<SensorSample>& found) {
    sampleCallCount = checkedAdd(sampleCallCount, 1);
    lastPredicateMatchCount = std::count_if(samples.begin(), samples.end(),
                                            [&](const SensorSample& scripted) { return wanted(scripted.name); });
    SampleWriter writer(found);
    for (const auto& scripted : samples) {
        if (wanted(scripted.name)) {
            writer.append(scripted.name, scripted.celsius);
        }
    }
}

void FakeTemperatureSensor::refresh() {
    refreshCallCount = checkedAdd(refreshCallCount, 1);
    if (const auto callback = onRefresh) {
        callback(*this);
    }
}

}  // namespace thermopix
