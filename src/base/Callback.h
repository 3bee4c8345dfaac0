#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace thermopix {

/// Work that others may set, and that may replace itself or destroy its owner while it runs: it lives to the end of
/// its call. Calling costs no copy and no allocation; without work nothing happens. One thread.
class Callback {
public:
    Callback() = default;

    template <typename Work>
    requires(!std::is_same_v<std::remove_cvref_t<Work>, Callback> && std::is_invocable_v<Work&>)
        // NOLINTNEXTLINE(google-explicit-constructor,bugprone-forwarding-reference-overload): assigned like a function
        Callback(Work&& work)
        : work_(std::make_shared<const std::function<void()>>(std::forward<Work>(work))) {}

    // NOLINTNEXTLINE(google-explicit-constructor): assigned like a function
    Callback(std::nullptr_t /*none*/) {}

    void operator()() const {
        if (const auto running = work_) {
            (*running)();
        }
    }

private:
    std::shared_ptr<const std::function<void()>> work_;
};

}  // namespace thermopix
