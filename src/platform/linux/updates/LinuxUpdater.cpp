#include "platform/linux/updates/LinuxUpdater.h"

#include <chrono>
#include <filesystem>
#include <system_error>

namespace thermopix {

UpdateSource updateSource(const std::string& package, const std::string& flatpakInformation) {
    std::error_code error;
    if (std::filesystem::exists(flatpakInformation, error)) {
        return {UpdateOrigin::flatpak, {}};
    }
    return package.empty() ? UpdateSource{} : UpdateSource{UpdateOrigin::package, package};
}

LinuxUpdater::LinuxUpdater(const UpdateSource& source, const Services& services)
    : packages_(services.systemBus, services.mainLoop),
      notification_(services.sessionBus, services.log),
      controller_(source, {services.mainLoop, packages_, notification_, services.defaults, services.log,
                           [] { return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()); }}) {
}

}  // namespace thermopix
