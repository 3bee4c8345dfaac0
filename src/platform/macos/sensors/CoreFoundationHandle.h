#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <memory>
#include <type_traits>

namespace thermopix {

struct CoreFoundationRelease {
    void operator()(CFTypeRef owned) const { CFRelease(owned); }
};

/// Owns the one reference that a function with Create or Copy in its name returned; empty means absent.
template <typename Reference>
using CoreFoundationHandle = std::unique_ptr<std::remove_pointer_t<Reference>, CoreFoundationRelease>;

}  // namespace thermopix
