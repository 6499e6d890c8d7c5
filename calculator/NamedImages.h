#pragma once

#include <QIcon>
#include <QString>

namespace vantrel {

/// The application's picture of the given name, drawn from its SVG so it stays crisp at any scale.
QIcon namedImage(const QString& name);

/// The application's icon, offered to window managers at the sizes of title bars, task switchers
/// and trays, all drawn from one reading of its picture; other sizes are drawn when asked for.
QIcon applicationIcon();

}  // namespace vantrel
