#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QPalette>
#include <optional>

namespace thermopix {

/// Gives the program the desktop's colours: its palette where it sets one, else one of our own, light or dark and with
/// the accent colour that the desktop's settings portal names.
class DesktopPalette final : public QObject {
    Q_OBJECT

public:
    /// Follows the portal from now on.
    DesktopPalette();

    [[nodiscard]] static QPalette lightPalette();
    [[nodiscard]] static QPalette darkPalette();

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    [[nodiscard]] static std::optional<QVariant> readSetting(const QString& key);
    void take(const QString& key, const QVariant& value);
    void apply() const;

    /// Set by the desktop rather than by the toolkit's style.
    std::optional<QPalette> desktopPalette_;
    bool isPlatformDark_ = false;
    std::optional<bool> prefersDark_;
    std::optional<QColor> accent_;
};

}  // namespace thermopix
