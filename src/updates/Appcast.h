#pragma once

#include <optional>
#include <string>
#include <vector>

namespace thermopix {

/// One release as a feed describes it; texts are empty where the feed says nothing.
struct AppcastItem {
    /// What machines count: a build number, or the version itself where `shortVersion` is empty.
    std::string version;
    /// What people read.
    std::string shortVersion;
    std::string minimumSystemVersion;
    /// Releases of a channel are for those who asked for it.
    std::string channel;
    std::string link;
    std::string releaseNotesLink;
    bool isCritical = false;
    /// Critical only for versions older than this one; for all where empty.
    std::string criticalBelow;
    /// The system that each download is for, in the order of the downloads.
    std::vector<std::string> systems;

    friend bool operator==(const AppcastItem&, const AppcastItem&) = default;
};

/// A feed of releases, in any order.
struct Appcast {
    std::string link;
    std::vector<AppcastItem> items;

    friend bool operator==(const Appcast&, const Appcast&) = default;
};

}  // namespace thermopix
