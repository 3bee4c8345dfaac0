// Whatever the kernel's files hold, discovery and reading must end, and names must stay fit to print.
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>

#include "base/Enumeration.h"
#include "base/Fatal.h"
#include "base/Unicode.h"
#include "platform/linux/sensors/SysfsHIDSymbols.h"
#include "platform/linux/sensors/SysfsThermalState.h"
#include "sensing/SensorSource.h"

namespace {

using namespace thermopix;

/// The files that an input fills, each with a share of its bytes; the first ones are names, the last ones values.
constexpr std::array<std::string_view, 10> files{
    "class/hwmon/hwmon0/name",
    "class/hwmon/hwmon0/temp1_label",
    "class/hwmon/hwmon0/temp2_label",
    "class/thermal/thermal_zone0/type",
    "class/hwmon/hwmon0/device/power/runtime_status",
    "class/hwmon/hwmon0/temp1_input",
    "class/hwmon/hwmon0/temp2_input",
    "class/hwmon/hwmon0/temp1_fault",
    "class/thermal/thermal_zone0/temp",
    "class/thermal/thermal_zone0/trip_point_0_temp",
};

/// A small tree for the life of the process; only the contents of its files change.
class Tree {
public:
    Tree() {
        // In memory where that can be had: every input writes files.
        const std::filesystem::path memory = "/dev/shm";
        const bool isWritable = ::access(memory.c_str(), W_OK) == 0;
        const auto folder = isWritable ? memory : std::filesystem::temp_directory_path();
        auto path = (folder / "thermopix-fuzz-XXXXXX").string();
        root = ::mkdtemp(path.data());
        for (const auto file : files) {
            std::filesystem::create_directories((root / file).parent_path());
        }
        std::ofstream(root / "class/hwmon/hwmon0/device/power/control") << "auto\n";
        std::ofstream(root / "class/thermal/thermal_zone0/trip_point_0_type") << "passive\n";
    }
    ~Tree() { std::filesystem::remove_all(root); }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    /// Shares the bytes out among the files, cut at each 0xFF.
    void fill(std::string_view bytes) {
        for (std::size_t i = 0; i < files.size(); ++i) {
            const auto end = bytes.find('\xFF');
            if (const auto content = bytes.substr(0, end); contents_[i] != content) {
                std::ofstream(root / files[i], std::ios::binary) << content;
                contents_[i] = content;
            }
            bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        }
    }

    std::filesystem::path root;

private:
    std::array<std::optional<std::string>, files.size()> contents_;
};

void requireFitToPrint(const std::string& name) {
    require(!name.empty() && repairedUtf8(name) == name, "a name is valid UTF-8");
    require(characterCount(name) <= 64, "a name has at most 64 characters");
    for (const char letter : name) {
        const auto code = static_cast<unsigned char>(letter);
        require(code >= 0x20 && code != 0x7F, "a name is on one line");
    }
}

void requireOneSourceAtMost(const std::string& name) {
    int sources = 0;
    for (const auto source : allCases<SensorSource>()) {
        sources += source != SensorSource::hottest && matches(source, name) ? 1 : 0;
    }
    require(sources <= 1, "a name belongs to one source");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Tree tree;
    tree.fill({reinterpret_cast<const char*>(data), size});

    SysfsHIDSymbols loader(tree.root);
    const auto symbols = loader.load().resolved.value();
    const auto services = symbols.copyServices(nullptr);
    require(services && services->size() >= 2 && services->size() <= 3, "both channels, and the zone or not");
    std::set<std::string> names;
    for (const auto& service : *services) {
        const auto name = std::get<std::string>(symbols.copyProperty(service.get(), "Product").value());
        requireFitToPrint(name);
        requireOneSourceAtMost(name);
        require(names.insert(name).second, "names are distinct");
        if (const auto event = symbols.copyEvent(service.get(), 15, 0, 0)) {
            require(std::isfinite(symbols.getFloat(event.get(), 983040)), "a reading is a number");
        }
    }

    const int state = SysfsThermalState(tree.root).thermalState();
    require(state == 0 || state == 2, "one passive trip point makes nominal or serious");
    return 0;
}
