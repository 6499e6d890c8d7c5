// A second yardstick of the start-up benchmark: a window made of the calculator's kinds and numbers
// of Qt widget, shown and hidden as at its first start, with none of its code (no engine, no
// pictures, no preferences, no custom widgets). Whatever this window takes beyond the bare one is
// the price of the widgets themselves, which no work in the calculator's own code can take back.

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProxyStyle>
#include <QSizeGrip>
#include <QTextEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

// The menu bar asks its style for the picture of its overflow button when it is made, and Qt's
// own is a PNG whose reading loads every image plug-in. The calculator draws that chevron itself;
// here it is left out, so that neither window counts the plug-ins.
class NoOverflowPicture : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;

    QIcon standardIcon(StandardPixmap picture, const QStyleOption* option,
                       const QWidget* widget) const override {
        if (picture == SP_ToolBarHorizontalExtensionButton) return {};
        return QProxyStyle::standardIcon(picture, option, widget);
    }
};

// The calculator's menus: title and number of items, each item with a shortcut as most of the
// calculator's have.
struct MenuShape {
    const char* title;
    int items;
};
constexpr MenuShape kMenus[] = {
    {"&File", 6}, {"&Display", 17}, {"&Rate", 21}, {"&Mode", 2}, {"&Help", 4}};

void addMenus(QMenuBar* bar) {
    int shortcut = 0;
    for (const MenuShape& shape : kMenus) {
        QMenu* menu = bar->addMenu(QString::fromLatin1(shape.title));
        for (int item = 0; item < shape.items; ++item) {
            QAction* action = menu->addAction(QStringLiteral("Item %1").arg(item));
            action->setCheckable(true);
            action->setShortcut(QKeySequence(QStringLiteral("Ctrl+Alt+%1").arg(++shortcut % 10)));
        }
    }
}

QComboBox* popUp(int items) {
    auto* box = new QComboBox;
    for (int item = 0; item < items; ++item) box->addItem(QStringLiteral("Choice %1").arg(item));
    return box;
}

QToolButton* button(const QString& text) {
    auto* key = new QToolButton;
    key->setText(text);
    return key;
}

QWidget* hidden(QWidget* widget) {
    widget->hide();
    return widget;
}

// The side calculators' choices, hidden until their display is chosen.
QWidget* sideCalculator(int popUps, int items) {
    auto* view = new QWidget;
    auto* grid = new QGridLayout(view);
    for (int box = 0; box < popUps; ++box) grid->addWidget(popUp(items), box / 2, box % 2);
    grid->addWidget(button(QStringLiteral("Add to log")), popUps, 0);
    return hidden(view);
}

// Return does what the user sees the calculator do with a finished calculation: the log opens, in
// a taller window, with the calculation in it.
class FinishedCalculations : public QObject {
public:
    FinishedCalculations(QMainWindow* window, QPlainTextEdit* input, QTextEdit* log)
        : QObject(window), m_window(window), m_input(input), m_log(log) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
        m_log->show();
        m_log->append(m_input->toPlainText());
        m_window->resize(m_window->width(), 500);
        m_input->selectAll();
        return true;
    }

private:
    QMainWindow* m_window;
    QPlainTextEdit* m_input;
    QTextEdit* m_log;
};

QWidget* calculatorPanel() {
    auto* panel = new QWidget;
    auto* column = new QVBoxLayout(panel);
    auto* top = new QHBoxLayout;
    for (const QString& label : {QStringLiteral("TC"), QStringLiteral("24")}) {
        top->addWidget(button(label));
    }
    top->addWidget(popUp(24));
    top->addWidget(button(QStringLiteral("PT")));
    top->addStretch();
    top->addWidget(button(QString()));
    top->addWidget(button(QStringLiteral("C")));
    column->addLayout(top);
    auto* input = new QPlainTextEdit;
    input->setObjectName(QStringLiteral("input"));
    input->setFixedHeight(30);
    input->setLineWrapMode(QPlainTextEdit::NoWrap);
    input->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    input->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    column->addWidget(input);
    auto* results = new QGridLayout;
    QFont resultFont(QStringLiteral("Monospace"));
    resultFont.setPointSize(16);
    resultFont.setBold(true);
    for (int field = 0; field < 8; ++field) {
        auto* result = new QLineEdit(QStringLiteral("00:00:00:00"));
        result->setReadOnly(true);
        result->setFrame(false);
        result->setFont(resultFont);
        results->addWidget(field < 2 ? result : hidden(result), field / 2, field % 2);
    }
    results->addWidget(hidden(new QLabel(QStringLiteral("Disk space"))), 4, 0);
    results->addWidget(hidden(new QLabel(QStringLiteral("Transfer"))), 4, 1);
    column->addLayout(results);
    auto* keys = new QHBoxLayout;
    for (const char* key : {"/", "*", "-", "+", "="}) {
        keys->addWidget(button(QString::fromLatin1(key)));
    }
    column->addLayout(keys);
    column->addWidget(sideCalculator(4, 12));
    column->addWidget(sideCalculator(2, 12));
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(button(QString()));
    bottom->addWidget(hidden(button(QStringLiteral("Paste"))));
    bottom->addStretch();
    bottom->addWidget(button(QStringLiteral("Save…")));
    bottom->addWidget(button(QStringLiteral("Clear")));
    bottom->addWidget(new QSizeGrip(panel));
    column->addLayout(bottom);
    return panel;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setStyle(new NoOverflowPicture(QApplication::style()));
    QMainWindow window;
    addMenus(window.menuBar());
    auto* central = new QWidget;
    auto* column = new QVBoxLayout(central);
    column->addWidget(calculatorPanel());
    auto* log = new QTextEdit;
    log->setFont(QFont(QStringLiteral("Monospace")));
    column->addWidget(hidden(log));
    window.setCentralWidget(central);
    window.setWindowTitle(QStringLiteral("Vantrel"));
    window.resize(373, 252);
    auto* input = window.findChild<QPlainTextEdit*>(QStringLiteral("input"));
    input->installEventFilter(new FinishedCalculations(&window, input, log));
    input->setFocus();
    window.show();
    return QApplication::exec();
}
