#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>

#include "base/Subscription.h"
#include "platform/linux/files/SettingsFile.h"
#include "system/DiagnosticLog.h"
#include "system/MainLoop.h"
#include "system/StorageLimits.h"
#include "system/WakeUp.h"

namespace thermopix {

/// Writes settings files on a thread of its own, which the first write starts: in order, of each file the newest bytes.
/// What cannot be stored is tried again until it is. Main thread.
class SettingsWriter {
public:
    /// Whether the bytes are what a file of that name holds. Any thread.
    using SoundnessTest = std::function<bool(std::string_view name, std::string_view bytes)>;

    struct Services {
        /// Outlives the writer.
        DiagnosticLog& log;
        /// Asked for while the main loop runs.
        std::function<MainLoop&()> mainLoop;
        WakeUpMaker makeWakeUp;
        /// A file that fails it is kept beside the one that replaces it.
        SoundnessTest isSound;
        /// Hears why settings cannot be stored, once until all are.
        std::function<void(const std::string& cause)> onTrouble;
        std::chrono::milliseconds endPatience = StorageLimits::endPatience;
    };

    explicit SettingsWriter(Services services, FileOperations operations = {});
    /// Tries once more what could not be stored, and waits for it as long as the patience lasts.
    ~SettingsWriter();
    SettingsWriter(const SettingsWriter&) = delete;
    SettingsWriter& operator=(const SettingsWriter&) = delete;

    void write(const std::string& path, std::string_view bytes, FormerFile former);

    [[nodiscard]] bool isSound(std::string_view name, std::string_view bytes) const;

    /// Logs the trouble, each cause once until all is stored.
    void complain(std::string_view action, const std::string& path, std::string_view cause);

private:
    struct Shared;

    void start();
    void hear();
    void tellAndRetry(const std::error_code& cause);
    void retry();
    /// Logs what has become of the attempts; the last error of them.
    std::error_code report();

    Services services_;
    std::shared_ptr<Shared> shared_;
    std::thread thread_;
    Subscription wakeUp_;
    Subscription retry_;
    bool isTroubleTold_ = false;
    std::set<std::string, std::less<>> complaints_;
};

}  // namespace thermopix
