#pragma once

#include <QString>
#include <string_view>

namespace vantrel {

/// The engine's and the readers' UTF-8 text as Qt's.
inline QString qText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace vantrel
