#pragma once

namespace thermopix {

/// Controls software updates. Main thread.
class UpdaterManaging {
public:
    virtual ~UpdaterManaging() = default;

    [[nodiscard]] virtual bool automaticallyChecksForUpdates() const = 0;
    virtual void setAutomaticallyChecksForUpdates(bool checks) = 0;

    /// A check that the user asked for; the updater itself tells the user how it went.
    virtual void checkForUpdates() = 0;
};

}  // namespace thermopix
