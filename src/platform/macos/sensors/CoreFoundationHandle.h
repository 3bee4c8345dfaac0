#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace thermopix {

/// Owns one reference to a Core Foundation object and gives it back exactly once; empty means absent.
template <typename Reference>
class CoreFoundationHandle {
public:
    CoreFoundationHandle() = default;
    /// Takes over the reference that a function with Create or Copy in its name returned.
    explicit CoreFoundationHandle(Reference owned) : reference_(owned) {}
    CoreFoundationHandle(CoreFoundationHandle&& other) noexcept
        : reference_(std::exchange(other.reference_, nullptr)) {}
    CoreFoundationHandle& operator=(CoreFoundationHandle&& other) noexcept {
        std::swap(reference_, other.reference_);
        return *this;
    }
    CoreFoundationHandle(const CoreFoundationHandle&) = delete;
    CoreFoundationHandle& operator=(const CoreFoundationHandle&) = delete;
    ~CoreFoundationHandle() {
        if (reference_ != nullptr) {
            CFRelease(reference_);
        }
    }

    [[nodiscard]] Reference get() const { return reference_; }
    [[nodiscard]] explicit operator bool() const { return reference_ != nullptr; }

private:
    Reference reference_ = nullptr;
};

}  // namespace thermopix
