#pragma once

#include <optional>

#include "system/LoginItemManaging.h"

namespace thermopix {

/// Where the system offers no way to open programs at login.
class UnavailableLoginItem final : public LoginItemManaging {
public:
    [[nodiscard]] bool isEnabled() const override { return false; }
    [[nodiscard]] std::optional<ServiceError> setEnabled(bool value) override;
};

}  // namespace thermopix
