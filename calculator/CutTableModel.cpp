#include "CutTableModel.h"

#include "QtText.h"

#include <QBrush>
#include <QColor>
#include <QFont>

namespace vantrel {

namespace {

using Column = timeline::EventTable::Column;
using RowKind = timeline::EventTable::RowKind;

}  // namespace

CutTableModel::CutTableModel(std::shared_ptr<const timeline::EventTable> table, QObject* parent)
    : QAbstractTableModel(parent), m_table(std::move(table)) {}

int CutTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_table->rowCount());
}

int CutTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(timeline::EventTable::kColumnCount);
}

QVariant CutTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const auto row = static_cast<std::size_t>(index.row());
    const auto column = static_cast<Column>(index.column());
    const RowKind kind = m_table->kind(row);
    switch (role) {
        case Qt::DisplayRole:
            return qText(m_table->text(row, column));
        case Qt::ToolTipRole: {
            // The comments of an event (clip names, source files, locators) where the row has
            // no room for them.
            const std::string notes = m_table->notes(row);
            const std::string text = m_table->text(row, column);
            return qText(notes.empty() ? text : text + "\n\n" + notes);
        }
        case kSortRole:
            if (timeline::EventTable::isFigure(column)) return m_table->figure(row, column);
            return qText(m_table->text(row, column));
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(
                Qt::AlignVCenter |
                (timeline::EventTable::isFigure(column) ? Qt::AlignRight : Qt::AlignLeft));
        case Qt::BackgroundRole:
            // Holes in the cut in red, doubled frames in amber, as the picture draws them.
            if (kind == RowKind::Gap) return QBrush(QColor(250, 214, 210));
            if (kind == RowKind::Overlap) return QBrush(QColor(252, 230, 190));
            return {};
        case Qt::ForegroundRole:
            if (kind == RowKind::Gap) return QBrush(QColor(150, 30, 20));
            if (kind == RowKind::Overlap) return QBrush(QColor(130, 72, 0));
            return {};
        case Qt::FontRole:
            if (kind != RowKind::Event) {
                QFont font;
                font.setItalic(true);
                return font;
            }
            return {};
        default:
            return {};
    }
}

QVariant CutTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 ||
        section >= static_cast<int>(timeline::EventTable::kColumnCount)) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    const auto column = static_cast<Column>(section);
    if (role == Qt::DisplayRole) {
        const std::string_view heading = timeline::EventTable::heading(column);
        return QString::fromUtf8(heading.data(), static_cast<qsizetype>(heading.size()));
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(
            Qt::AlignVCenter |
            (timeline::EventTable::isFigure(column) ? Qt::AlignRight : Qt::AlignLeft));
    }
    return {};
}

}  // namespace vantrel
