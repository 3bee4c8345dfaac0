#pragma once

#include <QWidget>

namespace thermopix {

/// Asks the window manager to show the window, which has not been shown yet, on every workspace and to leave it out of
/// taskbar and pager. Only on X11: elsewhere a window cannot ask.
void standOnEveryWorkspace(QWidget& window);

}  // namespace thermopix
