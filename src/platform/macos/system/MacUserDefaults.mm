#include "platform/macos/system/MacUserDefaults.h"

#import <Foundation/Foundation.h>

#include "platform/macos/system/Text.h"

namespace thermopix {

namespace {

class MacUserDefaults final : public UserDefaults {
public:
    explicit MacUserDefaults(NSUserDefaults* defaults) : defaults_(defaults) {}

    [[nodiscard]] std::optional<std::string> data(std::string_view key) const override {
        @autoreleasepool {
            NSData* data = [defaults_ dataForKey:nsString(key)];
            return data != nil ? std::optional(std::string(static_cast<const char*>(data.bytes), data.length))
                               : std::nullopt;
        }
    }

    bool setData(std::string_view key, std::string_view bytes) override {
        @autoreleasepool {
            [defaults_ setObject:[NSData dataWithBytes:bytes.data() length:bytes.size()] forKey:nsString(key)];
            return true;
        }
    }

private:
    NSUserDefaults* defaults_;
};

}  // namespace

std::shared_ptr<UserDefaults> MacUserDefaultsDatabases::standard() {
    return std::make_shared<MacUserDefaults>(NSUserDefaults.standardUserDefaults);
}

std::shared_ptr<UserDefaults> MacUserDefaultsDatabases::suite(std::string_view name) {
    NSUserDefaults* defaults = [[NSUserDefaults alloc] initWithSuiteName:nsString(name)];
    return defaults != nil ? std::make_shared<MacUserDefaults>(defaults) : nullptr;
}

}  // namespace thermopix
