#include "updates/AppcastJudgement.h"

#include <algorithm>
#include <optional>

#include "base/Unicode.h"
#include "updates/PageAddress.h"
#include "updates/Version.h"

namespace thermopix {

namespace {

const std::string& readableVersion(const AppcastItem& item) {
    return item.shortVersion.empty() ? item.version : item.shortVersion;
}

bool hasDownloadFor(const AppcastItem& item, const std::string& system) {
    return item.systems.empty() || std::any_of(item.systems.begin(), item.systems.end(), [&](const std::string& named) {
               return named.empty() || lowercased(named) == system;
           });
}

/// A minimum that cannot be read is one that is not known to be met.
bool runsOn(const AppcastItem& item, const InstalledProgram& program) {
    if (!hasDownloadFor(item, program.system)) {
        return false;
    }
    if (item.minimumSystemVersion.empty()) {
        return true;
    }
    const auto minimum = Version::parse(item.minimumSystemVersion);
    const auto actual = Version::parse(program.systemVersion);
    return minimum && actual && actual->reaches(*minimum);
}

bool isCriticalFor(const AppcastItem& item, const InstalledProgram& program) {
    if (!item.isCritical || item.criticalBelow.empty()) {
        return item.isCritical;
    }
    const auto bound = Version::parse(item.criticalBelow);
    const auto own = Version::parse(item.shortVersion.empty() ? program.version : program.build);
    return !bound || !own || *own < *bound;
}

std::optional<std::string> pageOf(const AppcastItem& item, const Appcast& appcast) {
    for (const auto* address : {&item.link, &item.releaseNotesLink, &appcast.link}) {
        if (isPageAddress(*address)) {
            return *address;
        }
    }
    return std::nullopt;
}

}  // namespace

UpdateVerdict judgeAppcast(const Appcast& appcast, const InstalledProgram& program) {
    const auto own = Version::parse(program.version);
    if (!own) {
        return CheckFailed{CheckFailure::unavailable, "the program's own version cannot be read"};
    }
    const AppcastItem* newest = nullptr;
    std::optional<Version> newestVersion;
    bool hasReadableItem = appcast.items.empty();
    for (const auto& item : appcast.items) {
        const auto version = Version::parse(readableVersion(item));
        hasReadableItem = hasReadableItem || version.has_value();
        if (version && item.channel.empty() && runsOn(item, program) &&
            (newest == nullptr || *newestVersion < *version)) {
            newest = &item;
            newestVersion = version;
        }
    }
    if (!hasReadableItem) {
        return CheckFailed{CheckFailure::unreadable, "no release has a version that can be read"};
    }
    if (newest == nullptr || *newestVersion <= *own) {
        return UpToDate();
    }
    // Whoever is behind a critical release gets a critical update, also when a later release is offered.
    const bool isCritical = std::any_of(appcast.items.begin(), appcast.items.end(), [&](const AppcastItem& item) {
        const auto version = Version::parse(readableVersion(item));
        return version && *own < *version && *version <= *newestVersion && item.channel.empty() &&
               runsOn(item, program) && isCriticalFor(item, program);
    });
    return UpdateAvailable{readableVersion(*newest), pageOf(*newest, appcast), isCritical};
}

}  // namespace thermopix
