#include "AppStyle.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QStyleOption>
#include <QWidget>

namespace vantrel {

namespace {

// Two small chevrons pointing the way the menus run, as the menu bar's overflow button has on
// most platforms, at one and two device pixels per pixel.
QIcon overflowChevron(const QColor& colour, Qt::LayoutDirection direction) {
    constexpr int kSide = 16;
    QIcon icon;
    for (const int scale : {1, 2}) {
        QPixmap pixmap(kSide * scale, kSide * scale);
        pixmap.setDevicePixelRatio(scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        if (direction == Qt::RightToLeft) {
            painter.translate(kSide, 0);
            painter.scale(-1, 1);
        }
        painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        QPainterPath chevrons;
        for (const qreal left : {4.0, 9.0}) {
            chevrons.moveTo(left, 4.5);
            chevrons.lineTo(left + 3.5, 8.0);
            chevrons.lineTo(left, 11.5);
        }
        painter.drawPath(chevrons);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace

QIcon AppStyle::standardIcon(StandardPixmap standardIcon, const QStyleOption* option,
                             const QWidget* widget) const {
    if (standardIcon == SP_ToolBarHorizontalExtensionButton) {
        // The menu bar asks without an option: its own palette and direction are the ones to
        // follow.
        const QPalette palette = widget ? widget->palette() : QGuiApplication::palette();
        const Qt::LayoutDirection direction =
            widget ? widget->layoutDirection() : QGuiApplication::layoutDirection();
        return overflowChevron(palette.color(QPalette::ButtonText), direction);
    }
    return QProxyStyle::standardIcon(standardIcon, option, widget);
}

}  // namespace vantrel
