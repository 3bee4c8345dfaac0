#include "platform/qt/windows/ReadoutStrip.h"

#include <QApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "pixels/PixelStyle.h"
#include "platform/qt/drawing/PixelArt.h"
#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/Strings.h"
#include "platform/qt/drawing/ViewPainter.h"
#include "platform/qt/windows/EveryWorkspace.h"

namespace thermopix {

namespace {

constexpr int sidePadding = 9;
constexpr int edgeMargin = 12;

struct Look {
    QColor top;
    QColor bottom;
    QColor outline;
    QColor ink;
};

// The screen, along whose upper edge the strip is moved.
QRect room() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? QRect() : screen->availableGeometry();
}

// A menu bar on a light desktop and on a dark one.
Look lookFor(const QPalette& palette) {
    return RoleColors::isDark(palette) ? Look{{58, 58, 64}, {38, 38, 43}, {255, 255, 255, 46}, {255, 255, 255, 235}}
                                       : Look{{250, 250, 252}, {232, 232, 238}, {0, 0, 0, 56}, {0, 0, 0, 217}};
}

}  // namespace

ReadoutStrip::ReadoutStrip(MenuView::Chosen chosen) : QAbstractButton(nullptr), menu_(std::move(chosen), this) {
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    setFocusPolicy(Qt::StrongFocus);
    setObjectName(QStringLiteral("status.strip"));
    // Window managers keep a dock above the others. The toolkit takes the type only for a window that is there.
    winId();
    setAttribute(Qt::WA_X11NetWmWindowTypeDock);
    standOnEveryWorkspace(*this);
    // From assistive technology; the pointer and the keys come by their own ways.
    connect(this, &QAbstractButton::clicked, this, [this] { openMenu(); });
    connect(&menu_, &QMenu::aboutToHide, this, [this] { update(); });
}

void ReadoutStrip::setReadout(const StatusImage& image, const std::string& note) {
    const QString label = qtString(image.description.value_or(""));
    setWindowTitle(label);
    if (accessibleName() != label) {
        setAccessibleName(label);
    }
    setToolTip(note.empty() ? label : label + QLatin1Char('\n') + qtString(note));
    image_ = image;
    const int narrower = width() - sizeHint().width();
    resize(sizeHint());
    if (place_) {
        // The right end stays where it is.
        moveAlongEdge(place_->x() + narrower);
    }
    update();
}

void ReadoutStrip::present(std::optional<QPoint> position) {
    resize(sizeHint());
    moveAlongEdge(position ? position->x() : room().right() + 1 - width() - edgeMargin);
    show();
}

void ReadoutStrip::describeState(QAccessible::State& state) const {
    state.hasPopup = true;
    state.expanded = menu_.isVisible();
}

QSize ReadoutStrip::sizeHint() const {
    return {static_cast<int>(std::ceil(image_.width())) + 2 * sidePadding,
            std::max(static_cast<int>(menuBarThickness), static_cast<int>(std::ceil(image_.height())) + 2)};
}

void ReadoutStrip::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Look look = lookFor(palette());
    QLinearGradient ground(0, 0, 0, height());
    ground.setColorAt(0, look.top);
    ground.setColorAt(1, look.bottom);
    painter.fillRect(rect(), ground);
    if (isDown() || menu_.isVisible()) {
        QColor veil = look.ink;
        veil.setAlpha(30);
        painter.fillRect(rect(), veil);
    }
    const double line = 1 / painter.deviceTransform().m11();
    const QRectF bounds = rect();
    painter.fillRect(QRectF(0, 0, line, bounds.height()), look.outline);
    painter.fillRect(QRectF(bounds.width() - line, 0, line, bounds.height()), look.outline);
    painter.fillRect(QRectF(line, bounds.height() - line, bounds.width() - 2 * line, line), look.outline);
    PixelArt::draw(painter, rect(), image_, look.ink);
    if (hasFocus() && !isPointed_ && QApplication::activeWindow() == this) {
        ViewPainter::drawFocusRing(painter, rect(), 2, palette());
    }
}

void ReadoutStrip::mousePressEvent(QMouseEvent* event) {
    isPointed_ = true;
    if (event->button() == Qt::LeftButton) {
        grip_ = event->globalPosition().toPoint().x() - place().x();
        wasDragged_ = false;
        setDown(true);
    } else if (event->button() == Qt::RightButton) {
        openMenu();
    }
}

void ReadoutStrip::mouseMoveEvent(QMouseEvent* event) {
    if (!grip_) {
        return;
    }
    const int left = event->globalPosition().toPoint().x() - *grip_;
    wasDragged_ = wasDragged_ || std::abs(left - place().x()) >= QApplication::startDragDistance();
    if (wasDragged_) {
        moveAlongEdge(left);
    }
}

void ReadoutStrip::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !grip_) {
        return;
    }
    grip_.reset();
    setDown(false);
    if (wasDragged_) {
        onMoved(place());
    } else {
        openMenu();
    }
}

void ReadoutStrip::keyPressEvent(QKeyEvent* event) {
    isPointed_ = false;
    switch (event->key()) {
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Down:
        case Qt::Key_Menu:
            openMenu();
            break;
        default:
            QAbstractButton::keyPressEvent(event);
    }
}

void ReadoutStrip::focusOutEvent(QFocusEvent* event) {
    // It is reached with the keyboard unless the pointer says otherwise; its own menu only borrows the focus.
    isPointed_ = isPointed_ && menu_.isVisible();
    QAbstractButton::focusOutEvent(event);
}

void ReadoutStrip::openMenu() {
    menu_.open(place() + QPoint(0, height()));
    update();
}

void ReadoutStrip::moveAlongEdge(int left) {
    const QRect edge = room();
    place_ = QPoint(std::clamp(left, edge.left(), std::max(edge.left(), edge.right() + 1 - width())), edge.top());
    move(*place_);
}

}  // namespace thermopix
