#include "DisplayHoverButtonCell.h"

#include <QPainter>
#include <QPainterPath>
#include <QWidget>

namespace vantrel {

namespace {

// A QImage rather than a QPixmap: the static outlives the application object, and only an image
// may be destroyed without one.
QImage& sharedScratch() {
    static QImage scratch;
    return scratch;
}

QImage& scratchOfSize(QSize size) {
    QImage& scratch = sharedScratch();
    if (scratch.size() != size) scratch = QImage(size, QImage::Format_ARGB32_Premultiplied);
    return scratch;
}

}  // namespace

void DisplayHoverButtonCell::mouseEntered() {
    m_highlighted = true;
    if (m_control) m_control->update();
}

void DisplayHoverButtonCell::mouseExited() {
    m_highlighted = false;
    if (m_control) m_control->update();
}

QRectF DisplayHoverButtonCell::imageRect() const {
    if (m_image.isNull()) return {};
    const QSizeF size = m_image.deviceIndependentSize();
    return {QPointF((m_standardWidth - size.width()) / 2 - qreal{m_offset}, 1), size};
}

const QImage& DisplayHoverButtonCell::scratchImage(QSize size) {
    return scratchOfSize(size);
}

const QImage& DisplayHoverButtonCell::coloredImage(const QColor& colour, float alpha) const {
    static const QImage none;
    if (m_image.isNull()) return none;

    QImage& scratch = scratchOfSize(m_image.size());
    scratch.setDevicePixelRatio(m_image.devicePixelRatio());
    const QRectF whole(QPointF(0, 0), scratch.deviceIndependentSize());
    // Qt's Source mode at partial opacity blends with what is underneath; on a cleared image that
    // is a plain copy with the image's alpha scaled, whatever the last user left in the scratch.
    scratch.fill(Qt::transparent);
    QPainter painter(&scratch);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.setOpacity(qreal{alpha});
    painter.drawPixmap(whole, m_image, QRectF(m_image.rect()));
    painter.setOpacity(1);
    // SourceAtop keeps the image's own alpha: only its opaque pixels take the colour.
    QColor cover = colour;
    cover.setAlphaF(0.6f);
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(whole, cover);
    return scratch;
}

void DisplayHoverButtonCell::drawInterior(QPainter& painter, QSize viewSize, bool pressed) const {
    painter.save();
    if (m_highlighted) {
        QPainterPath backdrop;
        backdrop.addRoundedRect(QRectF(QPointF(0, 0), QSizeF(viewSize)), 2, 2);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(backdrop, QColor::fromRgbF(0.01f, 0.03f, 0.07f, 0.25f));
    }
    if (!m_image.isNull()) {
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setOpacity(1);
        const QPointF topLeft = imageRect().topLeft();
        if (pressed) {
            painter.drawImage(topLeft, coloredImage(Qt::black, 1.0f));
        } else {
            painter.drawPixmap(topLeft, m_image);
        }
    }
    painter.restore();
}

}  // namespace vantrel
