#include <QApplication>
#include <QIcon>

#include "SingleInstance.h"
#include "StandaloneCalcController.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Glessik"));
    QApplication::setApplicationName(QStringLiteral("Vantrel"));
    QApplication::setDesktopFileName(QStringLiteral("com.glessik.Vantrel"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/com.glessik.Vantrel.svg")));
    // The calculator keeps running with its window closed, as a tool that is always at hand.
    QApplication::setQuitOnLastWindowClosed(false);

    vantrel::SingleInstance instance(QStringLiteral("com.glessik.Vantrel-") +
                                     qEnvironmentVariable("USER"));
    if (instance.activateRunningInstance()) return 0;
    instance.listen();

    vantrel::StandaloneCalcController delegate;
    delegate.awakeFromNib();
    delegate.initialize();
    QObject::connect(&instance, &vantrel::SingleInstance::activationRequested, &delegate,
                     &vantrel::StandaloneCalcController::applicationDidBecomeActive);
    return QApplication::exec();
}
