#pragma once

#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QRectF>
#include <QSize>

class QPainter;
class QWidget;

namespace vantrel {

/// Draws a display hover button: a faint rounded backdrop while the mouse is over the button, and
/// the button's image at a fixed place, darkened while the button is held down. It draws no title
/// and no bezel; the image is all the button shows.
///
/// The cell belongs to one control, which it repaints when the hover state changes. All geometry
/// is in logical points; the image may carry a device pixel ratio above 1 and stays crisp.
class DisplayHoverButtonCell {
public:
    /// Width in points of the standard display button. A hover button places its image as if it
    /// were that wide, and the offset corrects for buttons that are not.
    static constexpr qreal kStandardWidth = 27;

    /// `control` is repainted when the hover state changes; it may be null for a cell drawn by
    /// hand, and must outlive the cell otherwise.
    explicit DisplayHoverButtonCell(QWidget* control = nullptr) : m_control(control) {}
    DisplayHoverButtonCell(const DisplayHoverButtonCell&) = delete;
    DisplayHoverButtonCell& operator=(const DisplayHoverButtonCell&) = delete;

    /// True while the mouse is inside the control; unrelated to the pressed state.
    bool isHighlighted() const { return m_highlighted; }
    /// Sets the hover state and schedules a repaint of the control.
    void mouseEntered();
    /// Clears the hover state and schedules a repaint of the control.
    void mouseExited();

    /// The width the image is centred in; the window's wide label buttons centre theirs in their
    /// own width.
    qreal standardWidth() const { return m_standardWidth; }
    void setStandardWidth(qreal width) { m_standardWidth = width; }
    /// Horizontal correction of the image in points: a positive offset moves the image left.
    float offset() const { return m_offset; }
    /// Takes effect at the next repaint; does not schedule one.
    void setOffset(float offset) { m_offset = offset; }

    const QPixmap& image() const { return m_image; }
    void setImage(const QPixmap& image) { m_image = image; }

    /// Where drawInterior() puts the image: its own size, top-left at
    /// x = (standardWidth() - image width) / 2 - offset, y = 1. Empty without an image.
    QRectF imageRect() const;

    /// The one scratch image of the process, shared by every cell, `size` pixels large. It is
    /// re-created only when a different size is asked for, so its contents are those of the last
    /// use at that size. GUI thread only.
    static const QImage& scratchImage(QSize size);

    /// The image with `colour` laid over its opaque pixels at 60% (transparent pixels stay
    /// transparent), the image itself drawn at `alpha` opacity. The result lives in the shared
    /// scratch image and stays valid until a cell uses the scratch image again. A null image
    /// without an image of the cell's own.
    const QImage& coloredImage(const QColor& colour, float alpha) const;

    /// Paints the backdrop (while highlighted) and the image, darkened while `pressed`, into a
    /// view of `viewSize` points whose top-left corner is the painter's origin.
    void drawInterior(QPainter& painter, QSize viewSize, bool pressed) const;

private:
    QWidget* m_control;
    QPixmap m_image;
    float m_offset = 0;
    qreal m_standardWidth = kStandardWidth;
    bool m_highlighted = false;
};

}  // namespace vantrel
