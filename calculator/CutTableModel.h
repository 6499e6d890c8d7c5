#pragma once

#include <QAbstractTableModel>
#include <memory>

#include "EventTable.h"

namespace vantrel {

/// The events of a cut, and its gaps and overlaps as rows of their own, for a table view. Cells are
/// written when the view asks for them; figures sort by value under kSortRole.
class CutTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    static constexpr int kSortRole = Qt::UserRole + 1;

    CutTableModel(std::shared_ptr<const timeline::EventTable> table, QObject* parent = nullptr);

    const timeline::EventTable& table() const { return *m_table; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    std::shared_ptr<const timeline::EventTable> m_table;
};

}  // namespace vantrel
