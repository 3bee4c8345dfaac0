#include "platform/linux/machine/LinuxSystemInformation.h"

#include <gtest/gtest.h>
#include <sys/utsname.h>

#include <type_traits>

#include "platform/linux/machine/LinuxMonotonicClock.h"
#include "platform/linux/sensors/SysfsMachine.h"

namespace thermopix {
namespace {

constexpr auto unknown = "unknown";

TEST(LinuxSystemInformation, ACapturedMachineNeverAnswersForThisOne) {
    const TemporaryTree tree;
    const LinuxSystemInformation nothing(tree.path());
    EXPECT_EQ(nothing.model(), unknown);
    EXPECT_EQ(nothing.processor(), unknown);
    EXPECT_FALSE(nothing.isVirtualMachine());
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
        return LinuxSystemInformation(tree.path()).model();
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
    EXPECT_EQ(LinuxSystemInformation(tree.path()).model(), "Some Board");
}

std::string processorIn(std::string_view text) {
    const TemporaryTree tree;
    tree.write("capture/cpuinfo", text);
    return LinuxSystemInformation(tree.path()).processor();
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
        return LinuxSystemInformation(tree.path()).isVirtualMachine();
    };
    EXPECT_TRUE(isVirtual("capture/cpuinfo", "flags\t: fpu hypervisor\n"));
    EXPECT_FALSE(isVirtual("capture/cpuinfo", "flags\t: nohypervisor hypervisors\n"));
    EXPECT_TRUE(isVirtual("hypervisor/type", "xen\n"));
    EXPECT_TRUE(isVirtual("class/dmi/id/sys_vendor", "innotek GmbH\n"));
    EXPECT_TRUE(isVirtual("class/dmi/id/product_name", "VMware Virtual Platform\n"));
    EXPECT_TRUE(isVirtual("class/dmi/id/product_name", "Virtual Machine\n"));
    EXPECT_FALSE(isVirtual("class/dmi/id/sys_vendor", "Microsoft Corporation\n"));
    EXPECT_FALSE(isVirtual("class/dmi/id/sys_vendor", "Dell Inc.\n"));
}

TEST(LinuxSystemInformation, ARentedMachineIsVirtualUnlessItIsMetal) {
    const TemporaryTree tree;
    tree.write("class/dmi/id/sys_vendor", "Amazon EC2\n");
    tree.write("class/dmi/id/product_name", "m6g.large\n");
    EXPECT_TRUE(LinuxSystemInformation(tree.path()).isVirtualMachine());
    tree.write("class/dmi/id/product_name", "m6g.metal\n");
    EXPECT_FALSE(LinuxSystemInformation(tree.path()).isVirtualMachine());
}

TEST(LinuxSystemInformation, TheReleasesNameIsReadLikeAShellWould) {
    const auto versionFor = [](std::string_view release) {
        const TemporaryTree tree;
        tree.write("capture/os-release", release);
        tree.write("capture/osrelease", "6.1.0\n");
        return LinuxSystemInformation(tree.path()).operatingSystemVersion();
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
    EXPECT_EQ(here.shortVersion(), THERMOPIX_EXPECTED_VERSION);
    const auto build = here.build();
    ASSERT_TRUE(build.has_value());
    EXPECT_FALSE(build->empty());
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
