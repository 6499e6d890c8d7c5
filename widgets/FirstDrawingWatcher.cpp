#include "FirstDrawingWatcher.h"

#include <QEvent>
#include <QWidget>

namespace vantrel {

namespace {

// Long enough for any start that shows its window; short enough that a window started out of
// sight still gets its icon and its writes soon.
constexpr int kLatestMilliseconds = 2000;

}  // namespace

void FirstDrawingWatcher::afterFirstDrawing(QWidget* widget, QObject* context,
                                            std::function<void()> action) {
    widget->installEventFilter(new FirstDrawingWatcher(widget, context, std::move(action)));
}

// A child of the widget: gone with it if it goes first.
FirstDrawingWatcher::FirstDrawingWatcher(QWidget* widget, QObject* context,
                                         std::function<void()> action)
    : QObject(widget), m_context(context), m_action(std::move(action)) {
    m_latest.setSingleShot(true);
    connect(&m_latest, &QTimer::timeout, this, &FirstDrawingWatcher::runAction);
    m_latest.start(kLatestMilliseconds);
}

bool FirstDrawingWatcher::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        m_latest.stop();
        // Queued: the paint event is one of several that make up the first picture.
        QTimer::singleShot(0, this, &FirstDrawingWatcher::runAction);
    }
    return false;
}

void FirstDrawingWatcher::runAction() {
    parent()->removeEventFilter(this);
    deleteLater();
    if (m_context) m_action();
}

}  // namespace vantrel
