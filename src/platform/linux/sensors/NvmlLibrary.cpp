#include "platform/linux/sensors/NvmlLibrary.h"

#include <dlfcn.h>

namespace thermopix {

namespace {

constexpr int success = 0;         // NVML_SUCCESS
constexpr int dieTemperature = 0;  // NVML_TEMPERATURE_GPU

template <typename Function>
bool lookUp(void* library, const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(::dlsym(library, name));
    return function != nullptr;
}

}  // namespace

std::unique_ptr<NvmlLibrary> NvmlLibrary::load(const std::string& name) {
    void* const library = ::dlopen(name.c_str(), RTLD_LAZY | RTLD_LOCAL);
    if (library == nullptr) {
        return nullptr;
    }
    Functions functions{};
    if (lookUp(library, "nvmlInit_v2", functions.initialise) && lookUp(library, "nvmlShutdown", functions.shutDown) &&
        lookUp(library, "nvmlDeviceGetHandleByPciBusId_v2", functions.deviceByPciAddress) &&
        lookUp(library, "nvmlDeviceGetTemperature", functions.temperature)) {
        return std::unique_ptr<NvmlLibrary>(new NvmlLibrary(library, functions));
    }
    ::dlclose(library);
    return nullptr;
}

NvmlLibrary::~NvmlLibrary() {
    endSession();
    ::dlclose(library_);
}

std::optional<double> NvmlLibrary::read(Use& use, const char* pciAddress) {
    ++readings_;
    if (!join(use)) {
        return std::nullopt;
    }
    if (use.device_ == nullptr && functions_.deviceByPciAddress(pciAddress, &use.device_) != success) {
        use.device_ = nullptr;
        return std::nullopt;
    }
    unsigned celsius = 0;
    if (functions_.temperature(use.device_, dieTemperature, &celsius) != success) {
        use.device_ = nullptr;
        return std::nullopt;
    }
    return static_cast<double>(celsius);
}

void NvmlLibrary::drop(Use& use) {
    if (use.session_ != session_) {
        return;
    }
    use.session_ = 0;
    if (--users_ == 0) {
        endSession();
    }
}

void NvmlLibrary::noteOtherReading(std::uint64_t& lastSeen) {
    if (lastSeen == readings_) {
        endSession();
    }
    lastSeen = readings_;
}

bool NvmlLibrary::join(Use& use) {
    if (use.session_ == session_) {
        return true;
    }
    if (isBroken_) {
        return false;
    }
    if (!isRunning_) {
        isBroken_ = functions_.initialise() != success;
        isRunning_ = !isBroken_;
    }
    if (isBroken_) {
        return false;
    }
    ++users_;
    use.session_ = session_;
    use.device_ = nullptr;
    return true;
}

void NvmlLibrary::endSession() {
    if (isRunning_) {
        functions_.shutDown();
        isRunning_ = false;
        users_ = 0;
        ++session_;
    }
}

}  // namespace thermopix
