#include <cstdint>
#include <string>
#include <string_view>

#include "base/Fatal.h"
#include "platform/linux/application/KernelEvents.h"

using namespace thermopix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view message(reinterpret_cast<const char*>(data), size);
    if (KernelEvents::concernsSensors(message)) {
        require(message.find("SUBSYSTEM=") != std::string_view::npos, "only a subsystem is of concern");
    }
    const std::string whole = "add@/x" + std::string(1, '\0') + "SUBSYSTEM=hwmon" + std::string(1, '\0');
    require(KernelEvents::concernsSensors(whole + std::string(message)), "what follows takes nothing away");
    return 0;
}
