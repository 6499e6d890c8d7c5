// TSCController: the history of finished expressions and its menu.

#include <QAction>
#include <QFontMetrics>
#include <QMenu>
#include <QToolButton>

#include "TSCController.h"
#include "ui_Calculator.h"

namespace vantrel {

void TSCController::rememberExpression(const QString& expression) {
    if (m_expressionHistory.remember(expression)) {
        m_preferences.setValue(QStringLiteral("CalculatorExpressionHistory"),
                               m_expressionHistory.entries());
    }
}

void TSCController::smallifyMenuItem(QAction* item) const {
    QFont font = item->font();
    font.setPointSizeF(10.0);
    item->setFont(font);
}

void TSCController::showMenu(QObject* sender) {
    auto* button = qobject_cast<QToolButton*>(sender);
    if (!button) return;
    if (button->property("tag").toInt() == 3000 && !button->menu()) {
        auto* menu = new QMenu(button);
        // Qt hides a leading separator and one next to another unless told not to.
        menu->setSeparatorsCollapsible(false);
        // Also a long press on the button shows the menu, without passing through here.
        connect(menu, &QMenu::aboutToShow, this, [this, menu] { rebuildHistoryMenu(menu); });
        button->setMenu(menu);
        button->setPopupMode(QToolButton::DelayedPopup);
    }
    if (button->menu()) button->menu()->popup(button->mapToGlobal(QPoint(5, button->height() + 5)));
}

void TSCController::rebuildHistoryMenu(QMenu* menu) {
    menu->clear();
    menu->addSeparator();
    m_expressionHistory.trim();
    const QStringList& entries = m_expressionHistory.entries();
    // A long entry is shortened in the middle, where a sum's terms repeat, so that the menu stays
    // as wide as a window; the tooltip shows it whole.
    menu->setToolTipsVisible(true);
    for (auto entry = entries.crbegin(); entry != entries.crend(); ++entry) {
        QAction* item = menu->addAction(QString());
        smallifyMenuItem(item);
        const QString shown =
            QFontMetrics(item->font()).elidedText(*entry, Qt::ElideMiddle, kHistoryItemWidth);
        // Menus treat "&" as a mnemonic marker; the entry itself travels as the item's data.
        item->setText(QString(shown).replace(QLatin1Char('&'), QLatin1String("&&")));
        item->setToolTip(*entry);
        item->setData(*entry);
        connect(item, &QAction::triggered, this, [this, item] { goToExpressionHistory(item); });
    }
    menu->addSeparator();
    QAction* clear = menu->addAction(tr("Clear History"));
    clear->setEnabled(!entries.isEmpty());
    connect(clear, &QAction::triggered, this, [this, clear] { clearExpressionHistory(clear); });
    smallifyMenuItem(clear);
}

void TSCController::goToExpressionHistory(QObject* sender) {
    auto* item = qobject_cast<QAction*>(sender);
    if (!item) return;
    {
        const QSignalBlocker blocker(m_ui->inputField);
        m_ui->inputField->setText(item->data().toString());
    }
    m_clean = false;
    m_ui->resetButton->setEnabled(true);
    showLazyResults(false);
    m_ui->inputField->moveCursorToEnd();
}

void TSCController::clearExpressionHistory(QObject*) {
    m_expressionHistory.clear();
}

}  // namespace vantrel
