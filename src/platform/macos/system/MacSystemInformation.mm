#include "platform/macos/system/MacSystemInformation.h"

#import <Foundation/Foundation.h>
#include <sys/sysctl.h>

#include "platform/macos/system/Text.h"

namespace thermopix {

std::optional<std::string> MacSystemInformation::bytes(std::string_view name) const {
    const std::string key(name);
    std::size_t size = 0;
    if (sysctlbyname(key.c_str(), nullptr, &size, nullptr, 0) != 0) {
        return std::nullopt;
    }
    std::string value(size, '\0');
    if (sysctlbyname(key.c_str(), value.data(), &size, nullptr, 0) != 0) {
        return std::nullopt;
    }
    value.resize(size);
    return value;
}

std::optional<std::int32_t> MacSystemInformation::integer(std::string_view name) const {
    std::int32_t value = 0;
    std::size_t size = sizeof value;
    const bool isRead = sysctlbyname(std::string(name).c_str(), &value, &size, nullptr, 0) == 0;
    return isRead && size == sizeof value ? std::optional(value) : std::nullopt;
}

std::string MacSystemInformation::operatingSystemVersion() const {
    @autoreleasepool {
        return utf8(NSProcessInfo.processInfo.operatingSystemVersionString);
    }
}

std::string MacSystemInformation::bundlePath() const {
    @autoreleasepool {
        return utf8(NSBundle.mainBundle.bundlePath);
    }
}

std::optional<std::string> MacSystemInformation::bundleInformation(std::string_view key) const {
    @autoreleasepool {
        NSObject* value = [NSBundle.mainBundle objectForInfoDictionaryKey:nsString(key)];
        if (![value isKindOfClass:NSString.class]) {
            return std::nullopt;
        }
        return utf8(static_cast<NSString*>(value));
    }
}

}  // namespace thermopix
