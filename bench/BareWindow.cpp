// The yardstick of the start-up benchmark: the least a Qt desktop window can be, one line edit in
// a window of the calculator's size and title, built with the same compiler flags.

#include <QApplication>
#include <QLineEdit>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QLineEdit window;
    window.setWindowTitle(QStringLiteral("Vantrel"));
    window.resize(373, 252);
    window.show();
    return QApplication::exec();
}
