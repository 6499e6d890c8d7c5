#include "TimelineStrip.h"

#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>

namespace vantrel {

namespace {

constexpr int kRulerHeight = 22;
constexpr int kLaneHeight = 26;
constexpr int kLaneGap = 4;
constexpr int kNameWidth = 56;
constexpr int kMargin = 8;
constexpr double kLargestZoom = 4096.0;
// The ruler's marks are at least this far apart.
constexpr int kMarkSpacing = 110;

const QColor kEventColours[2] = {QColor(86, 126, 176), QColor(110, 150, 198)};
const QColor kGapColour(214, 64, 52);
const QColor kOverlapColour(236, 150, 24);

void sortLayer(std::vector<TimelineStrip::Block>& blocks, std::vector<double>& endsSoFar) {
    std::stable_sort(blocks.begin(), blocks.end(),
                     [](const auto& a, const auto& b) { return a.start < b.start; });
    endsSoFar.resize(blocks.size());
    double largest = -INFINITY;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        largest = std::max(largest, blocks[i].end);
        endsSoFar[i] = largest;
    }
}

}  // namespace

TimelineStrip::TimelineStrip(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAutoFillBackground(true);
    setAccessibleName(tr("Picture of the cut"));
    setAccessibleDescription(
        tr("One lane per track; arrow keys move between events, + and - zoom"));
}

void TimelineStrip::setLanes(std::vector<Lane> lanes, double start, double end,
                             double framesPerSecond, Texts texts) {
    m_lanes.clear();
    m_placeOfRow.clear();
    // The readers keep every place finite and within 10^12 frames; a picture of anything else
    // would have no pixels to give it.
    m_start = std::isfinite(start) ? start : 0;
    m_end = std::isfinite(end) && end > m_start ? end : m_start + 1;
    m_framesPerSecond = framesPerSecond > 0 ? framesPerSecond : 24;
    m_texts = std::move(texts);
    for (Lane& lane : lanes) {
        LaneLayers layers{lane.name, {}, {}};
        for (const Block& block : lane.blocks) {
            (block.kind == BlockKind::Event ? layers.events : layers.marks).blocks.push_back(block);
        }
        sortLayer(layers.events.blocks, layers.events.endsSoFar);
        sortLayer(layers.marks.blocks, layers.marks.endsSoFar);
        m_lanes.push_back(std::move(layers));
    }
    for (std::size_t lane = 0; lane < m_lanes.size(); ++lane) {
        for (const bool mark : {false, true}) {
            const auto& blocks = mark ? m_lanes[lane].marks.blocks : m_lanes[lane].events.blocks;
            for (std::size_t i = 0; i < blocks.size(); ++i) {
                const auto row = static_cast<std::size_t>(blocks[i].row);
                if (row >= m_placeOfRow.size()) m_placeOfRow.resize(row + 1);
                m_placeOfRow[row] = {static_cast<int>(lane), mark, i};
            }
        }
    }
    m_zoom = 1.0;
    updateScrollBars();
    updateGeometry();
    viewport()->update();
}

void TimelineStrip::setSelectionModel(QItemSelectionModel* selection,
                                      std::function<QModelIndex(int)> indexOfRow,
                                      std::function<int(const QModelIndex&)> rowOfIndex) {
    if (m_selection) m_selection->disconnect(this);
    m_selection = selection;
    m_indexOfRow = std::move(indexOfRow);
    m_rowOfIndex = std::move(rowOfIndex);
    connect(selection, &QItemSelectionModel::selectionChanged, viewport(),
            qOverload<>(&QWidget::update));
    connect(selection, &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid()) ensureRowVisible(m_rowOfIndex(current));
            });
}

QSize TimelineStrip::sizeHint() const {
    return {640, contentHeight() + 2 * frameWidth() + horizontalScrollBar()->sizeHint().height()};
}

QSize TimelineStrip::minimumSizeHint() const {
    return {kNameWidth + 120, kRulerHeight + kLaneHeight + 2 * kMargin};
}

const TimelineStrip::LaneLayers& TimelineStrip::laneAt(int lane) const {
    return m_lanes[static_cast<std::size_t>(lane)];
}

int TimelineStrip::contentWidth() const {
    return static_cast<int>(std::lround(viewport()->width() * m_zoom));
}

int TimelineStrip::contentHeight() const {
    return kRulerHeight + kMargin + static_cast<int>(m_lanes.size()) * (kLaneHeight + kLaneGap);
}

double TimelineStrip::xOfFrame(double frames) const {
    const double width = contentWidth() - kNameWidth - 2 * kMargin;
    return kNameWidth + kMargin + (frames - m_start) / (m_end - m_start) * width -
           horizontalScrollBar()->value();
}

double TimelineStrip::frameOfX(double x) const {
    const double width = contentWidth() - kNameWidth - 2 * kMargin;
    return m_start +
           (x + horizontalScrollBar()->value() - kNameWidth - kMargin) / width * (m_end - m_start);
}

int TimelineStrip::laneTop(int lane) const {
    return kRulerHeight + kMargin / 2 + lane * (kLaneHeight + kLaneGap) -
           verticalScrollBar()->value();
}

void TimelineStrip::updateScrollBars() {
    horizontalScrollBar()->setRange(0, std::max(0, contentWidth() - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(std::max(1, viewport()->width() / 20));
    verticalScrollBar()->setRange(0, std::max(0, contentHeight() - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(kLaneHeight);
}

void TimelineStrip::setZoom(double zoom, int anchorX) {
    zoom = std::clamp(zoom, 1.0, kLargestZoom);
    if (zoom == m_zoom) return;
    const int anchor = anchorX < 0 ? viewport()->width() / 2 : anchorX;
    const double anchorFrame = frameOfX(anchor);
    m_zoom = zoom;
    updateScrollBars();
    // The frame under the anchor stays where it was.
    const double drift = xOfFrame(anchorFrame) - anchor;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() +
                                    static_cast<int>(std::lround(drift)));
    viewport()->update();
}

void TimelineStrip::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBars();
}

void TimelineStrip::scrollContentsBy(int, int) {
    viewport()->update();
}

void TimelineStrip::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QRect exposed = event->rect();
    painter.fillRect(exposed, palette().base());
    if (m_lanes.empty()) return;
    const double firstFrame = frameOfX(exposed.left() - 1);
    const double lastFrame = frameOfX(exposed.right() + 1);
    painter.save();
    painter.setClipRect(QRect(kNameWidth, kRulerHeight, viewport()->width() - kNameWidth,
                              viewport()->height() - kRulerHeight));
    for (int lane = 0; lane < static_cast<int>(m_lanes.size()); ++lane) {
        drawLane(painter, lane, firstFrame, lastFrame);
    }
    drawSelection(painter);
    painter.restore();
    drawRuler(painter, exposed);
    // Lane names stay at the left edge while the picture scrolls under them.
    painter.fillRect(QRect(0, kRulerHeight, kNameWidth, viewport()->height()), palette().window());
    painter.setPen(palette().windowText().color());
    for (int lane = 0; lane < static_cast<int>(m_lanes.size()); ++lane) {
        painter.drawText(QRect(4, laneTop(lane), kNameWidth - 8, kLaneHeight),
                         Qt::AlignVCenter | Qt::AlignLeft, laneAt(lane).name);
    }
}

void TimelineStrip::drawRuler(QPainter& painter, const QRect& exposed) const {
    painter.fillRect(QRect(exposed.left(), 0, exposed.width(), kRulerHeight), palette().window());
    painter.setPen(palette().mid().color());
    painter.drawLine(exposed.left(), kRulerHeight - 1, exposed.right(), kRulerHeight - 1);
    // The mark step: the first whole number of frames, seconds, minutes or hours that leaves room
    // for a timecode between marks; beyond ten hours, ten times as many hours each time.
    const double framesPerPixel = (m_end - m_start) / (contentWidth() - kNameWidth - 2 * kMargin);
    const double fps = m_framesPerSecond;
    const std::array<double, 17> steps{1,          2,          5,         10,         fps,
                                       2 * fps,    5 * fps,    10 * fps,  30 * fps,   60 * fps,
                                       120 * fps,  300 * fps,  600 * fps, 1800 * fps, 3600 * fps,
                                       7200 * fps, 36000 * fps};
    double step = steps.back();
    for (const double candidate : steps) {
        if (candidate / framesPerPixel >= kMarkSpacing) {
            step = candidate;
            break;
        }
    }
    while (step / framesPerPixel < kMarkSpacing && std::isfinite(step)) step *= 10;
    if (!std::isfinite(step) || !std::isfinite(framesPerPixel)) return;
    // One mark a step across the exposed pixels, however far the cut runs.
    const double first = std::ceil((frameOfX(exposed.left() - kMarkSpacing) - m_start) / step);
    painter.setPen(palette().windowText().color());
    const int marks = exposed.width() / kMarkSpacing + 3;
    for (int i = 0; i < marks; ++i) {
        const double frames = m_start + (first + i) * step;
        const double x = xOfFrame(frames);
        if (x > exposed.right() + kMarkSpacing || frames > m_end + step) break;
        if (x < kNameWidth) continue;
        const int xi = static_cast<int>(std::lround(x));
        painter.drawLine(xi, kRulerHeight - 7, xi, kRulerHeight - 1);
        if (m_texts.timecode) {
            painter.drawText(QRect(xi + 3, 0, kMarkSpacing, kRulerHeight - 4),
                             Qt::AlignLeft | Qt::AlignVCenter, m_texts.timecode(frames));
        }
    }
}

void TimelineStrip::drawLane(QPainter& painter, int lane, double firstFrame,
                             double lastFrame) const {
    const int top = laneTop(lane);
    if (top > viewport()->height() || top + kLaneHeight < kRulerHeight) return;
    painter.fillRect(
        QRectF(xOfFrame(m_start), top, xOfFrame(m_end) - xOfFrame(m_start), kLaneHeight),
        palette().alternateBase());
    drawLayer(painter, laneAt(lane).events, top, firstFrame, lastFrame);
    drawLayer(painter, laneAt(lane).marks, top, firstFrame, lastFrame);
}

// Blocks are drawn left to right; one that ends within the pixels already drawn adds nothing, so
// each pixel column is drawn about once however many events share it.
void TimelineStrip::drawLayer(QPainter& painter, const Layer& layer, int top, double firstFrame,
                              double lastFrame) const {
    const auto firstInView =
        std::upper_bound(layer.endsSoFar.begin(), layer.endsSoFar.end(), firstFrame);
    int drawnTo = std::numeric_limits<int>::min();
    for (auto i = static_cast<std::size_t>(firstInView - layer.endsSoFar.begin());
         i < layer.blocks.size() && layer.blocks[i].start <= lastFrame; ++i) {
        const Block& block = layer.blocks[i];
        const int left = static_cast<int>(std::floor(xOfFrame(block.start)));
        const int right = std::max(left + 1, static_cast<int>(std::ceil(xOfFrame(block.end))));
        if (right <= drawnTo) continue;
        const QRect rect(QPoint(std::max(left, drawnTo), top),
                         QPoint(right - 1, top + kLaneHeight - 1));
        drawBlock(painter, block, rect, static_cast<int>(i % 2));
        drawnTo = right;
    }
}

void TimelineStrip::drawBlock(QPainter& painter, const Block& block, const QRect& rect,
                              int parity) const {
    switch (block.kind) {
        case BlockKind::Event: {
            painter.fillRect(rect, kEventColours[parity]);
            if (rect.width() > 40 && m_texts.label) {
                painter.setPen(Qt::white);
                painter.drawText(rect.adjusted(4, 0, -3, 0), Qt::AlignVCenter | Qt::AlignLeft,
                                 painter.fontMetrics().elidedText(
                                     m_texts.label(block.row), Qt::ElideRight, rect.width() - 7));
            }
            break;
        }
        case BlockKind::Gap:
            painter.fillRect(rect,
                             QColor(kGapColour.red(), kGapColour.green(), kGapColour.blue(), 60));
            painter.fillRect(rect, QBrush(kGapColour, Qt::BDiagPattern));
            break;
        case BlockKind::Overlap:
            painter.fillRect(rect.adjusted(0, 0, 0, -kLaneHeight / 2),
                             QBrush(kOverlapColour, Qt::Dense4Pattern));
            painter.fillRect(QRect(rect.left(), rect.top(), rect.width(), 3), kOverlapColour);
            break;
    }
}

void TimelineStrip::drawSelection(QPainter& painter) const {
    if (!m_selection) return;
    const QModelIndexList selected = m_selection->selectedRows();
    painter.setPen(QPen(palette().highlight().color(), 2));
    painter.setBrush(Qt::NoBrush);
    // A selection of a whole long cut would only paint the lanes over.
    for (qsizetype i = 0; i < std::min<qsizetype>(selected.size(), 5000); ++i) {
        const QRect rect = blockRect(m_rowOfIndex(selected[i]));
        if (rect.isEmpty() || !rect.intersects(viewport()->rect())) continue;
        painter.fillRect(rect, QColor(255, 255, 255, 70));
        painter.drawRect(rect.adjusted(1, 1, -1, -1));
        // A block a few pixels wide would be lost in its lane: a mark above it shows where it is.
        if (rect.width() < 12) {
            const int x = rect.center().x();
            const QPoint mark[3] = {
                {x - 5, rect.top() - 1}, {x + 5, rect.top() - 1}, {x, rect.top() + 5}};
            painter.setBrush(palette().highlight());
            painter.drawPolygon(mark, 3);
            painter.setBrush(Qt::NoBrush);
        }
    }
}

const TimelineStrip::Block* TimelineStrip::blockOfRow(int row) const {
    if (row < 0 || static_cast<std::size_t>(row) >= m_placeOfRow.size()) return nullptr;
    const Place& place = m_placeOfRow[static_cast<std::size_t>(row)];
    if (place.lane < 0) return nullptr;
    const LaneLayers& lane = laneAt(place.lane);
    return &(place.mark ? lane.marks : lane.events).blocks[place.block];
}

QRect TimelineStrip::blockRect(int row) const {
    const Block* block = blockOfRow(row);
    if (!block) return {};
    const int left = static_cast<int>(std::floor(xOfFrame(block->start)));
    const int right = std::max(left + 3, static_cast<int>(std::ceil(xOfFrame(block->end))));
    const int top = laneTop(m_placeOfRow[static_cast<std::size_t>(row)].lane);
    return QRect(QPoint(left, top), QPoint(right - 1, top + kLaneHeight - 1));
}

int TimelineStrip::rowAt(const QPoint& point) const {
    const int lane = (point.y() + verticalScrollBar()->value() - kRulerHeight - kMargin / 2) /
                     (kLaneHeight + kLaneGap);
    if (point.y() < kRulerHeight || point.x() < kNameWidth || lane < 0 ||
        lane >= static_cast<int>(m_lanes.size())) {
        return -1;
    }
    // Gaps and overlaps lie over the events; a block narrower than a pixel is found within a
    // pixel either side of the pointer.
    const double from = frameOfX(point.x() - 1);
    const double to = frameOfX(point.x() + 1);
    for (const Layer* layer : {&laneAt(lane).marks, &laneAt(lane).events}) {
        const auto first = std::upper_bound(layer->endsSoFar.begin(), layer->endsSoFar.end(), from);
        const Block* nearest = nullptr;
        for (auto i = static_cast<std::size_t>(first - layer->endsSoFar.begin());
             i < layer->blocks.size() && layer->blocks[i].start <= to; ++i) {
            if (layer->blocks[i].end > from) nearest = &layer->blocks[i];
        }
        if (nearest) return nearest->row;
    }
    return -1;
}

void TimelineStrip::selectRow(int row, bool extend) {
    if (!m_selection || row < 0) return;
    const QModelIndex index = m_indexOfRow(row);
    const auto flags =
        (extend ? QItemSelectionModel::Toggle : QItemSelectionModel::ClearAndSelect) |
        QItemSelectionModel::Rows;
    m_selection->setCurrentIndex(index, flags);
}

void TimelineStrip::ensureRowVisible(int row) {
    const QRect rect = blockRect(row);
    if (rect.isEmpty()) return;
    const QRect view(kNameWidth, kRulerHeight, viewport()->width() - kNameWidth,
                     viewport()->height() - kRulerHeight);
    if (rect.right() < view.left() || rect.left() > view.right()) {
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + rect.center().x() -
                                        view.center().x());
    }
    if (rect.top() < view.top() || rect.bottom() > view.bottom()) {
        verticalScrollBar()->setValue(verticalScrollBar()->value() + rect.top() - view.top());
    }
}

void TimelineStrip::mousePressEvent(QMouseEvent* event) {
    setFocus(Qt::MouseFocusReason);
    selectRow(rowAt(event->position().toPoint()), event->modifiers().testFlag(Qt::ControlModifier));
}

void TimelineStrip::wheelEvent(QWheelEvent* event) {
    const int steps = event->angleDelta().y() / 120;
    if (event->modifiers().testFlag(Qt::ControlModifier) && steps != 0) {
        setZoom(m_zoom * std::pow(1.5, steps), static_cast<int>(event->position().x()));
        event->accept();
        return;
    }
    // A plain wheel runs along the cut, which is the long way of the picture.
    if (event->angleDelta().x() == 0 && !event->modifiers().testFlag(Qt::ShiftModifier) &&
        horizontalScrollBar()->maximum() > 0) {
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() -
                                        event->angleDelta().y() * viewport()->width() / 1200);
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

// From the current block, `blocks` events along its lane and `lanes` lanes down, to the event
// nearest in time there.
void TimelineStrip::stepSelection(int lanes, int blocks) {
    if (!m_selection || m_lanes.empty()) return;
    const QModelIndex current = m_selection->currentIndex();
    const Block* from = current.isValid() ? blockOfRow(m_rowOfIndex(current)) : nullptr;
    if (!from) {
        for (const LaneLayers& lane : m_lanes) {
            if (!lane.events.blocks.empty())
                return selectRow(lane.events.blocks.front().row, false);
        }
        return;
    }
    const Place& place = m_placeOfRow[static_cast<std::size_t>(from->row)];
    const int lane = std::clamp(place.lane + lanes, 0, static_cast<int>(m_lanes.size()) - 1);
    const auto& events = laneAt(lane).events.blocks;
    if (events.empty()) return;
    std::ptrdiff_t at = 0;
    if (lane == place.lane && !place.mark) {
        at = static_cast<std::ptrdiff_t>(place.block) + blocks;
    } else {
        at = std::upper_bound(events.begin(), events.end(), from->start,
                              [](double start, const Block& b) { return start < b.start; }) -
             events.begin() - 1 + blocks;
    }
    at = std::clamp<std::ptrdiff_t>(at, 0, static_cast<std::ptrdiff_t>(events.size()) - 1);
    selectRow(events[static_cast<std::size_t>(at)].row, false);
}

void TimelineStrip::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
            return stepSelection(0, -1);
        case Qt::Key_Right:
            return stepSelection(0, 1);
        case Qt::Key_Up:
            return stepSelection(-1, 0);
        case Qt::Key_Down:
            return stepSelection(1, 0);
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            return setZoom(m_zoom * 2);
        case Qt::Key_Minus:
            return setZoom(m_zoom / 2);
        case Qt::Key_0:
            return setZoom(1);
        default:
            QAbstractScrollArea::keyPressEvent(event);
    }
}

}  // namespace vantrel
