#include "platform/qt/drawing/ShellStyle.h"

#include <QMenu>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOptionMenuItem>
#include <QStyleOptionSlider>
#include <algorithm>
#include <array>
#include <cmath>

#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/Symbols.h"
#include "platform/qt/drawing/ViewPainter.h"

namespace thermopix {

namespace {

constexpr int menuMargin = 5;
/// Marks and symbols stand left of every title, in a column of this width.
constexpr int markColumn = 26;
constexpr int trailingPadding = 12;
constexpr int shortcutGap = 28;
constexpr int standardHeight = 24;
constexpr int separatorHeight = 11;
constexpr double highlightRadius = 5;
constexpr double disabledOpacity = 0.38;
constexpr double markPoints = 12;

constexpr int scrollBarWidth = 12;
constexpr int scrollThumbWidth = 6;
constexpr int shortestThumb = 36;
constexpr double thumbOpacity = 0.28;
constexpr double activeThumbOpacity = 0.5;

const QAction* actionOf(const QStyleOptionMenuItem& item, const QWidget* widget) {
    const auto* menu = qobject_cast<const QMenu*>(widget);
    return menu == nullptr ? nullptr : menu->actionAt(item.rect.center());
}

QColor textColor(const QStyleOptionMenuItem& item, const QAction* action, bool isHighlighted) {
    const QVariant role = action == nullptr ? QVariant() : action->property(ShellStyle::colorProperty);
    if (role.isValid()) {
        return RoleColors::color(static_cast<ColorRole>(role.toInt()), item.palette);
    }
    if ((item.state & QStyle::State_Enabled) == 0) {
        return RoleColors::faded(ColorRole::primary, disabledOpacity, item.palette);
    }
    return RoleColors::color(isHighlighted ? ColorRole::onAccent : ColorRole::primary, item.palette);
}

void drawCheckMark(QPainter& painter, QPointF center, const QColor& color) {
    painter.setPen(QPen(color, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    const std::array<QPointF, 3> corners{center + QPointF(-4, 0.3), center + QPointF(-1.3, 3.2),
                                         center + QPointF(4, -3.8)};
    painter.drawPolyline(corners.data(), static_cast<int>(corners.size()));
}

void drawMenuItem(const QStyleOptionMenuItem& item, QPainter& painter, const QWidget* widget) {
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        painter.fillRect(QRect(item.rect.left() + trailingPadding, item.rect.center().y(),
                               item.rect.width() - 2 * trailingPadding, 1),
                         RoleColors::color(ColorRole::separator, item.palette));
        return;
    }
    const QAction* action = actionOf(item, widget);
    const bool isHighlighted = (item.state & QStyle::State_Selected) != 0 && (item.state & QStyle::State_Enabled) != 0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (isHighlighted) {
        ViewPainter::fillRounded(painter, item.rect, highlightRadius,
                                 RoleColors::color(ColorRole::accent, item.palette));
    }
    const QColor color = textColor(item, action, isHighlighted);
    const QPointF mark(item.rect.left() + markColumn / 2.0, item.rect.top() + item.rect.height() / 2.0);
    if (item.checkType != QStyleOptionMenuItem::NotCheckable && item.checked) {
        drawCheckMark(painter, mark, color);
    } else if (action != nullptr && action->property(ShellStyle::symbolProperty).isValid()) {
        const double side = Symbols::side(markPoints);
        Symbols::draw(painter, QRectF(std::floor(mark.x() - side / 2), std::floor(mark.y() - side / 2), side, side),
                      action->property(ShellStyle::symbolProperty).toString().toStdString(), color);
    }
    const QRect room = item.rect.adjusted(markColumn, 0, -trailingPadding, 0);
    const auto parts = item.text.split(u'\t');
    painter.setFont(item.font);
    painter.setPen(color);
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextHideMnemonic, parts.front());
    if (parts.size() > 1) {
        QColor faint = color;
        faint.setAlphaF(color.alphaF() * (isHighlighted ? 0.85F : 0.55F));
        painter.setPen(faint);
        painter.drawText(room, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, parts.back());
    }
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu) {
        painter.setPen(QPen(color, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const QPointF tip(item.rect.right() - trailingPadding, mark.y());
        painter.drawPolyline(QPolygonF{tip + QPointF(-3.5, -3.5), tip, tip + QPointF(-3.5, 3.5)});
    }
    painter.restore();
}

QSize menuItemSize(const QStyleOptionMenuItem& item) {
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        return {1, separatorHeight};
    }
    const QFontMetrics metrics(item.font);
    const auto parts = item.text.split(u'\t');
    int width =
        markColumn + metrics.size(Qt::TextSingleLine | Qt::TextHideMnemonic, parts.front()).width() + trailingPadding;
    if (item.reservedShortcutWidth > 0) {
        width += shortcutGap + item.reservedShortcutWidth;
    }
    // Small print stands closer together than what can be chosen.
    const bool isSmall = item.font.pixelSize() > 0 && item.font.pixelSize() <= 11;
    return {width, isSmall ? metrics.height() + 4 : std::max(standardHeight, metrics.height() + 6)};
}

}  // namespace

ShellStyle::ShellStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void ShellStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && item != nullptr) {
        drawMenuItem(*item, *painter, widget);
        return;
    }
    if (element == CE_MenuEmptyArea) {
        return;
    }
    if (element == CE_MenuBarEmptyArea && option != nullptr) {
        painter->fillRect(option->rect, RoleColors::color(ColorRole::sidebar, option->palette));
        return;
    }
    if (element == CE_MenuBarItem && item != nullptr) {
        painter->fillRect(item->rect, RoleColors::color(ColorRole::sidebar, item->palette));
        const bool isOpen = (item->state & (State_Selected | State_Sunken)) != 0;
        if (isOpen) {
            ViewPainter::fillRounded(*painter, item->rect.adjusted(0, 2, 0, -2), highlightRadius,
                                     RoleColors::faded(ColorRole::primary, 0.1, item->palette));
        }
        painter->setPen(RoleColors::color(ColorRole::primary, item->palette));
        painter->drawText(item->rect, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextHideMnemonic, item->text);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void ShellStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    if (element == PE_PanelMenu) {
        painter->fillRect(option->rect, RoleColors::color(ColorRole::card, option->palette));
        return;
    }
    if (element == PE_FrameMenu) {
        painter->save();
        painter->setPen(RoleColors::faded(ColorRole::primary, 0.2, option->palette));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        painter->restore();
        return;
    }
    if (element == PE_PanelMenuBar) {
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void ShellStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                    const QWidget* widget) const {
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || slider == nullptr) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    if (slider->maximum <= slider->minimum) {
        return;
    }
    const QRect thumb = subControlRect(CC_ScrollBar, slider, SC_ScrollBarSlider, widget);
    const bool isActive = (slider->state & (State_MouseOver | State_Sunken)) != 0;
    constexpr double side = (scrollBarWidth - scrollThumbWidth) / 2.0;
    const QRectF shown = QRectF(thumb).adjusted(side, 2, -side, -2);
    ViewPainter::fillRounded(
        *painter, shown, scrollThumbWidth / 2.0,
        RoleColors::faded(ColorRole::primary, isActive ? activeThumbOpacity : thumbOpacity, slider->palette));
}

QSize ShellStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                   const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (type == CT_MenuItem && item != nullptr) {
        return menuItemSize(*item);
    }
    if (type == CT_MenuBarItem) {
        return {contents.width() + 18, std::max(contents.height(), 24)};
    }
    return QProxyStyle::sizeFromContents(type, option, contents, widget);
}

QRect ShellStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                 const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || bar == nullptr) {
        return QProxyStyle::subControlRect(control, option, part, widget);
    }
    const int length = bar->rect.height();
    const int range = bar->maximum - bar->minimum;
    const int thumb = range <= 0 ? length
                                 : std::clamp(length * bar->pageStep / (range + bar->pageStep),
                                              std::min(shortestThumb, length), length);
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, length - thumb);
    const auto along = [&](int from, int size) {
        return QRect(bar->rect.left(), bar->rect.top() + from, bar->rect.width(), size);
    };
    switch (part) {
        case SC_ScrollBarSlider:
            return along(start, thumb);
        case SC_ScrollBarSubPage:
            return along(0, start);
        case SC_ScrollBarAddPage:
            return along(start + thumb, length - start - thumb);
        case SC_ScrollBarGroove:
            return bar->rect;
        default:
            return {};
    }
}

int ShellStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_ScrollBarExtent:
        case PM_ScrollView_ScrollBarOverlap:
            return scrollBarWidth;
        case PM_MenuHMargin:
        case PM_MenuVMargin:
            return menuMargin;
        case PM_MenuPanelWidth:
            return 1;
        case PM_MenuBarItemSpacing:
            return 0;
        case PM_MenuBarHMargin:
            return 6;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int ShellStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* data) const {
    return hint == SH_Menu_Scrollable ? 1 : QProxyStyle::styleHint(hint, option, widget, data);
}

}  // namespace thermopix
