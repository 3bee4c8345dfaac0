#include "NvmlStandIn.h"

#include <cstdio>

namespace {
constexpr int success = 0;
constexpr int uninitialised = 1;
constexpr int unknown = 999;

NvmlStandIn state;

bool isRunning() {
    return state.initialisations > state.shutdowns;
}
}  // namespace

extern "C" {

NvmlStandIn* nvmlStandIn();
int nvmlInit_v2();
int nvmlShutdown();
int nvmlDeviceGetHandleByPciBusId_v2(const char* address, void** device);
int nvmlDeviceGetTemperature(void* device, int sensor, unsigned* celsius);

NvmlStandIn* nvmlStandIn() {
    return &state;
}

int nvmlInit_v2() {
    ++state.initialisations;
    if (!state.initialises) {
        ++state.shutdowns;
        return unknown;
    }
    return success;
}

int nvmlShutdown() {
    ++state.shutdowns;
    return success;
}

int nvmlDeviceGetHandleByPciBusId_v2(const char* address, void** device) {
    ++state.lookups;
    if (!isRunning()) {
        return uninitialised;
    }
    std::snprintf(state.lastAddress, sizeof state.lastAddress, "%s", address);
    *device = &state;
    return success;
}

int nvmlDeviceGetTemperature(void* device, int sensor, unsigned* celsius) {
    ++state.readings;
    if (!isRunning() || device != &state || sensor != 0) {
        return uninitialised;
    }
    *celsius = state.celsius;
    return state.answers ? success : unknown;
}
}
