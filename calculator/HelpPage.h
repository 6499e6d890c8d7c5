#pragma once

#include <QString>
#include <QUrl>
#include <optional>

namespace vantrel {

/// Where "Vantrel Help.html" lies for a program in the given folder: in the installed resources
/// (share/vantrel beside bin) or, in the build tree, in resources beside bin.
std::optional<QString> helpPagePath(const QString& programDir);

/// The help page of the running program at the anchor (none for an empty one), or nothing when
/// the page cannot be found.
std::optional<QUrl> helpPageUrl(const QString& anchor = QString());

}  // namespace vantrel
