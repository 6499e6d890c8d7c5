#pragma once

#include <QString>
#include <QUrl>
#include <optional>

namespace vantrel {

/// The help page "Vantrel Help.html" at the given anchor, from the build tree or the installed
/// resources, or nothing when neither holds it.
std::optional<QUrl> helpPageUrl(const QString& anchor);

}  // namespace vantrel
