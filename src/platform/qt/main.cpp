#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QByteArray>
#include <QIcon>
#include <QMessageLogContext>
#include <array>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "environment/AppInfo.h"
#include "messages/WindowProtocol.h"
#include "pixels/ApplicationIcon.h"
#include "platform/qt/DesktopPalette.h"
#include "platform/qt/MessageSocket.h"
#include "platform/qt/WindowProcess.h"
#include "platform/qt/drawing/PixelArt.h"
#include "platform/qt/drawing/ShellStyle.h"
#include "platform/qt/drawing/Strings.h"
#include "platform/qt/views/AccessibleViews.h"

namespace thermopix {
namespace {

constexpr int malformedStatus = 1;
constexpr int usageStatus = 2;

void say(std::string_view line) {
    const std::string text = std::string(WindowProtocol::executable) + ": " + std::string(line) + "\n";
    std::fputs(text.c_str(), stderr);
}

std::optional<int> socketOf(std::span<char*> arguments) {
    if (arguments.size() != 3 || arguments[1] != WindowProtocol::socketOption) {
        return std::nullopt;
    }
    bool isNumber = false;
    const int descriptor = QByteArray(arguments[2]).toInt(&isNumber);
    struct stat status {};
    const bool isSocket = isNumber && fstat(descriptor, &status) == 0 && S_ISSOCK(status.st_mode);
    return isSocket ? std::optional(descriptor) : std::nullopt;
}

// The toolkit ends the process by a signal where it finds no display; here it is one line and a status.
void handleToolkitMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    if (type == QtFatalMsg) {
        say(message.section(u'\n', 0, 0).toStdString());
        _exit(WindowProtocol::noDisplayStatus);
    }
    if (type == QtCriticalMsg) {
        say(message.toStdString());
    }
}

QIcon icon() {
    QIcon icon;
    constexpr std::array<std::int64_t, 5> sides{16, 24, 32, 48, 128};
    for (const auto side : sides) {
        icon.addPixmap(QPixmap::fromImage(PixelArt::toQImage(applicationIcon(side))));
    }
    return icon;
}

int run(int descriptor, int& argumentCount, char** arguments) {
    qInstallMessageHandler(handleToolkitMessage);
    QCoreApplication::setApplicationName(QStringLiteral("thermopix"));
    QGuiApplication::setDesktopFileName(qtString(AppInfo::identifier));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QApplication application(argumentCount, arguments);
    const DesktopPalette palette;
    QApplication::setStyle(new ShellStyle);
    QApplication::setWindowIcon(icon());
    AccessibleViews::install();

    MessageSocket socket(descriptor);
    WindowProcess process([&socket](const WindowEvent& event) { socket.send(event); }, [] { QApplication::exit(0); });
    socket.onRequest = [&process](const WindowRequest& request) { process.perform(request); };
    socket.onEnd = [] { QApplication::exit(0); };
    socket.onMalformed = [] {
        say("what came over the socket is no request");
        QApplication::exit(malformedStatus);
    };
    socket.send(Hello{});
    return QApplication::exec();
}

}  // namespace
}  // namespace thermopix

int main(int argumentCount, char** arguments) {
    using namespace thermopix;
    const auto descriptor = socketOf({arguments, static_cast<std::size_t>(argumentCount)});
    if (!descriptor) {
        say("started by thermopix, with --socket and the number of an open socket");
        return usageStatus;
    }
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        say("there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set");
        return WindowProtocol::noDisplayStatus;
    }
    return run(*descriptor, argumentCount, arguments);
}
