#include "platform/linux/application/LinuxPlatform.h"

#include <unistd.h>

#include <filesystem>
#include <string_view>
#include <system_error>

#include "environment/Notices.h"
#include "environment/Preferences.h"
#include "environment/PreferencesStore.h"
#include "platform/linux/application/AutostartLoginItem.h"
#include "platform/linux/application/PortalLoginItem.h"
#include "platform/linux/files/CompanionProgram.h"
#include "platform/linux/glib/GLibDescriptors.h"
#include "platform/linux/glib/GLibWakeUp.h"
#include "platform/linux/nvidia/NvidiaProtocol.h"
#include "platform/linux/sensors/SysfsTree.h"
#include "platform/linux/updates/LinuxUpdater.h"

namespace thermopix {

namespace {

/// There inside a Flatpak only.
constexpr const char* flatpakInformation = "/.flatpak-info";

}  // namespace

LinuxPlatform::LinuxPlatform(const EnvironmentVariables& variables)
    : standardOutput_(STDOUT_FILENO),
      standardError_(STDERR_FILENO),
      systemInformation_(sysfsRoot()),
      sensorPolling_(clock_, &makeWakeUp),
      thermalState_(sysfsRoot(), systemFileAccess(), sensorPolling_),
      nvidia_({.find = [] { return companionProgram(runningProgram().parent_path(), NvidiaProtocol::executable); },
               .watch = &observeReadable,
               .onLate = [this] { sensorPolling_.noteLate(); }},
              clock_, log_),
      hidSymbols_(sysfsRoot(), &nvidia_, systemFileAccess(), sensorPolling_),
      sensorCapture_(sysfsRoot()),
      configurationFolder_(configurationFolder(variables)),
      settingsFolder_(thermopix::settingsFolder(variables)),
      userDefaults_(settingsFolder_, writerServices()) {}

SettingsWriter::Services LinuxPlatform::writerServices() {
    return {.log = log_,
            .mainLoop = [this]() -> MainLoop& { return mainLoop(); },
            .makeWakeUp = &makeWakeUp,
            .isSound =
                [](std::string_view name, std::string_view bytes) {
                    return name != PreferencesStore::defaultsKey || isPreferencesDocument(bytes);
                },
            .onTrouble =
                [this](const std::string& cause) { notices(settingsNotice_).show(settingsNotSavedNotice(cause), {}); }};
}

DesktopNotification& LinuxPlatform::notices(std::optional<DesktopNotification>& subject) {
    return subject ? *subject : subject.emplace(sessionBus(), log_);
}

GLibMainLoop& LinuxPlatform::mainLoop() {
    if (!mainLoop_) {
        mainLoop_ = std::make_unique<GLibMainLoop>();
        kernelEvents_ =
            std::make_unique<KernelEvents>(KernelEvents::openSocket(), [this] { sensorPolling_.noteChange(); });
    }
    return *mainLoop_;
}

SleepNotifications& LinuxPlatform::sleepNotifications() {
    if (!sleepNotifications_) {
        sleepNotifications_ =
            std::make_unique<DBusSleepNotifications>(followsDisplays_ ? sessionBus() : nullptr, mainLoop());
    }
    return *sleepNotifications_;
}

std::unique_ptr<LoginItemManaging> LinuxPlatform::makeLoginItem() {
    std::error_code error;
    if (std::filesystem::exists(flatpakInformation, error)) {
        return std::make_unique<PortalLoginItem>(sessionBus(), defaults_, notices(loginNotice_));
    }
    return std::make_unique<AutostartLoginItem>(AutostartLoginItem::placesOfThisProcess(configurationFolder_),
                                                notices(loginNotice_));
}

std::unique_ptr<UpdaterManaging> LinuxPlatform::makeUpdater() {
    systemBus_ = openSystemBus();
    return std::make_unique<LinuxUpdater>(
        updateSource(packageOfThisBuild(), flatpakInformation),
        LinuxUpdater::Services{mainLoop(), defaults_, log_, sessionBus(), systemBus_.get()});
}

GDBusConnection* LinuxPlatform::sessionBus() {
    if (!sessionBus_) {
        sessionBus_ = openSessionBus();
    }
    return sessionBus_->get();
}

std::unique_ptr<Platform> makePlatform(const EnvironmentVariables& variables) {
    return std::make_unique<LinuxPlatform>(variables);
}

}  // namespace thermopix
