#include "FirstDrawingWatcher.h"

#include <QEvent>
#include <QPointer>
#include <QTimer>

namespace vantrel {

void FirstDrawingWatcher::afterFirstDrawing(QWidget* widget, QObject* context,
                                            std::function<void()> action) {
    widget->installEventFilter(new FirstDrawingWatcher(widget, context, std::move(action)));
}

// A child of the widget: gone with it if it is never drawn.
FirstDrawingWatcher::FirstDrawingWatcher(QWidget* widget, QObject* context,
                                         std::function<void()> action)
    : QObject(widget), m_context(context), m_action(std::move(action)) {}

bool FirstDrawingWatcher::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Paint) return false;
    watched->removeEventFilter(this);
    // Queued: the paint event is one of several that make up the first picture.
    QTimer::singleShot(0, m_context, std::move(m_action));
    deleteLater();
    return false;
}

}  // namespace vantrel
