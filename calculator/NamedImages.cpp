#include "NamedImages.h"

namespace vantrel {

QIcon namedImage(const QString& name) {
    return QIcon(QStringLiteral(":/images/%1.svg").arg(name));
}

}  // namespace vantrel
