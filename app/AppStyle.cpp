#include "AppStyle.h"

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
// most platforms. Drawn when the button is first painted, which is only when the menus overflow:
// every menu bar asks for its icon when it is made, and stroking it then would bring the stroker
// and its trigonometry into every start.
class OverflowChevronEngine : public QIconEngine {
public:
    OverflowChevronEngine(QColor colour, Qt::LayoutDirection direction)
        : m_colour(colour), m_direction(direction) {}

    QIconEngine* clone() const override { return new OverflowChevronEngine(*this); }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode /*mode*/,
               QIcon::State /*state*/) override {
        constexpr qreal kSide = 16;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / kSide, rect.height() / kSide);
        if (m_direction == Qt::RightToLeft) {
            painter->translate(kSide, 0);
            painter->scale(-1, 1);
        }
        painter->setPen(QPen(m_colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
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
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

private:
    QColor m_colour;
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
        return QIcon(new OverflowChevronEngine(palette.color(QPalette::ButtonText), direction));
    }
    return QProxyStyle::standardIcon(standardIcon, option, widget);
}

}  // namespace vantrel
