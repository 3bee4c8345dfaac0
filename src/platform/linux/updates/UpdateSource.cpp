#include "platform/linux/updates/UpdateSource.h"

#include <string_view>

namespace thermopix {

UpdateSource UpdateSource::ofThisBuild() {
    constexpr auto feed = std::string_view(THERMOPIX_FEED_URL);
    if (THERMOPIX_UPDATES_BY_PACKAGE_MANAGER) {
        return {UpdateOrigin::packageManager, {}};
    }
    return feed.empty() ? UpdateSource{} : UpdateSource{UpdateOrigin::feed, std::string(feed)};
}

}  // namespace thermopix
