#pragma once

#include <QToolButton>

#include "DisplayHoverButtonCell.h"

namespace vantrel {

/// An image button of the calculator's display: it shows its icon and nothing else, with a faint
/// backdrop while the mouse is over it and the icon darkened while it is held down. A plain
/// QToolButton otherwise, so a layout can promote one in Designer and keep its clicked()
/// connections, its menu and its dynamic properties such as "tag".
///
/// The icon is drawn at iconSize(), at the screen's device pixel ratio. The button takes keyboard
/// focus through Tab (never through a click, which would take it from the expression field) and
/// then shows a thin outline; Space presses it.
class DisplayHoverButton : public QToolButton {
    Q_OBJECT

public:
    explicit DisplayHoverButton(QWidget* parent = nullptr);

    DisplayHoverButtonCell& cell() { return m_cell; }
    const DisplayHoverButtonCell& cell() const { return m_cell; }

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    DisplayHoverButtonCell m_cell{this};
    bool m_ignoreEnterUntilLeave = false;
};

}  // namespace vantrel
