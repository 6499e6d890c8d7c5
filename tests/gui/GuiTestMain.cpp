#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

// Widget tests run offscreen, with a preferences store of their own so they never read or write
// the user's settings.
int main(int argc, char** argv) {
    QTemporaryDir configHome;
    qputenv("XDG_CONFIG_HOME", configHome.path().toUtf8());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Glessik"));
    QApplication::setApplicationName(QStringLiteral("Vantrel"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
