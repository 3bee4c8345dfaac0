#pragma once

#include <optional>
#include <utility>

#include "system/LoginItemManaging.h"

namespace thermopix {

/// A simulated registration, for automated interface tests.
class FakeLoginItem final : public LoginItemManaging {
public:
    explicit FakeLoginItem(bool isEnabled) : enabled(isEnabled) {}

    [[nodiscard]] bool isEnabled() const override { return enabled; }
    [[nodiscard]] std::optional<ServiceError> setEnabled(bool value) override {
        if (std::exchange(failNextWrite, false)) {
            return ServiceError{"file write: no permission"};
        }
        enabled = value;
        return std::nullopt;
    }

    bool enabled;
    /// Makes the next write, and only that, fail for want of permission.
    bool failNextWrite = false;
};

}  // namespace thermopix
