#include <QApplication>
#include <QMainWindow>

#include "TSCController.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Glessik"));
    QApplication::setApplicationName(QStringLiteral("Vantrel"));

    vantrel::TSCController controller;
    controller.initialize();
    controller.setPasteButtonHidden(true);
    controller.calcWindow()->show();
    return QApplication::exec();
}
