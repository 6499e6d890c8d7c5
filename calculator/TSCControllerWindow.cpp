// TSCController: collapsing and expanding the window, and remembering where it was.

#include <QEvent>
#include <QKeyEvent>
#include <QMainWindow>
#include <QPropertyAnimation>

#include "NamedImages.h"
#include "TSCController.h"
#include "WindowHeights.h"
#include "ui_Calculator.h"

namespace vantrel {

void TSCController::setLogButtonsEnabled(bool enabled) {
    m_ui->saveButton->setEnabled(enabled);
    m_ui->clearButton->setEnabled(enabled);
}

// The log and its buttons follow whether the log shows; a hidden log takes no focus, so that Tab
// never leads the keys into it.
void TSCController::showLog(bool expanded) {
    if (expanded) m_ui->logArea->show();
    m_logExpanded = expanded;
    setLogButtonsEnabled(expanded);
    showLogPictures(expanded);
    m_ui->calcLog->setFocusPolicy(expanded ? Qt::StrongFocus : Qt::NoFocus);
    if (!expanded && m_ui->calcLog->hasFocus()) m_ui->inputField->setFocus();
}

void TSCController::showLogAreaIfRoom() {
    if (m_window->height() > static_cast<int>(kCollapsedHeight)) m_ui->logArea->show();
}

void TSCController::showLogPictures(bool expanded) {
    const int side = m_ui->resizeImage->width();
    m_ui->resizeImage->setPixmap(
        namedImage(expanded ? QStringLiteral("MiniResizeDark") : QStringLiteral("MiniResize"))
            .pixmap(side, side));
    m_ui->expandCollapseButton->setIcon(
        namedImage(expanded ? QStringLiteral("HideMiniButton") : QStringLiteral("ShowMiniButton")));
}

void TSCController::changeWindow(QObject*) {
    QMainWindow* window = calcWindow();
    const QRect current = window->geometry();
    // A toggle during the animation starts from where the window was going, as if the animation
    // had already ended: a height halfway through is no height to remember.
    QRect frame = current;
    if (m_windowAnimation) {
        frame = m_windowAnimation->endValue().toRect();
        m_windowAnimation->stop();
    }
    const window_heights::Toggle toggle =
        window_heights::toggle(frame.height(), m_buttonsExpanded, m_storedHeight);
    m_buttonsExpanded = toggle.expand;
    m_storedHeight = toggle.storedHeight;
    showLog(toggle.expand);

    // The top edge stays where it is; only the bottom edge moves.
    const QRect target(frame.x(), frame.y(), frame.width(), static_cast<int>(toggle.targetHeight));
    auto* animation = new QPropertyAnimation(window, "geometry", this);
    m_windowAnimation = animation;
    animation->setDuration(300);
    animation->setStartValue(current);
    animation->setEndValue(target);
    m_animating = true;
    connect(animation, &QPropertyAnimation::finished, this, [this] {
        m_animating = false;
        windowDidMove();
    });
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

QSize TSCController::windowWillResize(QSize proposedSize) {
    const window_heights::DraggedHeight snapped =
        window_heights::snapDraggedHeight(proposedSize.height());
    if (snapped.logExpanded) showLog(*snapped.logExpanded);
    return {proposedSize.width(), static_cast<int>(snapped.height)};
}

// A window manager runs a drag itself: a size asked for during the drag loses against the next
// motion, and the two fight until the user lets go, leaving whichever came last. So the height is
// snapped once it has rested for a moment, as a drag that ends there would be, while the log's
// pictures and buttons follow the drag live. A height the window manager sets in one step
// (maximize, restore, tiling) settles the same way, and taller than collapsed shows the log.
void TSCController::settleHeight() {
    if (!m_window || m_animating || !m_window->isVisible()) return;
    const QSize size = m_window->size();
    const bool oneStep = m_window->isMaximized() || m_window->isFullScreen();
    const QSize wanted = oneStep ? size : windowWillResize(size);
    if (wanted != size) m_window->resize(wanted);
    // The toggle's own record is brought in line with the height when it is next used.
    showLog(wanted.height() > window_heights::kCollapsed);
    windowDidMove();
}

// Quitting during the show/hide animation keeps the height it was going to, not one half-way.
void TSCController::finishWindowAnimation() {
    if (m_windowAnimation) m_windowAnimation->setCurrentTime(m_windowAnimation->duration());
}

// Saved on every move and size change: on this desktop a resize keeps the top-left corner, so a
// move alone would miss a window that was only made taller.
void TSCController::windowDidMove() {
    if (m_window && !m_animating) {
        m_preferences.setValue(QStringLiteral("Calc Panel"), m_window->saveGeometry());
    }
}

void TSCController::setPasteButtonHidden(bool hidden) {
    m_ui->pasteButton->setHidden(hidden);
    m_ui->pasteButton->setEnabled(!hidden);
    m_ui->pasteButton->update();
}

bool TSCController::eventFilter(QObject* watched, QEvent* event) {
    if (acceptTimelineDrop(event) || typeIntoInput(watched, event)) return true;
    if (watched != m_window) return false;
    // Esc takes back what is being typed; the log, which may hold an hour of work, stays. A key
    // press rather than a shortcut: the Esc that closes a pop-up list or a menu is theirs alone.
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        clearEntry(m_window);
        return true;
    }
    if (event->type() == QEvent::Move) windowDidMove();
    if (event->type() == QEvent::Resize) {
        showLogAreaIfRoom();
        if (!m_animating && m_window->isVisible()) {
            // The log follows the bands live; the height itself waits until the drag has settled.
            windowWillResize(m_window->size());
            windowDidMove();
            m_settleTimer.start();
        }
    }
    if (event->type() == QEvent::WindowStateChange) m_settleTimer.start();
    return false;
}

}  // namespace vantrel
