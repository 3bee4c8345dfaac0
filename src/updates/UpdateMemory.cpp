#include "updates/UpdateMemory.h"

#include <charconv>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

namespace thermopix {

namespace {

constexpr std::string_view lastCheckKey = "updates.lastCheck";
constexpr std::string_view announcedVersionKey = "updates.announcedVersion";
/// The year 10000: a bound for arithmetic with times.
constexpr std::int64_t endOfTime = 253402300800;

/// Whole seconds since 1970, in digits.
std::optional<UpdateMemory::Time> timeOf(std::string_view text) {
    std::int64_t seconds = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, seconds);
    if (result.ec != std::errc() || result.ptr != end || seconds < 0 || seconds >= endOfTime) {
        return std::nullopt;
    }
    return UpdateMemory::Time(std::chrono::seconds(seconds));
}

}  // namespace

UpdateMemory::UpdateMemory(std::shared_ptr<UserDefaults> defaults)
    : defaults_(std::move(defaults)),
      lastCheck_(timeOf(defaults_->data(lastCheckKey).value_or(""))),
      announcedVersion_(defaults_->data(announcedVersionKey).value_or("")) {}

void UpdateMemory::setLastCheck(Time time) {
    lastCheck_ = time;
    defaults_->setData(lastCheckKey, std::to_string(time.time_since_epoch().count()));
}

void UpdateMemory::setAnnouncedVersion(const std::string& version) {
    announcedVersion_ = version;
    defaults_->setData(announcedVersionKey, version);
}

}  // namespace thermopix
