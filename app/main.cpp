#include <QApplication>
#include <cstdio>
#include <string_view>

#include "AppStyle.h"
#include "SingleInstance.h"
#include "StandaloneCalcController.h"
#include "Version.h"

namespace {

constexpr std::string_view kUsage =
    R"(Usage: vantrel [options]
Opens the Vantrel calculator window: arithmetic over timecodes, frame counts and plain numbers
for film and video post-production, with every result in two readings side by side. When
Vantrel is already running for this user, its window comes to the front instead.

  -h, --help     show this help and exit
      --version  show the version and exit

For scripts and batch work, see vantrel-calc(1).
)";

// Answered before the application starts, so they work without a display.
bool answeredFromTheCommandLine(int argc, char** argv) {
    for (int index = 1; index < argc; ++index) {
        const std::string_view argument = argv[index];
        if (argument == "-h" || argument == "--help") {
            std::fwrite(kUsage.data(), 1, kUsage.size(), stdout);
            return true;
        }
        if (argument == "--version") {
            std::printf("vantrel %s (%s)\n", vantrel::kShortVersion, vantrel::kBuildVersion);
            return true;
        }
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    if (answeredFromTheCommandLine(argc, argv)) return 0;
    QApplication application(argc, argv);
    QApplication::setStyle(new vantrel::AppStyle(QApplication::style()));
    QApplication::setOrganizationName(QStringLiteral("Glessik"));
    QApplication::setApplicationName(QStringLiteral("Vantrel"));
    QApplication::setDesktopFileName(QStringLiteral("com.glessik.Vantrel"));
    // The calculator keeps running with its window closed, as a tool that is always at hand.
    QApplication::setQuitOnLastWindowClosed(false);

    vantrel::SingleInstance instance(vantrel::SingleInstance::socketPathForThisUser());
    if (instance.activateRunningInstance()) return 0;
    instance.listen();

    vantrel::StandaloneCalcController delegate;
    delegate.awakeFromNib();
    delegate.initialize();
    // Starting Vantrel again always means the calculator, whatever window was in front.
    QObject::connect(&instance, &vantrel::SingleInstance::activationRequested, &delegate,
                     [&delegate] { delegate.showCalcWindow(nullptr); });
    return QApplication::exec();
}
