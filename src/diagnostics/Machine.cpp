#include "diagnostics/Machine.h"

#include "base/Unicode.h"

namespace thermopix::Machine {

std::string string(const SystemInformation& system, std::string_view name) {
    const auto bytes = system.bytes(name);
    if (!bytes || bytes->empty()) {
        return "unknown";
    }
    return repairedUtf8(std::string_view(*bytes).substr(0, bytes->find('\0')));
}

std::optional<std::int32_t> integer(const SystemInformation& system, std::string_view name) {
    return system.integer(name);
}

std::string model(const SystemInformation& system) {
    return string(system, "hw.model");
}

std::string cpu(const SystemInformation& system) {
    return string(system, "machdep.cpu.brand_string");
}

}  // namespace thermopix::Machine
