#include "ExpressionHistory.h"

#include <utility>

namespace vantrel {

ExpressionHistory::ExpressionHistory(QStringList entries) : m_entries(std::move(entries)) {}

bool ExpressionHistory::remember(const QString& expression) {
    if (m_entries.contains(expression)) return false;
    m_entries.append(expression);
    return true;
}

void ExpressionHistory::trim() {
    const auto excess = m_entries.size() - maxExpressionHistoryCount;
    if (excess > 0) m_entries.remove(0, excess);
}

}  // namespace vantrel
