#pragma once

#include <QAbstractScrollArea>
#include <QModelIndex>
#include <QPointer>
#include <QString>
#include <functional>
#include <vector>

class QItemSelectionModel;

namespace vantrel {

/// A picture of a cut: one lane per track, its events as blocks along a time ruler, gaps and
/// overlaps marked. It shares the selection of the table that lists the same rows: a click on a
/// block selects its row, and a selected row is highlighted here. The whole cut fits the width
/// until the user zooms in (Ctrl+wheel, + and -); only what is in view is drawn, and blocks
/// narrower than a pixel are drawn once per pixel, so a cut of 100,000 events draws as fast as
/// one of a hundred.
class TimelineStrip : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class BlockKind { Event, Gap, Overlap };

    /// One row of the table on a lane, from `start` to `end` in frames.
    struct Block {
        double start = 0;
        double end = 0;
        int row = 0;
        BlockKind kind = BlockKind::Event;
    };

    struct Lane {
        QString name;
        std::vector<Block> blocks;  // events, gaps and overlaps, in any order
    };

    /// How the strip names things: a block's label, a ruler mark's timecode.
    struct Texts {
        std::function<QString(int row)> label;
        std::function<QString(double frames)> timecode;
    };

    explicit TimelineStrip(QWidget* parent = nullptr);

    /// The cut to draw: its lanes, the span of the record side, its frames a second (for the
    /// ruler's marks) and how to write labels.
    void setLanes(std::vector<Lane> lanes, double start, double end, double framesPerSecond,
                  Texts texts);
    /// The selection to share, and how a row of the strip maps to an index of that selection's
    /// model and back.
    void setSelectionModel(QItemSelectionModel* selection,
                           std::function<QModelIndex(int row)> indexOfRow,
                           std::function<int(const QModelIndex&)> rowOfIndex);

    /// 1 fits the whole cut into the width.
    double zoom() const { return m_zoom; }
    void setZoom(double zoom, int anchorX = -1);
    /// The row of the block under a point of the viewport, or -1.
    int rowAt(const QPoint& point) const;
    /// The rectangle of a row's block in viewport coordinates (empty for an unknown row).
    QRect blockRect(int row) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    // A lane's blocks of one kind layer, sorted by start, with the largest end so far, so that the
    // first block in view is found by bisection.
    struct Layer {
        std::vector<Block> blocks;
        std::vector<double> endsSoFar;
    };
    struct LaneLayers {
        QString name;
        Layer events;
        Layer marks;  // gaps and overlaps, drawn over the events
    };
    struct Place {
        int lane = -1;
        bool mark = false;
        std::size_t block = 0;
    };

    const LaneLayers& laneAt(int lane) const;
    int contentWidth() const;
    int contentHeight() const;
    double xOfFrame(double frames) const;
    double frameOfX(double x) const;
    int laneTop(int lane) const;
    void updateScrollBars();
    void drawRuler(QPainter& painter, const QRect& exposed) const;
    void drawLane(QPainter& painter, int lane, double firstFrame, double lastFrame) const;
    void drawLayer(QPainter& painter, const Layer& layer, int top, double firstFrame,
                   double lastFrame) const;
    void drawBlock(QPainter& painter, const Block& block, const QRect& rect, int parity) const;
    void drawSelection(QPainter& painter) const;
    const Block* blockOfRow(int row) const;
    void selectRow(int row, bool extend);
    void ensureRowVisible(int row);
    void stepSelection(int lanes, int blocks);

    std::vector<LaneLayers> m_lanes;
    std::vector<Place> m_placeOfRow;
    double m_start = 0;
    double m_end = 1;
    double m_framesPerSecond = 24;
    Texts m_texts;
    double m_zoom = 1.0;
    QPointer<QItemSelectionModel> m_selection;
    std::function<QModelIndex(int)> m_indexOfRow;
    std::function<int(const QModelIndex&)> m_rowOfIndex;
};

}  // namespace vantrel
