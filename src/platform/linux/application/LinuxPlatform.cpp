#include "platform/linux/application/LinuxPlatform.h"

#include <unistd.h>

#include <string_view>

#include "environment/Notices.h"
#include "environment/Preferences.h"
#include "environment/PreferencesStore.h"
#include "platform/linux/application/AutostartLoginItem.h"
#include "platform/linux/files/CompanionProgram.h"
#include "platform/linux/glib/GLibWakeUp.h"
#include "platform/linux/nvidia/NvidiaProtocol.h"
#include "platform/linux/sensors/SysfsTree.h"
#include "platform/linux/updates/LinuxUpdater.h"

namespace thermopix {

LinuxPlatform::LinuxPlatform(const EnvironmentVariables& variables)
    : standardOutput_(STDOUT_FILENO),
      standardError_(STDERR_FILENO),
      systemInformation_(sysfsRoot()),
      thermalState_(sysfsRoot()),
      nvidia_({.find = [] { return companionProgram(runningProgram().parent_path(), NvidiaProtocol::executable); }},
              clock_, log_),
      hidSymbols_(sysfsRoot(), &nvidia_),
      sensorCapture_(sysfsRoot()),
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
                [this](const std::string& cause) {
                    if (!settingsNotice_) {
                        settingsNotice_.emplace(sessionBus(), log_);
                    }
                    settingsNotice_->show(settingsNotSavedNotice(cause), {});
                }};
}

GLibMainLoop& LinuxPlatform::mainLoop() {
    if (!mainLoop_) {
        mainLoop_ = std::make_unique<GLibMainLoop>();
    }
    return *mainLoop_;
}

SleepNotifications& LinuxPlatform::sleepNotifications() {
    if (!sleepNotifications_) {
        sleepNotifications_ =
            std::make_unique<DBusSleepNotifications>(followsDisplays_ ? sessionBus() : nullptr, mainLoop());
        wake_ = sleepNotifications_->observe(SleepNotification::didWake, [this] { thermalState_.rediscover(); });
    }
    return *sleepNotifications_;
}

std::unique_ptr<LoginItemManaging> LinuxPlatform::makeLoginItem() {
    return std::make_unique<AutostartLoginItem>(AutostartLoginItem::placesOfThisProcess());
}

std::unique_ptr<UpdaterManaging> LinuxPlatform::makeUpdater() {
    systemBus_ = openSystemBus();
    return std::make_unique<LinuxUpdater>(
        updateSource(packageOfThisBuild(), "/.flatpak-info"),
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
