#include "AppStyle.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QStyleOption>

namespace vantrel {

namespace {

// Two small right-pointing chevrons, as the menu bar's overflow button has on most platforms.
QIcon overflowChevron(const QColor& colour) {
    constexpr int kSide = 16;
    QPixmap pixmap(kSide, kSide);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath chevrons;
    for (const qreal left : {4.0, 9.0}) {
        chevrons.moveTo(left, 4.5);
        chevrons.lineTo(left + 3.5, 8.0);
        chevrons.lineTo(left, 11.5);
    }
    painter.drawPath(chevrons);
    return QIcon(pixmap);
}

}  // namespace

QIcon AppStyle::standardIcon(StandardPixmap standardIcon, const QStyleOption* option,
                             const QWidget* widget) const {
    if (standardIcon == SP_ToolBarHorizontalExtensionButton) {
        const QPalette palette = option ? option->palette : standardPalette();
        return overflowChevron(palette.color(QPalette::ButtonText));
    }
    return QProxyStyle::standardIcon(standardIcon, option, widget);
}

}  // namespace vantrel
