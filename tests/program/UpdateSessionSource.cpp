// The feed of a test, in place of the one that a build is made with.
#include <cstdlib>

#include "platform/linux/updates/UpdateSource.h"

namespace thermopix {

UpdateSource UpdateSource::ofThisBuild() {
    const char* const feed = std::getenv("THERMOPIX_TEST_FEED");
    return feed == nullptr ? UpdateSource{} : UpdateSource{UpdateOrigin::feed, feed};
}

}  // namespace thermopix
