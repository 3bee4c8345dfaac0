#include "platform/linux/machine/LinuxSystemInformation.h"

#include <gtest/gtest.h>
#include <sys/utsname.h>

#include <type_traits>

#include "platform/linux/machine/LinuxMonotonicClock.h"
#include "platform/linux/sensors/SysfsMachine.h"

namespace thermopix {
namespace {

constexpr auto model = "hw.model";
constexpr auto processor = "machdep.cpu.brand_string";
constexpr auto virtualMachine = "kern.hv_vmm_present";
constexpr auto unknown = std::nullopt;

LinuxSystemInformation about(std::string_view name) {
    return LinuxSystemInformation(machine(name));
}

TEST(LinuxSystemInformation, EveryModelledMachineIsNamed) {
    EXPECT_EQ(about("intel-laptop").bytes(model), "LENOVO 20Y7CTO1WW ThinkPad E16");
    EXPECT_EQ(about("amd-desktop").bytes(model), "ASRock X570 Taichi");
    EXPECT_EQ(about("two-socket-server").bytes(model), "Supermicro SYS-6029P-TR");
    EXPECT_EQ(about("hybrid-laptop").bytes(model), "Dell Inc. XPS 15 9520");
    EXPECT_EQ(about("virtual-machine").bytes(model), "QEMU Standard PC (Q35 + ICH9, 2009) pc-q35-7.2");
    EXPECT_TRUE(about("arm-board").bytes(model)->starts_with("Raspberry Pi 4 Model B Rev 1.4"));
    EXPECT_EQ(about("broken-machine").bytes(model), unknown);
}

TEST(LinuxSystemInformation, EveryModelledProcessorIsNamed) {
    EXPECT_EQ(about("intel-laptop").bytes(processor), "Intel(R) Core(TM) i5-8265U CPU @ 1.60GHz");
    EXPECT_EQ(about("amd-desktop").bytes(processor), "AMD Ryzen 9 5950X 16-Core Processor");
    EXPECT_EQ(about("arm-board").bytes(processor), "Cortex-A72");
    EXPECT_EQ(about("broken-machine").bytes(processor), unknown);
}

TEST(LinuxSystemInformation, OnlyTheVirtualMachineIsOne) {
    EXPECT_EQ(about("virtual-machine").integer(virtualMachine), 1);
    for (const auto name : {"intel-laptop", "amd-desktop", "arm-board", "two-socket-server", "hybrid-laptop"}) {
        EXPECT_EQ(about(name).integer(virtualMachine), 0) << name;
    }
}

TEST(LinuxSystemInformation, TheSystemIsItsReleaseAndItsKernel) {
    EXPECT_EQ(about("intel-laptop").operatingSystemVersion(), "Debian GNU/Linux 12 (bookworm), Linux 6.1.0-18-amd64");
    EXPECT_EQ(about("broken-machine").operatingSystemVersion(), "unfinished");
}

TEST(LinuxSystemInformation, OtherNamesAreUnknown) {
    EXPECT_EQ(about("intel-laptop").bytes("hw.machine"), unknown);
    EXPECT_EQ(about("intel-laptop").bytes(virtualMachine), unknown);
    EXPECT_EQ(about("intel-laptop").integer(model), unknown);
}

TEST(LinuxSystemInformation, ACapturedMachineNeverAnswersForThisOne) {
    const TemporaryTree tree;
    const LinuxSystemInformation nothing(tree.root);
    EXPECT_EQ(nothing.bytes(model), unknown);
    EXPECT_EQ(nothing.bytes(processor), unknown);
    EXPECT_EQ(nothing.integer(virtualMachine), unknown);
    EXPECT_EQ(nothing.operatingSystemVersion(), "unknown");
}

TEST(LinuxSystemInformation, ThisMachineIsAskedUnderTheSystemsOwnRoot) {
    utsname kernel{};
    ASSERT_EQ(::uname(&kernel), 0);
    for (const auto root : {"/sys", "/sys/", "/sys/."}) {
        const LinuxSystemInformation here(root);
        EXPECT_TRUE(here.operatingSystemVersion().ends_with(std::string("Linux ") + kernel.release)) << root;
    }
}

TEST(LinuxSystemInformation, FirmwarePlaceholdersAreNoName) {
    const auto modelOf = [](std::string_view vendor, std::string_view product, std::string_view version) {
        const TemporaryTree tree;
        tree.write("class/dmi/id/sys_vendor", vendor);
        tree.write("class/dmi/id/product_name", product);
        tree.write("class/dmi/id/product_version", version);
        return LinuxSystemInformation(tree.root).bytes(model);
    };
    EXPECT_EQ(modelOf("LENOVO\n", "LENOVO 20Y7\n", "ThinkPad\n"), "LENOVO 20Y7 ThinkPad");
    EXPECT_EQ(modelOf("HP\n", "HP EliteBook 840 G8\n", " \n"), "HP EliteBook 840 G8");
    EXPECT_EQ(modelOf("Acme\n", "Box\n", "Version 1.0\n"), "Acme Box");
    EXPECT_EQ(modelOf("Acme\n", "Box\n", "V2.3\n"), "Acme Box");
    EXPECT_EQ(modelOf("Acme\n", "Box\n", "x.x\n"), "Acme Box");
    EXPECT_EQ(modelOf("Acme\n", "Box\n", "Default string\n"), "Acme Box");
    EXPECT_EQ(modelOf("To Be Filled By O.E.M.\n", "Box\n", "to be filled by o.e.m.\n"), "Box");
    EXPECT_EQ(modelOf("System manufacturer\n", "System Product Name\n", "System Version\n"), unknown);
}

TEST(LinuxSystemInformation, ADeviceTreeNamesAMachineWithoutFirmwareTables) {
    const TemporaryTree tree;
    tree.write("firmware/devicetree/base/model", std::string_view("Some Board\0", 11));
    EXPECT_EQ(LinuxSystemInformation(tree.root).bytes(model)->substr(0, 10), "Some Board");
}

std::optional<std::string> processorIn(std::string_view text) {
    const TemporaryTree tree;
    tree.write("capture/cpuinfo", text);
    return LinuxSystemInformation(tree.root).bytes(processor);
}

TEST(LinuxSystemInformation, ProcessorsOfOtherKindsHaveSensibleNames) {
    EXPECT_EQ(processorIn("CPU implementer\t: 0x41\nCPU part\t: 0xd05\n\nCPU implementer\t: 0x41\nCPU part\t: 0xd0b\n"),
              "Cortex-A55 + Cortex-A76");
    EXPECT_EQ(processorIn("processor\t: 0\nCPU part\t: 0xfff\nHardware\t: BCM2835\n"), "BCM2835");
    EXPECT_EQ(processorIn("processor\t: 0\nmodel name\t: ARMv7 Processor rev 4 (v7l)\nHardware\t: BCM2835\n"),
              "ARMv7 Processor rev 4 (v7l)");
    EXPECT_EQ(processorIn("system type\t: box\ncpu model\t: MIPS 24Kc V5.0\n"), "MIPS 24Kc V5.0");
    EXPECT_EQ(processorIn("processor\t: 0\ncpu\t\t: POWER9, altivec supported\n"), "POWER9, altivec supported");
    EXPECT_EQ(processorIn("processor\t: 0\nisa\t: rv64imafdc\nuarch\t: sifive,u74-mc\n"), "sifive,u74-mc");
    EXPECT_EQ(processorIn("model name\t:\n"), unknown);
    EXPECT_EQ(processorIn(""), unknown);
}

TEST(LinuxSystemInformation, AHypervisorShowsInFlagsFirmwareOrItsOwnFile) {
    const auto isVirtual = [](std::string_view path, std::string_view text) {
        const TemporaryTree tree;
        tree.write("capture/cpuinfo", "flags\t: fpu vme\n");
        tree.write(path, text);
        return LinuxSystemInformation(tree.root).integer(virtualMachine);
    };
    EXPECT_EQ(isVirtual("capture/cpuinfo", "flags\t: fpu hypervisor\n"), 1);
    EXPECT_EQ(isVirtual("capture/cpuinfo", "flags\t: nohypervisor hypervisors\n"), 0);
    EXPECT_EQ(isVirtual("hypervisor/type", "xen\n"), 1);
    EXPECT_EQ(isVirtual("class/dmi/id/sys_vendor", "innotek GmbH\n"), 1);
    EXPECT_EQ(isVirtual("class/dmi/id/product_name", "VMware Virtual Platform\n"), 1);
    EXPECT_EQ(isVirtual("class/dmi/id/product_name", "Virtual Machine\n"), 1);
    EXPECT_EQ(isVirtual("class/dmi/id/sys_vendor", "Microsoft Corporation\n"), 0);
    EXPECT_EQ(isVirtual("class/dmi/id/sys_vendor", "Dell Inc.\n"), 0);
}

TEST(LinuxSystemInformation, ARentedMachineIsVirtualUnlessItIsMetal) {
    const TemporaryTree tree;
    tree.write("class/dmi/id/sys_vendor", "Amazon EC2\n");
    tree.write("class/dmi/id/product_name", "m6g.large\n");
    EXPECT_EQ(LinuxSystemInformation(tree.root).integer(virtualMachine), 1);
    tree.write("class/dmi/id/product_name", "m6g.metal\n");
    EXPECT_EQ(LinuxSystemInformation(tree.root).integer(virtualMachine), 0);
}

TEST(LinuxSystemInformation, TheReleasesNameIsReadLikeAShellWould) {
    const auto versionFor = [](std::string_view release) {
        const TemporaryTree tree;
        tree.write("capture/os-release", release);
        tree.write("capture/osrelease", "6.1.0\n");
        return LinuxSystemInformation(tree.root).operatingSystemVersion();
    };
    EXPECT_EQ(versionFor("NAME=x\nPRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n"),
              "Debian GNU/Linux 12 (bookworm), Linux 6.1.0");
    EXPECT_EQ(versionFor("PRETTY_NAME='Single Quotes'\n"), "Single Quotes, Linux 6.1.0");
    EXPECT_EQ(versionFor("PRETTY_NAME=Bare\n"), "Bare, Linux 6.1.0");
    EXPECT_EQ(versionFor("PRETTY_NAME=\"A \\\"quoted\\\" \\$ name\"\n"), "A \"quoted\" $ name, Linux 6.1.0");
    EXPECT_EQ(versionFor("PRETTY_NAME=\"\"\n"), "Linux 6.1.0");
    EXPECT_EQ(versionFor("NAME=x\n"), "Linux 6.1.0");
}

TEST(LinuxSystemInformation, TheBundleIsTheProgramsFolderAndItsVersionTheProjects) {
    const LinuxSystemInformation here("/sys");
    EXPECT_EQ(here.bundlePath(), std::filesystem::read_symlink("/proc/self/exe").parent_path());
    EXPECT_EQ(here.bundleInformation("CFBundleShortVersionString"), THERMOPIX_EXPECTED_VERSION);
    const auto build = here.bundleInformation("CFBundleVersion");
    ASSERT_TRUE(build.has_value());
    EXPECT_FALSE(build->empty());
    EXPECT_EQ(here.bundleInformation("CFBundleName"), unknown);
}

TEST(LinuxMonotonicClock, NeverGoesBack) {
    const LinuxMonotonicClock clock;
    auto last = clock.now();
    for (int i = 0; i < 1000; ++i) {
        const auto next = clock.now();
        EXPECT_LE(last, next);
        last = next;
    }
}

}  // namespace
}  // namespace thermopix
