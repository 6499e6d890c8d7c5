#pragma once

#include <QString>
#include <QWidget>
#include <memory>
#include <vector>

#include "EventTable.h"

class QLabel;
class QListWidget;
class QSortFilterProxyModel;
class QTableView;
class QTableWidget;

namespace vantrel {

class CutTableModel;
class TimelineStrip;

/// A window of one opened cut, beside the calculator: the running time large at the top with the
/// rate it was read at and why, a picture of the cut, the table of its events with gaps and
/// overlaps as rows of their own, each track's totals and every problem line. Selected rows copy
/// as tab-separated text; the whole table saves as CSV. Closing it touches nothing of the
/// calculator.
class CutWindow : public QWidget {
    Q_OBJECT

public:
    CutWindow(const QString& filePath, std::shared_ptr<const timeline::EventTable> table,
              QWidget* parent = nullptr);

    const QString& filePath() const { return m_filePath; }
    const timeline::EventTable& table() const { return *m_table; }
    QTableView* eventView() const { return m_eventView; }
    TimelineStrip* strip() const { return m_strip; }

    /// The selected rows of the table, in the order the table shows them, as the model's rows.
    std::vector<std::size_t> selectedRows() const;
    /// Every row in the order the table shows them.
    std::vector<std::size_t> shownRows() const;
    /// Puts the selected rows on the clipboard as tab-separated text.
    void copySelectedRows();
    /// Asks where, then writes the table as CSV.
    void saveCsv();
    /// Writes the table, in the order shown, as CSV to the file; false when it cannot.
    bool writeCsv(const QString& fileName) const;

private:
    QWidget* makeHeader();
    QTableView* makeTrackTable();
    QWidget* makeProblemList();
    void makeEventView();
    void makeStrip();
    void addCommands();
    void sizeColumns();
    std::size_t sourceRow(int shownRow) const;

    QString m_filePath;
    std::shared_ptr<const timeline::EventTable> m_table;
    CutTableModel* m_model = nullptr;
    QSortFilterProxyModel* m_sorted = nullptr;
    QTableView* m_eventView = nullptr;
    TimelineStrip* m_strip = nullptr;
};

}  // namespace vantrel
