#include "platform/qt/DesktopPalette.h"

#include <QApplication>
#include <QColor>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QStyle>
#include <array>

#include "platform/qt/drawing/RoleColors.h"

namespace thermopix {

namespace {

constexpr int portalTimeoutMilliseconds = 250;
constexpr int roomForWhiteText = 160;

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");
const QString accentKey = QStringLiteral("accent-color");

struct Shades {
    QColor window;
    QColor text;
    QColor base;
    QColor button;
    QColor accent;
};

QPalette paletteOf(const Shades& shades) {
    QPalette palette(shades.button, shades.window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, shades.text);
    }
    palette.setColor(QPalette::Base, shades.base);
    palette.setColor(QPalette::AlternateBase, shades.window);
    palette.setColor(QPalette::ToolTipBase, shades.base);
    palette.setColor(QPalette::Highlight, shades.accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    QColor faint = shades.text;
    faint.setAlphaF(0.4F);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, faint);
    }
    return palette;
}

// Settings arrive as variants in variants.
QVariant unwrapped(QVariant value) {
    while (value.userType() == qMetaTypeId<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

// A colour outside the range means that there is none.
std::optional<QColor> accentOf(const QVariant& value) {
    if (value.userType() != qMetaTypeId<QDBusArgument>()) {
        return std::nullopt;
    }
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QStringLiteral("(ddd)")) {
        return std::nullopt;
    }
    std::array<double, 3> channels{};
    argument.beginStructure();
    for (double& channel : channels) {
        argument >> channel;
        if (!(channel >= 0 && channel <= 1)) {
            return std::nullopt;
        }
    }
    argument.endStructure();
    return QColor::fromRgbF(static_cast<float>(channels[0]), static_cast<float>(channels[1]),
                            static_cast<float>(channels[2]));
}

}  // namespace

DesktopPalette::DesktopPalette() {
    const QPalette platform = QApplication::palette();
    isPlatformDark_ = RoleColors::isDark(platform);
    if (platform != QApplication::style()->standardPalette()) {
        desktopPalette_ = platform;
    }
    for (const auto& key : {colorSchemeKey, accentKey}) {
        if (const auto value = readSetting(key)) {
            take(key, *value);
        }
    }
    QDBusConnection::sessionBus().connect(service, path, settingsInterface, QStringLiteral("SettingChanged"), this,
                                          SLOT(settingChanged(QString, QString, QDBusVariant)));
    apply();
}

QPalette DesktopPalette::lightPalette() {
    return paletteOf({.window = QColor(0xF4, 0xF4, 0xF6),
                      .text = QColor(0x1D, 0x1D, 0x20),
                      .base = Qt::white,
                      .button = Qt::white,
                      .accent = QColor(0x15, 0x68, 0xE3)});
}

QPalette DesktopPalette::darkPalette() {
    return paletteOf({.window = QColor(0x1F, 0x1F, 0x22),
                      .text = QColor(0xF1, 0xF1, 0xF4),
                      .base = QColor(0x17, 0x17, 0x19),
                      .button = QColor(0x3A, 0x3A, 0x3F),
                      .accent = QColor(0x2B, 0x78, 0xEE)});
}

void DesktopPalette::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group == appearanceGroup) {
        take(key, unwrapped(value.variant()));
        apply();
    }
}

std::optional<QVariant> DesktopPalette::readSetting(const QString& key) {
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return std::nullopt;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, settingsInterface, QStringLiteral("Read"));
    call.setArguments({appearanceGroup, key});
    const QDBusMessage reply = bus.call(call, QDBus::Block, portalTimeoutMilliseconds);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        return std::nullopt;
    }
    return unwrapped(reply.arguments().front());
}

void DesktopPalette::take(const QString& key, const QVariant& value) {
    if (key == colorSchemeKey) {
        constexpr uint dark = 1;
        constexpr uint light = 2;
        const uint scheme = value.toUInt();
        prefersDark_ = scheme == dark ? std::optional(true) : (scheme == light ? std::optional(false) : std::nullopt);
    } else if (key == accentKey) {
        accent_ = accentOf(value);
    }
}

void DesktopPalette::apply() const {
    const bool dark = prefersDark_.value_or(isPlatformDark_);
    if (desktopPalette_ && isPlatformDark_ == dark) {
        QApplication::setPalette(*desktopPalette_);
        return;
    }
    QPalette palette = dark ? darkPalette() : lightPalette();
    if (accent_) {
        palette.setColor(QPalette::Highlight, *accent_);
        const bool isBright = qGray(accent_->rgb()) > roomForWhiteText;
        palette.setColor(QPalette::HighlightedText, isBright ? Qt::black : Qt::white);
    }
    QApplication::setPalette(palette);
}

}  // namespace thermopix
