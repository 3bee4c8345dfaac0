#pragma once

#include "system/LoginItemManaging.h"

namespace thermopix {

/// The main application as a service of the system's login items; nothing is cached.
class MacLoginItem final : public LoginItemManaging {
public:
    [[nodiscard]] bool isEnabled() const override;
    [[nodiscard]] std::optional<ServiceError> setEnabled(bool enabled) override;
};

}  // namespace thermopix
