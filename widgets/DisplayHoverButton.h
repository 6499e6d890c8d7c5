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

    /// For a button much wider than its image (one whose offset moves the image far from its
    /// start): it then shows itself and answers the mouse only around the image, 2 points to
    /// either side and 1 above and below, so its backdrop frames the picture alone.
    void fitToImage();

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void updateImage();
    void maskAroundImage();

    DisplayHoverButtonCell m_cell{this};
    bool m_ignoreEnterUntilLeave = false;
    bool m_fitsImage = false;
};

}  // namespace vantrel
