#pragma once

#include "platform/macos/system/Machine.h"
#include "system/SystemInformation.h"

namespace thermopix {

/// sysctl, the process information and the main bundle.
class MacSystemInformation final : public SystemInformation {
public:
    [[nodiscard]] std::string model() const override { return Machine::model(); }
    [[nodiscard]] std::string processor() const override { return Machine::cpu(); }
    [[nodiscard]] bool isVirtualMachine() const override { return Machine::integer("kern.hv_vmm_present") == 1; }
    [[nodiscard]] std::string operatingSystemVersion() const override;
    [[nodiscard]] std::string bundlePath() const override;
    [[nodiscard]] std::optional<std::string> shortVersion() const override;
    [[nodiscard]] std::optional<std::string> build() const override;
};

}  // namespace thermopix
