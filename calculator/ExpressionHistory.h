#pragma once

#include <QStringList>

namespace vantrel {

/// The finished expressions, oldest first and each once, as the history menu offers them.
class ExpressionHistory {
public:
    static constexpr int maxExpressionHistoryCount = 120;

    explicit ExpressionHistory(QStringList entries = {});

    const QStringList& entries() const { return m_entries; }

    /// Appends the expression unless an equal one is there; returns whether the list changed, in
    /// which case the caller stores the whole list.
    bool remember(const QString& expression);
    /// Drops the oldest entries beyond the most the menu offers; the store keeps the longer list
    /// until the next expression is remembered.
    void trim();
    void clear() { m_entries.clear(); }

private:
    QStringList m_entries;
};

}  // namespace vantrel
