#include "CompactComboBox.h"

#include <QAbstractItemView>
#include <QStyleOptionComboBox>
#include <QStylePainter>

namespace vantrel {

CompactComboBox::CompactComboBox(QWidget* parent) : QComboBox(parent) {}

QString CompactComboBox::compactCaption(int position) const {
    const QVariant compact = itemData(position, kCompactCaptionRole);
    return compact.isValid() ? compact.toString() : itemText(position);
}

void CompactComboBox::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText = compactCaption(currentIndex());
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

QSize CompactComboBox::sizeForCaptions() const {
    int widest = 0;
    for (int position = 0; position < count(); ++position) {
        widest = std::max(widest, fontMetrics().horizontalAdvance(compactCaption(position)));
    }
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QSize content(widest, fontMetrics().height());
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, content, this);
}

void CompactComboBox::showPopup() {
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + 2 * view()->frameWidth() +
                            style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    QComboBox::showPopup();
}

QSize CompactComboBox::sizeHint() const {
    return sizeForCaptions().expandedTo(QSize(0, QComboBox::sizeHint().height()));
}

QSize CompactComboBox::minimumSizeHint() const {
    return sizeForCaptions().expandedTo(QSize(0, QComboBox::minimumSizeHint().height()));
}

}  // namespace vantrel
