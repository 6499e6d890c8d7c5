#include "DisplayHoverButton.h"

#include <QApplication>
#include <QCursor>
#include <QPainter>
#include <QTimer>
#include <optional>

namespace vantrel {

namespace {

// Where the pointer is. Each answer is a round trip to the display server, slow over a remote
// connection; the buttons a window shows together, in one pass of the event loop, share one.
QPoint pointerPosition() {
    static std::optional<QPoint> answer;
    if (!answer) {
        answer = QCursor::pos();
        QTimer::singleShot(0, qApp, [] { answer.reset(); });
    }
    return *answer;
}

}  // namespace

DisplayHoverButton::DisplayHoverButton(QWidget* parent) : QToolButton(parent) {
    setFocusPolicy(Qt::TabFocus);
}

// A button that appears under a resting mouse stays plain until the mouse leaves it and comes
// back: the highlight answers the user's movement, not the window's. Qt sends an enter event for
// the appearance alone, so the button notes here whether the mouse is already over it.
void DisplayHoverButton::showEvent(QShowEvent* event) {
    QToolButton::showEvent(event);
    const QPoint mouse = mapFromGlobal(pointerPosition());
    m_ignoreEnterUntilLeave = m_fitsImage ? mask().contains(mouse) : rect().contains(mouse);
}

void DisplayHoverButton::enterEvent(QEnterEvent* event) {
    QToolButton::enterEvent(event);
    if (!m_ignoreEnterUntilLeave) m_cell.mouseEntered();
}

void DisplayHoverButton::leaveEvent(QEvent* event) {
    QToolButton::leaveEvent(event);
    m_ignoreEnterUntilLeave = false;
    m_cell.mouseExited();
}

void DisplayHoverButton::fitToImage() {
    m_fitsImage = true;
    maskAroundImage();
}

void DisplayHoverButton::resizeEvent(QResizeEvent* event) {
    QToolButton::resizeEvent(event);
    maskAroundImage();
}

// The icon is fetched afresh: setIcon() tells no one, and the ratio changes when the window moves
// to another screen. QIcon caches its pixmaps, so this costs a lookup.
void DisplayHoverButton::updateImage() {
    m_cell.setImage(icon().pixmap(iconSize(), devicePixelRatioF()));
}

void DisplayHoverButton::maskAroundImage() {
    if (!m_fitsImage) return;
    updateImage();
    const QRect area = m_cell.imageRect().toAlignedRect().marginsAdded({2, 1, 2, 1}) & rect();
    // Less one pixel at each corner, as the backdrop's rounding would leave it.
    setMask(QRegion(area.adjusted(1, 0, -1, 0)) | QRegion(area.adjusted(0, 1, 0, -1)));
}

void DisplayHoverButton::paintEvent(QPaintEvent* /*event*/) {
    updateImage();
    QPainter painter(this);
    m_cell.drawInterior(painter, size(), isDown());
    if (hasFocus()) {
        const QRect frame = m_fitsImage ? mask().boundingRect() : rect();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(frame).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    }
}

}  // namespace vantrel
