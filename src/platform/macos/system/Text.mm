#include "platform/macos/system/Text.h"

namespace thermopix {

NSString* nsString(std::string_view text) {
    NSString* converted = [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
    return converted != nil ? converted : @"";
}

std::string utf8(NSString* text) {
    const char* bytes = text.UTF8String;
    return bytes != nullptr ? std::string(bytes) : std::string();
}

}  // namespace thermopix
