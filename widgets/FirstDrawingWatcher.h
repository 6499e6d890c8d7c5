#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>

class QWidget;

namespace vantrel {

/// Runs an action once a widget has been drawn for the first time, from the event loop, so that
/// what the action costs comes after the user sees the widget rather than before. Work that the
/// first picture does not need (writing to disk, an icon for the window manager) waits here. A
/// widget that is not drawn soon (started minimised, on another desktop) does not hold it back.
class FirstDrawingWatcher : public QObject {
    Q_OBJECT

public:
    /// Install before the widget is shown. The action runs once, and not at all if the context is
    /// gone by then.
    static void afterFirstDrawing(QWidget* widget, QObject* context, std::function<void()> action);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    FirstDrawingWatcher(QWidget* widget, QObject* context, std::function<void()> action);
    void runAction();

    QPointer<QObject> m_context;
    std::function<void()> m_action;
    QTimer m_latest;
};

}  // namespace vantrel
