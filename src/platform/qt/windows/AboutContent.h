#pragma once

#include <QWidget>
#include <memory>

#include "shell/AboutPanelContent.h"

namespace thermopix {

/// The inside of the About panel, in its size: icon, name, version and credits, one below the other.
[[nodiscard]] std::unique_ptr<QWidget> makeAboutContent(const AboutPanelContent& content);

}  // namespace thermopix
