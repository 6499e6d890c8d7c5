#pragma once

#include <QIcon>
#include <QString>

namespace vantrel {

/// The application's picture of the given name, drawn from its SVG so it stays crisp at any scale.
QIcon namedImage(const QString& name);

}  // namespace vantrel
