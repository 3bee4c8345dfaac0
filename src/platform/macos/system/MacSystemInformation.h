#pragma once

#include "system/SystemInformation.h"

namespace thermopix {

/// sysctl, the process information and the main bundle.
class MacSystemInformation final : public SystemInformation {
public:
    [[nodiscard]] std::optional<std::string> bytes(std::string_view name) const override;
    [[nodiscard]] std::optional<std::int32_t> integer(std::string_view name) const override;
    [[nodiscard]] std::string operatingSystemVersion() const override;
    [[nodiscard]] std::string bundlePath() const override;
    [[nodiscard]] std::optional<std::string> bundleInformation(std::string_view key) const override;
};

}  // namespace thermopix
