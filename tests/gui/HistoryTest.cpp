#include <QMenu>

#include "ControllerFixture.h"

namespace {

using History = ControllerFixture;

QStringList menuTitles(QToolButton* button) {
    QStringList titles;
    for (QAction* item : button->menu()->actions()) {
        titles << (item->isSeparator() ? QStringLiteral("--") : item->data().toString());
    }
    return titles;
}

TEST_F(History, MenuListsNewestFirstAndRemembersOnce) {
    auto& calc = start();
    for (const char* text : {"1+2", "3", "1+2"}) {
        clearInput();
        type(text);
        pressReturn();
    }
    calc.showMenu(ui().historyButton);
    EXPECT_EQ(menuTitles(ui().historyButton), (QStringList{"--", "3", "1+2", "--", ""}));
    const QList<QAction*> items = ui().historyButton->menu()->actions();
    EXPECT_EQ(items.last()->text(), "Clear History");
    EXPECT_TRUE(items.last()->isEnabled());
    EXPECT_EQ(items[1]->font().pointSizeF(), 10.0);
    ui().historyButton->menu()->hide();
}

TEST_F(History, EmptyHistoryOffersADisabledClear) {
    auto& calc = start();
    calc.showMenu(ui().historyButton);
    const QList<QAction*> items = ui().historyButton->menu()->actions();
    ASSERT_EQ(items.size(), 3);
    EXPECT_FALSE(items.last()->isEnabled());
    // Both separators show, the leading one and the one right after it.
    EXPECT_FALSE(ui().historyButton->menu()->separatorsCollapsible());
    ui().historyButton->menu()->hide();
}

TEST_F(History, MenuIsBuiltAnewHoweverItOpens) {
    auto& calc = start();
    calc.showMenu(ui().historyButton);
    ui().historyButton->menu()->hide();
    type("7");
    pressReturn();
    // A long press on the button opens the menu without going through showMenu().
    ui().historyButton->menu()->popup(QPoint());
    EXPECT_EQ(menuTitles(ui().historyButton), (QStringList{"--", "7", "--", ""}));
    ui().historyButton->menu()->hide();
}

TEST_F(History, TrimsTo120OnShowingAndWritesOnTheNextRemember) {
    QStringList stored;
    for (int i = 0; i < 125; ++i) stored << QString::number(i + 1);
    settings().setValue("CalculatorExpressionHistory", stored);
    auto& calc = start();
    calc.showMenu(ui().historyButton);
    ui().historyButton->menu()->hide();
    EXPECT_EQ(calc.expressionHistory().entries().size(), 120);
    EXPECT_EQ(calc.expressionHistory().entries().first(), "6");
    settings().sync();
    EXPECT_EQ(settings().value("CalculatorExpressionHistory").toStringList().size(), 125);
    type("999");
    pressReturn();
    settings().sync();
    const QStringList written = settings().value("CalculatorExpressionHistory").toStringList();
    EXPECT_EQ(written.size(), 121);
    EXPECT_EQ(written.last(), "999");
}

TEST_F(History, ClearingIsForgottenAtTheNextStart) {
    settings().setValue("CalculatorExpressionHistory", QStringList{"1+1", "2+2"});
    auto& calc = start();
    calc.clearExpressionHistory(nullptr);
    EXPECT_TRUE(calc.expressionHistory().entries().isEmpty());
    auto& restarted = start();
    EXPECT_EQ(restarted.expressionHistory().entries(), (QStringList{"1+1", "2+2"}));
}

TEST_F(History, ChoosingAnEntryPutsItIntoTheInput) {
    settings().setValue("CalculatorExpressionHistory", QStringList{"01:00:00.00|25*2", "5&6"});
    auto& calc = start();
    calc.showMenu(ui().historyButton);
    ui().historyButton->menu()->hide();
    QAction* entry = ui().historyButton->menu()->actions()[2];
    entry->trigger();
    EXPECT_EQ(ui().inputField->text(), "01:00:00.00|25*2");
    EXPECT_EQ(ui().resultField->text(), "02:00:00.00");
    EXPECT_EQ(ui().inputField->textCursor().position(), 16);
    EXPECT_TRUE(ui().resetButton->isEnabled());
    EXPECT_FALSE(calc.isClean());
    ui().historyButton->menu()->actions()[1]->trigger();
    EXPECT_EQ(ui().inputField->text(), "5&6");
}

}  // namespace
