#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

NS_ASSUME_NONNULL_BEGIN

namespace thermopix {

/// The text as the system has it; empty for what is not UTF-8.
[[nodiscard]] NSString* nsString(std::string_view text);

/// UTF-8; empty for no text.
[[nodiscard]] std::string utf8(NSString* _Nullable text);

}  // namespace thermopix

NS_ASSUME_NONNULL_END
