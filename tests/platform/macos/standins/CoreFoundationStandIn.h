#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <string>
#include <vector>

/// Core Foundation as far as the macOS layer uses it, with every reference counted.
namespace thermopix::CoreFoundationStandIn {

/// New objects with one reference, which is the caller's. An array keeps its items.
[[nodiscard]] CFStringRef makeString(std::string text);
[[nodiscard]] CFTypeRef makeOther();
[[nodiscard]] CFArrayRef makeArray(const std::vector<CFTypeRef>& items);

[[nodiscard]] std::string text(CFStringRef string);
[[nodiscard]] int number(CFNumberRef number);
/// Keys and values in the order in which they were given.
[[nodiscard]] std::vector<std::pair<std::string, int>> entries(CFDictionaryRef dictionary);

/// Objects that somebody still holds.
[[nodiscard]] int liveObjects();

/// Releases of what was gone already.
[[nodiscard]] int overReleases();

void forget();

}  // namespace thermopix::CoreFoundationStandIn
