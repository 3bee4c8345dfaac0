#pragma once

#include <string>

#include "tray/TrayHost.h"
#include "tray/TrayInk.h"

namespace thermopix {

/// Where and how status items are shown at present.
struct TrayPresentation {
    /// The unique bus name of the watcher.
    std::string watcher;
    TrayHost host;
    TrayInk ink;

    friend bool operator==(const TrayPresentation&, const TrayPresentation&) = default;
};

}  // namespace thermopix
