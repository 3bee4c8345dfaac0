#include "platform/linux/machine/SysfsCapture.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <system_error>

#include "base/Unicode.h"
#include "platform/linux/machine/LinuxSystemInformation.h"
#include "platform/linux/sensors/SysfsFile.h"
#include "platform/linux/sensors/SysfsTree.h"

namespace thermopix {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t largestFile = 4096;

// Facts of the processor that name it or say that it is a virtual one; the rest of the file is nobody's business.
constexpr std::array<std::string_view, 11> processorKeys{"model name", "flags",     "CPU implementer", "CPU part",
                                                         "Hardware",   "Processor", "cpu model",       "cpu",
                                                         "uarch",      "isa",       "vendor_id"};

constexpr std::array<std::string_view, 5> identityFiles{"sys_vendor", "product_name", "product_version", "board_vendor",
                                                        "board_name"};

// Network and Bluetooth devices carry their address in their name.
std::string masked(const std::string& text) {
    static const std::regex address("([0-9A-Fa-f]{2}[:-]){5}[0-9A-Fa-f]{2}");
    return std::regex_replace(text, address, "xx:xx:xx:xx:xx:xx");
}

std::optional<std::string> content(const fs::path& file) {
    std::string bytes(largestFile, '\0');
    const auto text = SysfsFile(systemFileAccess(), file).read(bytes);
    if (!text) {
        return std::nullopt;
    }
    bytes.resize(text->size());
    return bytes;
}

// To be read to its end: nothing of a pipe, which may never come to one.
std::ifstream opened(const fs::path& path) {
    std::error_code failure;
    return fs::is_regular_file(path, failure) ? std::ifstream(path) : std::ifstream();
}

class Copy {
public:
    Copy(const fs::path& root, fs::path target) : root_(fs::weakly_canonical(root)), target_(std::move(target)) {}

    [[nodiscard]] std::int64_t fileCount() const { return fileCount_; }
    [[nodiscard]] const std::optional<std::string>& error() const { return error_; }

    void monitors() {
        for (const auto& entry : numberedEntries(root_ / "class" / "hwmon", "hwmon")) {
            const auto monitor = follow(entry.path);
            if (!monitor) {
                continue;
            }
            file(*monitor / "name");
            const auto device = follow(*monitor / "device");
            const bool isAwake = !device || powerOf(*device);
            for (const auto& [number, input] : numberedEntries(*monitor, "temp", "_input")) {
                const auto stem = "temp" + std::to_string(number);
                file(input, isAwake);
                file(*monitor / (stem + "_label"));
                file(*monitor / (stem + "_fault"), isAwake);
            }
            if (device) {
                file(*device / "type");
                file(*device / "scope");
                for (const auto& disk : entries(*device / "block")) {
                    file(disk / "queue" / "rotational");
                }
            }
        }
    }

    void zones() {
        const auto folder = root_ / "class" / "thermal";
        for (const auto& entry : numberedEntries(folder, "thermal_zone")) {
            if (const auto zone = follow(entry.path)) {
                const auto device = follow(*zone / "device");
                file(*zone / "type");
                file(*zone / "temp", !device || powerOf(*device));
                for (const auto& trip : numberedEntries(*zone, "trip_point_", "_temp")) {
                    file(trip.path);
                    file(*zone / ("trip_point_" + std::to_string(trip.number) + "_type"));
                }
            }
        }
        for (const auto& entry : numberedEntries(folder, "cooling_device")) {
            if (const auto device = follow(entry.path)) {
                file(*device / "type");
                file(*device / "cur_state");
                file(*device / "max_state");
            }
        }
    }

    void graphicsCards() {
        for (const auto& entry : entries(root_ / "bus" / "pci" / "devices")) {
            if (readLine(entry / "vendor") == "0x10de") {
                if (const auto card = follow(entry)) {
                    file(*card / "vendor");
                    file(*card / "class");
                    powerOf(*card);
                    if (const auto driver = follow(*card / "driver")) {
                        write(*driver / "captured", "\n");
                    }
                }
            }
        }
    }

    void identity() {
        if (const auto folder = follow(root_ / "class" / "dmi" / "id")) {
            for (const auto& name : identityFiles) {
                file(*folder / name);
            }
        }
        file(root_ / "firmware" / "devicetree" / "base" / "model");
        file(root_ / "hypervisor" / "type");
        const auto facts = machineFactFiles(root_);
        const auto captured = root_ / "capture";
        if (const auto processors = processorFacts(facts.processors); !processors.empty()) {
            write(captured / "cpuinfo", processors);
        }
        if (const auto name = prettyName(facts.release); !name.empty()) {
            write(captured / "os-release", name);
        }
        if (const auto kernel = readLine(facts.kernel)) {
            write(captured / "osrelease", *kernel + "\n");
        }
    }

private:
    // Where an entry leads; a link on the way is made in the copy too. None when it leads out of the tree.
    std::optional<fs::path> follow(const fs::path& entry) {
        auto real = realPath(entry);
        if (!real || !isInside(*real)) {
            return std::nullopt;
        }
        const auto here = realPath(entry.parent_path());
        std::error_code failure;
        if (here && fs::is_symlink(fs::symlink_status(entry, failure))) {
            link(*here / entry.filename(), *real);
        }
        return real;
    }

    [[nodiscard]] bool isInside(const fs::path& path) const {
        const auto relative = path.lexically_relative(root_);
        return !relative.empty() && *relative.begin() != "..";
    }

    [[nodiscard]] fs::path targetOf(const fs::path& path) const {
        return target_ / masked(path.lexically_relative(root_).string());
    }

    void link(const fs::path& from, const fs::path& to) {
        const auto place = targetOf(from);
        if (!made_.insert(place).second || !makeFolder(place.parent_path())) {
            return;
        }
        std::error_code failure;
        fs::create_symlink(targetOf(to).lexically_relative(place.parent_path()), place, failure);
        note(failure, place);
    }

    // A file that cannot be read, or must not be, is there without content, so that its channel is there without a
    // reading.
    void file(const fs::path& source, bool isReadable = true) {
        const auto real = realPath(source);
        if (real && isInside(*real)) {
            write(source, isReadable ? masked(content(source).value_or("")) : "");
        }
    }

    // Copies what tells whether the device sleeps; false when it does.
    bool powerOf(const fs::path& device) {
        file(device / "power" / "control");
        file(device / "power" / "runtime_status");
        const auto status = readLine(device / "power" / "runtime_status");
        return !status || (*status != "suspended" && *status != "suspending");
    }

    void write(const fs::path& path, const std::string& bytes) {
        const auto place = targetOf(path);
        if (!made_.insert(place).second || !makeFolder(place.parent_path())) {
            return;
        }
        // Everything here is new: what somebody else put there meanwhile is not written to.
        std::FILE* file = std::fopen(place.c_str(), "wbx");
        const bool isWritten = file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
        if ((file != nullptr && std::fclose(file) != 0) || !isWritten) {
            note(std::make_error_code(std::errc::io_error), place);
            return;
        }
        ++fileCount_;
    }

    bool makeFolder(const fs::path& folder) {
        std::error_code failure;
        fs::create_directories(folder, failure);
        note(failure, folder);
        return !failure;
    }

    void note(const std::error_code& failure, const fs::path& place) {
        if (failure && !error_) {
            error_ = place.string() + ": " + failure.message();
        }
    }

    // The keys that matter, as the first processor and every distinct core tell them.
    static std::string processorFacts(const fs::path& path) {
        auto stream = opened(path);
        std::set<std::string> told;
        std::string facts;
        bool hasFacts = false;
        for (std::string line; std::getline(stream, line);) {
            const auto colon = line.find(':');
            if (colon == std::string::npos) {
                continue;
            }
            hasFacts = true;
            const auto key = trimmed(std::string_view(line).substr(0, colon));
            if (std::find(processorKeys.begin(), processorKeys.end(), key) != processorKeys.end() &&
                told.insert(line).second) {
                facts += line + "\n";
            }
        }
        // A machine that tells nothing of use still tells that it is there.
        return facts.empty() && hasFacts ? "processor\t: 0\n" : facts;
    }

    static std::string prettyName(const fs::path& path) {
        auto stream = opened(path);
        for (std::string line; std::getline(stream, line);) {
            if (line.starts_with("PRETTY_NAME=")) {
                return line + "\n";
            }
        }
        return {};
    }

    fs::path root_;
    fs::path target_;
    std::set<fs::path> made_;
    std::int64_t fileCount_ = 0;
    std::optional<std::string> error_;
};

}  // namespace

SensorCaptureResult SysfsCapture::captureTo(const fs::path& folder) {
    std::error_code failure;
    fs::create_directories(folder, failure);
    if (!failure && !fs::is_empty(folder, failure) && !failure) {
        failure = std::make_error_code(std::errc::directory_not_empty);
    }
    if (failure) {
        return {0, failure.message()};
    }
    Copy copy(root_, fs::absolute(folder));
    copy.monitors();
    copy.zones();
    copy.graphicsCards();
    copy.identity();
    // The folders that are looked into are there even when the machine has nothing in them.
    for (const auto* name : {"class/hwmon", "class/thermal"}) {
        fs::create_directories(folder / name, failure);
    }
    return {copy.fileCount(), copy.error()};
}

}  // namespace thermopix
