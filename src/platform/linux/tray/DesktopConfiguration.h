#pragma once

#include <filesystem>

#include "system/DiagnosticLog.h"
#include "tray/TrayChoices.h"

namespace thermopix {

/// Reads `desktop.conf`, a key file with the group [Desktop] and the keys Place, Shape and Ink. What is absent stays
/// automatic; so does what is wrong, which the log names.
[[nodiscard]] TrayChoices readDesktopConfiguration(const std::filesystem::path& file, DiagnosticLog& log);

}  // namespace thermopix
