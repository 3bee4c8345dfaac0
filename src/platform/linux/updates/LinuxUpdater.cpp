#include "platform/linux/updates/LinuxUpdater.h"

#include <chrono>
#include <string_view>
#include <vector>

#include "app/AppInfo.h"
#include "platform/linux/updates/PageOpener.h"

namespace thermopix {

namespace {

std::vector<std::string> commandOf(const UpdateSource& source, const SystemInformation& system) {
    return {UpdateCheckProcess::programOf(system.bundlePath()).string(),
            "--feed",
            source.feed,
            "--version",
            AppInfo::shortVersion(system),
            "--build",
            AppInfo::build(system)};
}

}  // namespace

UpdateSource UpdateSource::ofThisBuild() {
    constexpr auto feed = std::string_view(THERMOPIX_FEED_URL);
    if (THERMOPIX_UPDATES_BY_PACKAGE_MANAGER) {
        return {UpdateOrigin::packageManager, {}};
    }
    return feed.empty() ? UpdateSource{} : UpdateSource{UpdateOrigin::feed, std::string(feed)};
}

LinuxUpdater::LinuxUpdater(const UpdateSource& source, const Services& services)
    : checking_(services.mainLoop, commandOf(source, services.system)),
      notices_(services.sessionBus, [&log = services.log](const std::string& page,
                                                          const std::string& token) { openPage(page, token, log); }),
      controller_(source.origin, AppInfo::shortVersion(services.system),
                  {services.mainLoop, checking_, notices_, services.defaults, services.log,
                   [] { return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()); }}) {}

}  // namespace thermopix
