#include "platform/linux/updates/LinuxUpdater.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "environment/AppInfo.h"
#include "platform/linux/files/CompanionProgram.h"
#include "platform/linux/updates/PageOpener.h"

namespace thermopix {

namespace {

constexpr const char* checkName = "thermopix-update-check";

/// A program that is not there is named beside this one: starting it says what is missing.
std::vector<std::string> commandOf(const UpdateSource& source, const SystemInformation& system) {
    const std::filesystem::path folder = system.bundlePath();
    return {companionProgram(folder, checkName).value_or(folder / checkName).string(),
            "--feed",
            source.feed,
            "--version",
            AppInfo::shortVersion(system),
            "--build",
            AppInfo::build(system)};
}

}  // namespace

LinuxUpdater::LinuxUpdater(const UpdateSource& source, const Services& services)
    : checking_(services.mainLoop, commandOf(source, services.system)),
      notices_(services.sessionBus, [&log = services.log](const std::string& page,
                                                          const std::string& token) { openPage(page, token, log); }),
      controller_(source.origin, AppInfo::shortVersion(services.system),
                  {services.mainLoop, checking_, notices_, services.defaults, services.log,
                   [] { return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()); }}) {}

}  // namespace thermopix
