#include "HelpPage.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace vantrel {

std::optional<QString> helpPagePath(const QString& programDir) {
    const QString page = QStringLiteral("Glessik Vantrel Help/Vantrel Help.html");
    const QDir dir(programDir);
    for (const QString& resources :
         {QStringLiteral("../share/vantrel/"), QStringLiteral("../resources/")}) {
        const QFileInfo candidate(dir.filePath(resources + page));
        if (candidate.exists()) return candidate.canonicalFilePath();
    }
    return std::nullopt;
}

std::optional<QUrl> helpPageUrl(const QString& anchor) {
    const auto path = helpPagePath(QCoreApplication::applicationDirPath());
    if (!path) return std::nullopt;
    QUrl url = QUrl::fromLocalFile(*path);
    if (!anchor.isEmpty()) url.setFragment(anchor);
    return url;
}

}  // namespace vantrel
