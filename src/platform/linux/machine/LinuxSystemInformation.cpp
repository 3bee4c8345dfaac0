#include "platform/linux/machine/LinuxSystemInformation.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <system_error>
#include <utility>
#include <vector>

#include "base/Unicode.h"
#include "platform/linux/files/CompanionProgram.h"
#include "platform/linux/sensors/SysfsTree.h"

namespace thermopix {

namespace {

/// What firmware says when its maker has filled in nothing, in lower case.
constexpr std::array<std::string_view, 18> fillers{"to be filled by o.e.m.",
                                                   "default string",
                                                   "system product name",
                                                   "system manufacturer",
                                                   "system version",
                                                   "not applicable",
                                                   "not specified",
                                                   "not available",
                                                   "none",
                                                   "n/a",
                                                   "unknown",
                                                   "invalid",
                                                   "empty",
                                                   "oem",
                                                   "o.e.m.",
                                                   "product name",
                                                   "0123456789",
                                                   "type1productconfigid"};

struct HypervisorRow {
    /// The start of the firmware's maker or product.
    std::string_view text;
    enum class In { maker, product } in;
};

constexpr std::array hypervisors{
    HypervisorRow{"QEMU", HypervisorRow::In::maker},
    HypervisorRow{"VMware", HypervisorRow::In::maker},
    HypervisorRow{"innotek GmbH", HypervisorRow::In::maker},
    HypervisorRow{"Xen", HypervisorRow::In::maker},
    HypervisorRow{"Bochs", HypervisorRow::In::maker},
    HypervisorRow{"Parallels", HypervisorRow::In::maker},
    HypervisorRow{"BHYVE", HypervisorRow::In::maker},
    HypervisorRow{"KVM", HypervisorRow::In::product},
    HypervisorRow{"VirtualBox", HypervisorRow::In::product},
    HypervisorRow{"VMware", HypervisorRow::In::product},
    HypervisorRow{"Virtual Machine", HypervisorRow::In::product},
    HypervisorRow{"Google Compute Engine", HypervisorRow::In::product},
    HypervisorRow{"OpenStack", HypervisorRow::In::product},
    HypervisorRow{"Apple Virtualization", HypervisorRow::In::product},
};

struct ArmCoreRow {
    std::string_view implementer;
    std::string_view part;
    std::string_view name;
};

/// The cores by the numbers of their identification registers, which is all that 64-bit ARM kernels print.
constexpr std::array armCores{
    ArmCoreRow{"0x41", "0xd03", "Cortex-A53"},  ArmCoreRow{"0x41", "0xd04", "Cortex-A35"},
    ArmCoreRow{"0x41", "0xd05", "Cortex-A55"},  ArmCoreRow{"0x41", "0xd07", "Cortex-A57"},
    ArmCoreRow{"0x41", "0xd08", "Cortex-A72"},  ArmCoreRow{"0x41", "0xd09", "Cortex-A73"},
    ArmCoreRow{"0x41", "0xd0a", "Cortex-A75"},  ArmCoreRow{"0x41", "0xd0b", "Cortex-A76"},
    ArmCoreRow{"0x41", "0xd0c", "Neoverse-N1"}, ArmCoreRow{"0x41", "0xd0d", "Cortex-A77"},
    ArmCoreRow{"0x41", "0xd40", "Neoverse-V1"}, ArmCoreRow{"0x41", "0xd41", "Cortex-A78"},
    ArmCoreRow{"0x41", "0xd44", "Cortex-X1"},   ArmCoreRow{"0x41", "0xd46", "Cortex-A510"},
    ArmCoreRow{"0x41", "0xd47", "Cortex-A710"}, ArmCoreRow{"0x41", "0xd48", "Cortex-X2"},
    ArmCoreRow{"0x41", "0xd49", "Neoverse-N2"}, ArmCoreRow{"0x41", "0xd4b", "Cortex-A78C"},
};

bool isFiller(std::string_view text) {
    return std::find(fillers.begin(), fillers.end(), lowercased(text)) != fillers.end() ||
           text.find_first_not_of(".-_ 0xX") == std::string_view::npos;
}

/// A version that is only a number tells nothing beside a product's name.
bool isBareVersion(std::string_view text) {
    const auto lower = lowercased(text);
    for (const std::string_view word : {"version", "rev", "v"}) {
        if (lower.starts_with(word)) {
            return isBareVersion(trimmed(text.substr(word.size())));
        }
    }
    return text.find_first_not_of("0123456789. ") == std::string_view::npos;
}

std::string joined(const std::vector<std::string>& parts, std::string_view separator) {
    std::string all;
    for (const auto& part : parts) {
        if (!all.empty()) {
            all += separator;
        }
        all += part;
    }
    return all;
}

/// Says nothing twice: leaves out a part that the text holds, and replaces a text that the part begins with.
void appendUnlessSaid(std::vector<std::string>& parts, const std::optional<std::string>& part) {
    if (!part) {
        return;
    }
    const auto said = lowercased(joined(parts, " "));
    const auto added = lowercased(*part);
    if (added.starts_with(said)) {
        parts = {*part};
    } else if (said.find(added) == std::string::npos) {
        parts.push_back(*part);
    }
}

/// A "key : value" file as its non-empty entries in order.
std::vector<std::pair<std::string, std::string>> processorFacts(const std::filesystem::path& file) {
    std::vector<std::pair<std::string, std::string>> facts;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        const auto colon = line.find(':');
        if (colon == std::string::npos) {
            continue;
        }
        const auto key = trimmed(std::string_view(line).substr(0, colon));
        const auto value = trimmed(std::string_view(line).substr(colon + 1));
        if (!value.empty()) {
            facts.emplace_back(key, value);
        }
    }
    return facts;
}

using ProcessorFacts = std::vector<std::pair<std::string, std::string>>;

std::optional<std::string> firstOf(const ProcessorFacts& facts, std::string_view key) {
    const auto found = std::find_if(facts.begin(), facts.end(), [&](const auto& fact) { return fact.first == key; });
    return found == facts.end() ? std::nullopt : std::optional(found->second);
}

/// The distinct cores of an ARM processor, such as "Cortex-A76 + Cortex-A55"; none when the table knows none.
std::optional<std::string> armCoreNames(const ProcessorFacts& facts) {
    std::vector<std::string> names;
    std::string implementer;
    for (const auto& fact : facts) {
        if (fact.first == "CPU implementer") {
            implementer = fact.second;
        } else if (fact.first == "CPU part") {
            const auto* const core = std::find_if(armCores.begin(), armCores.end(), [&](const ArmCoreRow& row) {
                return row.implementer == implementer && row.part == fact.second;
            });
            if (core != armCores.end() && std::find(names.begin(), names.end(), core->name) == names.end()) {
                names.emplace_back(core->name);
            }
        }
    }
    return names.empty() ? std::nullopt : std::optional(joined(names, " + "));
}

std::optional<std::string> processorName(const ProcessorFacts& facts) {
    if (auto name = firstOf(facts, "model name")) {
        return name;
    }
    if (auto cores = armCoreNames(facts)) {
        return cores;
    }
    for (const auto* const key : {"Hardware", "Processor", "cpu model", "cpu", "uarch", "isa"}) {
        if (auto name = firstOf(facts, key)) {
            return name;
        }
    }
    return std::nullopt;
}

bool hasFlag(const ProcessorFacts& facts, std::string_view flag) {
    const auto flags = firstOf(facts, "flags");
    return flags && (" " + *flags + " ").find(" " + std::string(flag) + " ") != std::string::npos;
}

/// A value of `os-release`, which is quoted as in a shell.
std::string unquoted(std::string_view text) {
    const char quote = text.empty() ? '\0' : text.front();
    if (quote != '"' && quote != '\'') {
        return std::string(text);
    }
    std::string value;
    for (std::size_t i = 1; i < text.size() && text[i] != quote; ++i) {
        if (quote == '"' && text[i] == '\\' && i + 1 < text.size()) {
            ++i;
        }
        value += text[i];
    }
    return value;
}

std::optional<std::string> releaseName(const std::filesystem::path& file) {
    constexpr std::string_view key = "PRETTY_NAME=";
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        const auto text = trimmed(line);
        if (text.starts_with(key)) {
            auto name = unquoted(text.substr(key.size()));
            return name.empty() ? std::nullopt : std::optional(std::move(name));
        }
    }
    return std::nullopt;
}

/// The text up to its first zero byte, as UTF-8.
std::string asText(const std::optional<std::string>& bytes) {
    return repairedUtf8(bytes ? std::string_view(*bytes).substr(0, bytes->find('\0')) : SystemInformation::unknown);
}

}  // namespace

MachineFactFiles machineFactFiles(const std::filesystem::path& root) {
    if ((root / "").lexically_normal() == "/sys/") {
        std::error_code error;
        const bool hasOwnRelease = std::filesystem::exists("/etc/os-release", error);
        return {"/proc/cpuinfo", hasOwnRelease ? "/etc/os-release" : "/usr/lib/os-release",
                "/proc/sys/kernel/osrelease"};
    }
    const auto captured = root / "capture";
    return {captured / "cpuinfo", captured / "os-release", captured / "osrelease"};
}

LinuxSystemInformation::LinuxSystemInformation(std::filesystem::path root)
    : root_(std::move(root)), facts_(machineFactFiles(root_)) {}

std::string LinuxSystemInformation::model() const {
    std::vector<std::string> parts;
    const auto product = identity("product_name");
    appendUnlessSaid(parts, product ? identity("sys_vendor") : identity("board_vendor"));
    appendUnlessSaid(parts, product ? product : identity("board_name"));
    if (const auto version = identity("product_version"); product && version && !isBareVersion(*version)) {
        appendUnlessSaid(parts, version);
    }
    return asText(parts.empty() ? readLine(root_ / "firmware" / "devicetree" / "base" / "model") : joined(parts, " "));
}

std::string LinuxSystemInformation::processor() const {
    return asText(processorName(processorFacts(facts_.processors)));
}

bool LinuxSystemInformation::isVirtualMachine() const {
    const auto maker = identity("sys_vendor").value_or("");
    const auto product = identity("product_name").value_or("");
    // Amazon's own machines and its rented virtual ones differ only in this word.
    const bool isRented = maker == "Amazon EC2" && !product.empty() && product.find(".metal") == std::string::npos;
    return isRented || hasFlag(processorFacts(facts_.processors), "hypervisor") ||
           readLine(root_ / "hypervisor" / "type") ||
           std::any_of(hypervisors.begin(), hypervisors.end(), [&](const HypervisorRow& row) {
               return (row.in == HypervisorRow::In::maker ? maker : product).starts_with(row.text);
           });
}

std::string LinuxSystemInformation::operatingSystemVersion() const {
    std::vector<std::string> parts;
    if (auto name = releaseName(facts_.release)) {
        parts.push_back(std::move(*name));
    }
    if (const auto kernel = readLine(facts_.kernel)) {
        parts.push_back("Linux " + *kernel);
    }
    return parts.empty() ? std::string(SystemInformation::unknown) : joined(parts, ", ");
}

std::string LinuxSystemInformation::bundlePath() const {
    const auto program = runningProgram();
    return program.empty() ? std::string(SystemInformation::unknown) : program.parent_path().string();
}

std::optional<std::string> LinuxSystemInformation::shortVersion() const {
    return THERMOPIX_VERSION;
}

std::optional<std::string> LinuxSystemInformation::build() const {
    return THERMOPIX_BUILD_NUMBER;
}

/// What the firmware says; none where it says nothing.
std::optional<std::string> LinuxSystemInformation::identity(std::string_view name) const {
    auto text = readLine(root_ / "class" / "dmi" / "id" / name);
    return text && !isFiller(*text) ? text : std::nullopt;
}

}  // namespace thermopix
