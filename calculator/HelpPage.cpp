#include "HelpPage.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace vantrel {

std::optional<QUrl> helpPageUrl(const QString& anchor) {
    const QString page = QStringLiteral("Glessik Vantrel Help/Vantrel Help.html");
    const QDir programDir(QCoreApplication::applicationDirPath());
    // Installed next to the program's share folder, or beside the binary in the build tree.
    const QStringList candidates{programDir.filePath(QStringLiteral("../share/vantrel/") + page),
                                 programDir.filePath(QStringLiteral("../resources/") + page)};
    for (const QString& candidate : candidates) {
        if (QFileInfo::exists(candidate)) {
            QUrl url = QUrl::fromLocalFile(QFileInfo(candidate).canonicalFilePath());
            url.setFragment(anchor);
            return url;
        }
    }
    return std::nullopt;
}

}  // namespace vantrel
