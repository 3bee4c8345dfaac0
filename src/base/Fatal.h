#pragma once

#include <cstdint>
#include <string_view>

namespace thermopix {

/// Ends the process with "Fatal error: {message}" on standard error. For broken preconditions only, never for
/// anything that input or the system can cause.
[[noreturn]] void fatalError(std::string_view message);

inline void require(bool condition, std::string_view message) {
    if (!condition) {
        fatalError(message);
    }
}

/// 64-bit arithmetic that ends the process on overflow.
[[nodiscard]] inline std::int64_t checkedAdd(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        fatalError("arithmetic overflow");
    }
    return sum;
}

[[nodiscard]] inline std::int64_t checkedMultiply(std::int64_t a, std::int64_t b) {
    std::int64_t product = 0;
    if (__builtin_mul_overflow(a, b, &product)) {
        fatalError("arithmetic overflow");
    }
    return product;
}

}  // namespace thermopix
