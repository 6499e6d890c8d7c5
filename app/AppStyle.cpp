#include "AppStyle.h"

#include <algorithm>

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QStyleOption>
#include <QWidget>

namespace vantrel {

namespace {

// Two small chevrons pointing the way the menus run, as the menu bar's overflow button has on
// most platforms, in a square as wide as the narrower side of the room given. Drawn only when the
// button is painted, which is only when the menus overflow: every menu bar asks for its icon when
// it is made, and stroking it then would bring the stroker and its trigonometry into every start.
class OverflowChevronEngine : public QIconEngine {
public:
    OverflowChevronEngine(const QPalette& palette, Qt::LayoutDirection direction)
        : m_palette(palette), m_direction(direction) {}

    QIconEngine* clone() const override { return new OverflowChevronEngine(*this); }

    QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        const int side = std::min(size.width(), size.height());
        return {side, side};
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        constexpr qreal kSide = 16;
        const QSize square = actualSize(rect.size(), mode, state);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(rect).center() - QRectF(QPointF(), QSizeF(square)).center());
        painter->scale(square.width() / kSide, square.height() / kSide);
        if (m_direction == Qt::RightToLeft) {
            painter->translate(kSide, 0);
            painter->scale(-1, 1);
        }
        const QPalette::ColorGroup group =
            mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        painter->setPen(QPen(m_palette.color(group, QPalette::ButtonText), 1.5, Qt::SolidLine,
                             Qt::RoundCap, Qt::RoundJoin));
        painter->setBrush(Qt::NoBrush);
        QPainterPath chevrons;
        for (const qreal left : {4.0, 9.0}) {
            chevrons.moveTo(left, 4.5);
            chevrons.lineTo(left + 3.5, 8.0);
            chevrons.lineTo(left, 11.5);
        }
        painter->drawPath(chevrons);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(actualSize(size, mode, state));
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }

private:
    QPalette m_palette;
    Qt::LayoutDirection m_direction;
};

}  // namespace

QIcon AppStyle::standardIcon(StandardPixmap standardIcon, const QStyleOption* option,
                             const QWidget* widget) const {
    if (standardIcon == SP_ToolBarHorizontalExtensionButton) {
        // The menu bar asks without an option: its own palette and direction are the ones to
        // follow.
        const QPalette palette = widget ? widget->palette() : QGuiApplication::palette();
        const Qt::LayoutDirection direction =
            widget ? widget->layoutDirection() : QGuiApplication::layoutDirection();
        return QIcon(new OverflowChevronEngine(palette, direction));
    }
    return QProxyStyle::standardIcon(standardIcon, option, widget);
}

}  // namespace vantrel
