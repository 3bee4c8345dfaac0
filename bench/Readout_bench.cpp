// From a poll to pixels, without a desktop.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "AllocationCounter.h"
#include "environment/AppEnvironment.h"
#include "fakes/FakePlatform.h"
#include "fakes/RecordingStatusBar.h"
#include "fakes/TestFiles.h"
#include "menubar/StatusItemController.h"
#include "pixels/Rgba.h"
#include "pixels/StatusImageRenderer.h"
#include "platform/linux/sensors/SysfsHIDSymbols.h"
#include "platform/linux/sensors/SysfsThermalState.h"

namespace thermopix {
namespace {

const std::filesystem::path machine = testFile("fixtures/sysfs/intel-laptop");

/// Real sensors and thermal state of a modelled machine; the rest are fakes.
class ModelledPlatform final : public Platform {
public:
    [[nodiscard]] DiagnosticLog& log() override { return fakes_.log(); }
    [[nodiscard]] StandardOutput& standardOutput() override { return fakes_.standardOutput(); }
    [[nodiscard]] StandardOutput& standardError() override { return fakes_.standardError(); }
    [[nodiscard]] MainLoop& mainLoop() override { return fakes_.mainLoop(); }
    [[nodiscard]] MonotonicClock& clock() override { return fakes_.clock(); }
    [[nodiscard]] SleepNotifications& sleepNotifications() override { return fakes_.sleepNotifications(); }
    [[nodiscard]] UserDefaultsDatabases& userDefaults() override { return fakes_.userDefaults(); }
    [[nodiscard]] SystemInformation& systemInformation() override { return fakes_.systemInformation(); }
    [[nodiscard]] ThermalStateReader& thermalState() override { return thermalState_; }
    [[nodiscard]] HIDSymbolLoader& hidSymbols() override { return hidSymbols_; }
    [[nodiscard]] std::unique_ptr<LoginItemManaging> makeLoginItem() override { return fakes_.makeLoginItem(); }
    [[nodiscard]] std::unique_ptr<UpdaterManaging> makeUpdater() override { return fakes_.makeUpdater(); }
    [[nodiscard]] bool isInsideUnitTestHost() const override { return false; }

private:
    FakePlatform fakes_;
    SysfsThermalState thermalState_{machine};
    SysfsHIDSymbols hidSymbols_{machine};
};

void unchangedPollAndRedraw(benchmark::State& state, SensorSource source) {
    ModelledPlatform platform;
    RecordingStatusBar statusBar;
    AppEnvironment environment({}, {}, platform);
    environment.store().set(&Preferences::source, source);
    StatusItemController controller(environment, statusBar, {});
    controller.refresh();
    controller.refresh();
    if (statusBar.images.size() != 1) {
        state.SkipWithError("the second poll changed the picture");
    }
    const auto before = heapAllocations();
    for (auto _ : state) {
        controller.refresh();
    }
    state.counters["allocations"] = benchmark::Counter(static_cast<double>(heapAllocations() - before));
}

void changedReadoutToPixels(benchmark::State& state, PixelStyle style, PixelPet pet) {
    constexpr std::int64_t pixelsPerPoint = 2;
    Display display{47, TemperatureUnit::celsius, ThermalPressure::nominal, false, PetMood::content};
    const auto before = heapAllocations();
    for (auto _ : state) {
        display.value = *display.value == 47 ? 48 : 47;
        const auto image = StatusImageRenderer::image(display, {.style = style, .pet = pet});
        benchmark::DoNotOptimize(rasterize(image, pixelsPerPoint));
    }
    state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(heapAllocations() - before), benchmark::Counter::kAvgIterations);
}

const bool isRegistered = [] {
    for (const auto source : {SensorSource::cpu, SensorSource::gpu}) {
        benchmark::RegisterBenchmark(("unchangedPollAndRedraw/" + std::string(rawValue(source))).c_str(),
                                     unchangedPollAndRedraw, source);
    }
    for (const auto style : allCases<PixelStyle>()) {
        for (const auto pet : {PixelPet::none, PixelPet::cat}) {
            const std::string name =
                "changedReadoutToPixels/" + std::string(rawValue(style)) + "/" + std::string(rawValue(pet));
            benchmark::RegisterBenchmark(name.c_str(), changedReadoutToPixels, style, pet);
        }
    }
    return true;
}();

}  // namespace
}  // namespace thermopix
