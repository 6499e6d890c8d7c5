#include "LogFile.h"

#include <QSaveFile>
#include <QStringEncoder>

namespace vantrel {

bool writeLogFile(const QString& path, const QString& text) {
    // Qt's "macintosh" codec comes from ICU and follows Apple's table, where U+2206 is 0xC6 and
    // U+F8FF is 0xF0 (glibc's iconv differs on exactly these two).
    QStringEncoder encoder("macintosh");
    if (!encoder.isValid()) return false;
    const QByteArray bytes = encoder.encode(text);
    if (encoder.hasError()) return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    if (file.write(bytes) != bytes.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

}  // namespace vantrel
