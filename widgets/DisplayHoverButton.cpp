#include "DisplayHoverButton.h"

#include <QCursor>
#include <QPainter>

namespace vantrel {

DisplayHoverButton::DisplayHoverButton(QWidget* parent) : QToolButton(parent) {
    setFocusPolicy(Qt::TabFocus);
}

// A button that appears under a resting mouse stays plain until the mouse leaves it and comes
// back: the highlight answers the user's movement, not the window's. Qt sends an enter event for
// the appearance alone, so the button notes here whether the mouse is already over it.
void DisplayHoverButton::showEvent(QShowEvent* event) {
    QToolButton::showEvent(event);
    m_ignoreEnterUntilLeave = rect().contains(mapFromGlobal(QCursor::pos()));
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

void DisplayHoverButton::paintEvent(QPaintEvent* /*event*/) {
    // The icon is fetched at every paint: setIcon() tells no one, and the ratio changes when the
    // window moves to another screen. QIcon caches its pixmaps, so this costs a lookup.
    m_cell.setImage(icon().pixmap(iconSize(), devicePixelRatioF()));
    QPainter painter(this);
    m_cell.drawInterior(painter, size(), isDown());
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    }
}

}  // namespace vantrel
