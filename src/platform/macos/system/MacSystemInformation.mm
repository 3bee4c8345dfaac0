#include "platform/macos/system/MacSystemInformation.h"

#import <Foundation/Foundation.h>

#include "platform/macos/system/Text.h"

namespace thermopix {

namespace {

std::optional<std::string> bundleInformation(NSString* key) {
    @autoreleasepool {
        NSObject* value = [NSBundle.mainBundle objectForInfoDictionaryKey:key];
        if (![value isKindOfClass:NSString.class]) {
            return std::nullopt;
        }
        return utf8(static_cast<NSString*>(value));
    }
}

}  // namespace

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

std::optional<std::string> MacSystemInformation::shortVersion() const {
    return bundleInformation(@"CFBundleShortVersionString");
}

std::optional<std::string> MacSystemInformation::build() const {
    return bundleInformation(@"CFBundleVersion");
}

}  // namespace thermopix
