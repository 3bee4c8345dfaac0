#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <string>
#include <utility>
#include <vector>

/// Core Foundation as far as the macOS layer uses it, with every reference counted.
namespace thermopix::CoreFoundationStandIn {

/// New objects with one reference, which is the caller's. An array keeps its items.
[[nodiscard]] CFStringRef makeString(std::string text);
[[nodiscard]] CFArrayRef makeArray(const std::vector<CFTypeRef>& items);
/// Of a kind of its own, and stands for this value.
[[nodiscard]] CFTypeRef makeOther(double value = 0);

[[nodiscard]] const std::string& text(CFStringRef string);
[[nodiscard]] double value(CFTypeRef other);
/// Keys and values in the order in which they were given.
[[nodiscard]] std::vector<std::pair<std::string, int>> entries(CFDictionaryRef dictionary);

/// Objects that somebody still holds.
[[nodiscard]] int liveObjects();

/// Releases of what was gone already.
[[nodiscard]] int overReleases();

void forget();

}  // namespace thermopix::CoreFoundationStandIn
