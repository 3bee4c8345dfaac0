#include "platform/qt/windows/AboutContent.h"

#include <QPainter>
#include <cmath>
#include <utility>

#include "pixels/ApplicationIcon.h"
#include "platform/qt/drawing/PixelArt.h"
#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/TextLines.h"
#include "platform/qt/views/ViewControl.h"

namespace thermopix {

namespace {

constexpr int panelWidth = 320;
constexpr int sideMargin = 24;
constexpr int topMargin = 28;
constexpr int bottomMargin = 24;
constexpr int iconSide = 96;
constexpr int iconGap = 16;
constexpr int versionGap = 4;
constexpr int creditsGap = 16;

class CenteredText final : public QWidget, public AccessibleElement {
public:
    CenteredText(QWidget* parent, const QString& name, std::string text, TextStyle style, ColorRole role)
        : QWidget(parent), text_(std::move(text)), style_(style), role_(role) {
        setNames(*this, name.toStdString(), text_);
        constexpr int width = panelWidth - 2 * sideMargin;
        const Size size = TextLines::size(text_, style_, TextLines::Wrapping::asNeeded, width);
        resize(width, static_cast<int>(std::ceil(size.height)));
    }

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        TextLines::draw(painter, rect(), text_, style_, TextLines::Wrapping::asNeeded,
                        RoleColors::color(role_, palette()), Qt::AlignHCenter);
    }

private:
    std::string text_;
    TextStyle style_;
    ColorRole role_;
};

class IconView final : public QWidget {
public:
    explicit IconView(QWidget* parent) : QWidget(parent) { resize(iconSide, iconSide); }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const double scale = painter.deviceTransform().m11();
        QImage icon = PixelArt::toQImage(applicationIcon(std::llround(iconSide * scale)));
        icon.setDevicePixelRatio(scale);
        painter.drawImage(QPointF(0, 0), icon);
    }
};

}  // namespace

std::unique_ptr<QWidget> makeAboutContent(const AboutPanelContent& content) {
    auto panel = std::make_unique<QWidget>();
    const auto& credits = content.creditsStyle;
    int y = topMargin;
    const auto place = [&](QWidget* widget) {
        widget->move((panelWidth - widget->width()) / 2, y);
        y += widget->height();
    };
    place(new IconView(panel.get()));
    y += iconGap;
    place(new CenteredText(panel.get(), QStringLiteral("about.name"), content.applicationName,
                           {.points = 18, .isSemibold = true}, ColorRole::primary));
    y += versionGap;
    place(new CenteredText(panel.get(), QStringLiteral("about.version"), "Version " + content.version, {.points = 12},
                           ColorRole::secondary));
    y += creditsGap;
    place(new CenteredText(panel.get(), QStringLiteral("about.credits"), content.credits,
                           {.points = credits.fontSize, .lineSpacing = credits.extraLineSpacing},
                           credits.isSecondary ? ColorRole::secondary : ColorRole::primary));
    panel->resize(panelWidth, y + bottomMargin);
    return panel;
}

}  // namespace thermopix
