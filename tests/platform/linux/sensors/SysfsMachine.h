#pragma once

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fakes/TemporaryFolder.h"
#include "fakes/TestFiles.h"
#include "platform/linux/sensors/SysfsHIDSymbols.h"

namespace thermopix {

/// A modelled machine among the fixtures.
inline std::filesystem::path machine(std::string_view name) {
    return testFile("fixtures/sysfs") / name;
}

inline const std::vector<std::string> modelledMachines = {"amd-desktop",    "arm-board",    "broken-machine",
                                                          "hybrid-laptop",  "intel-laptop", "two-socket-server",
                                                          "virtual-machine"};

/// A folder as sysfs lays it out.
class TemporaryTree : public TemporaryFolder {
public:
    /// A link to another place of the tree.
    void link(const std::filesystem::path& path, const std::filesystem::path& target) const {
        TemporaryFolder::link(path, this->path() / target);
    }
    void remove(const std::filesystem::path& path) const { std::filesystem::remove_all(this->path() / path); }

    /// A monitor as the kernel lays it out, with readings by label.
    void addMonitor(int number, const std::filesystem::path& device, std::string_view chip,
                    const std::vector<std::pair<std::string, std::string>>& readings) const {
        const auto folder = device / "hwmon" / ("hwmon" + std::to_string(number));
        write(folder / "name", std::string(chip) + "\n");
        int index = 0;
        for (const auto& [label, reading] : readings) {
            const auto stem = "temp" + std::to_string(++index);
            write(folder / (stem + "_input"), reading);
            if (!label.empty()) {
                write(folder / (stem + "_label"), label + "\n");
            }
        }
        link(folder / "device", device);
        link("class/hwmon/hwmon" + std::to_string(number), folder);
    }

    /// A thermal zone as the kernel lays it out; its device's folder.
    std::filesystem::path addZone(int number, const std::string& type, std::string_view temperature) const {
        const auto name = "thermal_zone" + std::to_string(number);
        const auto device = "devices/virtual/thermal/" + name;
        write(device + "/type", type + "\n");
        write(device + "/temp", temperature);
        link("class/thermal/" + name, device);
        return device;
    }
};

/// Counts what is opened and read, by path, and refuses to read what a test names.
class CountingFileAccess final : public FileAccess {
public:
    int open(const std::string& path) override {
        const int descriptor = FileAccess::open(path);
        if (descriptor >= 0) {
            paths_[descriptor] = path;
            ++opened;
        }
        return descriptor;
    }

    ssize_t readFromStart(int descriptor, std::span<char> buffer) override {
        ++reads;
        const auto& path = paths_[descriptor];
        readFiles.push_back(std::filesystem::path(path).filename());
        if (failing.contains(path)) {
            errno = ENODEV;
            return -1;
        }
        return FileAccess::readFromStart(descriptor, buffer);
    }

    std::int64_t opened = 0;
    std::int64_t reads = 0;
    std::vector<std::string> readFiles;
    std::set<std::string> failing;

private:
    std::map<int, std::string> paths_;
};

/// The sensors of a tree, used through the table of entry points as the core uses it.
class SysfsSensors {
public:
    explicit SysfsSensors(std::filesystem::path root, NvidiaCards* nvidia = nullptr,
                          FileAccess& access = systemFileAccess(), SensorPolling& polling = readingInPlace())
        : loader_(std::move(root), nvidia, access, polling) {
        client_ = symbols_.create();
        discover();
    }

    void discover() {
        symbols_.setMatching(client_.get(), {HIDMatching{"PrimaryUsagePage", 65280}, HIDMatching{"PrimaryUsage", 5}});
        services_ = symbols_.copyServices(client_.get()).value_or(std::vector<HIDObject>());
    }

    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& service : services_) {
            all.push_back(std::get<std::string>(symbols_.copyProperty(service.get(), "Product").value()));
        }
        return all;
    }

    [[nodiscard]] std::optional<double> read(std::string_view name) const {
        const auto all = names();
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (all[i] == name) {
                return read(i);
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] std::optional<double> read(std::size_t index) const {
        const auto event = symbols_.copyEvent(services_[index].get(), 15, 0, 0);
        return event ? std::optional(symbols_.getFloat(event.get(), 983040)) : std::nullopt;
    }

    [[nodiscard]] bool isAwaited(std::size_t index) const { return symbols_.isAwaited(services_[index].get()); }

    [[nodiscard]] std::vector<std::optional<double>> readAll() const {
        std::vector<std::optional<double>> all;
        for (std::size_t i = 0; i < services_.size(); ++i) {
            all.push_back(read(i));
        }
        return all;
    }

    [[nodiscard]] const HIDSymbols& symbols() const { return symbols_; }
    [[nodiscard]] const std::vector<HIDObject>& services() const { return services_; }

private:
    SysfsHIDSymbols loader_;
    HIDSymbols symbols_ = loader_.load().resolved.value();
    HIDObject client_ = noHIDObject();
    std::vector<HIDObject> services_;
};

}  // namespace thermopix
