#include "platform/macos/system/Machine.h"

#include <sys/sysctl.h>

#include <cstddef>
#include <string_view>

#include "base/Unicode.h"
#include "system/SystemInformation.h"

namespace thermopix::Machine {

std::string string(const char* name) {
    std::size_t size = 0;
    if (sysctlbyname(name, nullptr, &size, nullptr, 0) != 0 || size < 1) {
        return std::string(SystemInformation::unknown);
    }
    std::string value(size, '\0');
    if (sysctlbyname(name, value.data(), &size, nullptr, 0) != 0) {
        return std::string(SystemInformation::unknown);
    }
    value.resize(size);
    return repairedUtf8(std::string_view(value).substr(0, value.find('\0')));
}

std::optional<std::int32_t> integer(const char* name) {
    std::int32_t value = 0;
    std::size_t size = sizeof value;
    const bool isRead = sysctlbyname(name, &value, &size, nullptr, 0) == 0;
    return isRead && size == sizeof value ? std::optional(value) : std::nullopt;
}

}  // namespace thermopix::Machine
