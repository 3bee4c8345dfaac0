#include "platform/qt/drawing/ViewPainter.h"

#include <QLinearGradient>
#include <algorithm>

#include "platform/qt/drawing/PixelArt.h"
#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/Symbols.h"
#include "platform/qt/drawing/TextLines.h"

namespace thermopix::ViewPainter {

namespace {

constexpr double focusRingWidth = 2;

QRectF rectangle(const Frame& frame) {
    return {frame.x, frame.y, frame.width, frame.height};
}

QRectF content(const PlacedNode& placed) {
    const Insets& padding = placed.node->padding;
    return rectangle(placed.frame).adjusted(padding.leading, padding.top, -padding.trailing, -padding.bottom);
}

QBrush brush(const Fill& fill, const QRectF& area, const QPalette& palette) {
    if (const auto* role = std::get_if<RoleColor>(&fill)) {
        return RoleColors::color(*role, palette);
    }
    if (const auto* gradient = std::get_if<Gradient>(&fill)) {
        QLinearGradient shades(area.topLeft(), area.bottomLeft());
        shades.setColorAt(0, RoleColors::color(gradient->top));
        shades.setColorAt(1, RoleColors::color(gradient->bottom));
        return shades;
    }
    return Qt::NoBrush;
}

void drawGround(QPainter& painter, const Background& background, const QRectF& area, const QPalette& palette,
                Pointer pointer) {
    const double radius = background.cornerRadius;
    if (!std::holds_alternative<std::monostate>(background.fill)) {
        fillRounded(painter, area, radius, brush(background.fill, area, palette));
    } else {
        // A pressed ground is filled once more.
        for (int layer = 0; layer < static_cast<int>(pointer); ++layer) {
            fillRounded(painter, area, radius, brush(background.hoverFill, area, palette));
        }
    }
    if (background.border) {
        // Not thinner than a device pixel, and in the middle of it.
        const double width = std::max(background.borderWidth, 1 / painter.deviceTransform().m11());
        const QRectF line = area.adjusted(width / 2, width / 2, -width / 2, -width / 2);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing, radius > 0);
        painter.setPen(QPen(RoleColors::color(*background.border), width));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(line, radius - width / 2, radius - width / 2);
        painter.restore();
    }
}

void drawOwn(QPainter& painter, const PlacedNode& placed, const QPalette& palette) {
    const ViewNode& node = *placed.node;
    const QColor color = RoleColors::color(node.color, palette);
    switch (node.kind) {
        case ViewKind::text:
            TextLines::draw(painter, content(placed), node.text, node.textStyle,
                            node.wraps ? TextLines::Wrapping::asNeeded : TextLines::Wrapping::oneLine, color);
            break;
        case ViewKind::symbol:
            Symbols::draw(painter, content(placed), node.text, color);
            break;
        case ViewKind::pixelImage:
            PixelArt::draw(painter, content(placed), node.image, color);
            break;
        case ViewKind::divider:
            painter.fillRect(content(placed), color);
            break;
        default:
            break;
    }
}

void drawTree(QPainter& painter, const PlacedNode& placed, const QPalette& palette, Pointer pointer) {
    drawGround(painter, placed.node->background, rectangle(placed.frame), palette, pointer);
    drawOwn(painter, placed, palette);
    for (const auto& child : placed.children) {
        drawTree(painter, child, palette, Pointer::away);
    }
}

}  // namespace

void drawBackground(QPainter& painter, const ViewNode& node, QSizeF size, const QPalette& palette, Pointer pointer) {
    drawGround(painter, node.background, {{0, 0}, size}, palette, pointer);
}

void draw(QPainter& painter, const ViewNode& node, QSizeF size, const QPalette& palette, Pointer pointer,
          MeasureLeaf measure) {
    drawTree(painter, layOut(node, {size.width(), size.height()}, measure), palette, pointer);
}

void fillRounded(QPainter& painter, const QRectF& rectangle, double cornerRadius, const QBrush& brush) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, cornerRadius > 0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawRoundedRect(rectangle, cornerRadius, cornerRadius);
    painter.restore();
}

void drawFocusRing(QPainter& painter, const QRectF& rectangle, double cornerRadius, const QPalette& palette,
                   ColorRole role, double opacity) {
    constexpr double half = focusRingWidth / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(RoleColors::faded(role, opacity, palette), focusRingWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rectangle.adjusted(half, half, -half, -half), cornerRadius - half, cornerRadius - half);
    painter.restore();
}

}  // namespace thermopix::ViewPainter
