#include <gtest/gtest.h>

#include <QApplication>
#include <QtGlobal>

#include "platform/qt/DesktopPalette.h"
#include "platform/qt/drawing/ShellStyle.h"
#include "platform/qt/views/AccessibleViews.h"

/// Real widgets, without a display unless QT_QPA_PLATFORM asks for one.
int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // The toolkit's plug-in says what it does not do; tests look at what happens instead.
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
    const QApplication application(argumentCount, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new thermopix::ShellStyle);
    QApplication::setPalette(thermopix::DesktopPalette::lightPalette());
    thermopix::AccessibleViews::install();
    return RUN_ALL_TESTS();
}
