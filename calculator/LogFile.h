#pragma once

#include <QString>

namespace vantrel {

/// Writes the log as a text file in Mac OS Roman, the 8-bit encoding the log files have always
/// had ("∞" is the byte 0xB0). Nothing is written when the text holds a character the encoding
/// lacks; the file is replaced atomically, so a failed write leaves an existing file as it was.
/// Returns whether the file was written.
bool writeLogFile(const QString& path, const QString& text);

}  // namespace vantrel
