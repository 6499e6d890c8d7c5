#pragma once

#include <optional>

// The two heights of the calculator window: collapsed, showing the keys and results only, and
// expanded, showing the result log below them.
namespace vantrel::window_heights {

inline constexpr double kCollapsed = 252.0;
inline constexpr double kFirstExpanded = 500.0;
inline constexpr double kSnapExpanded = 317.0;
inline constexpr double kSnapToCollapsedBelow = 276.0;

/// What a height dragged by the user becomes, and whether the log then shows. Heights near the
/// collapsed one snap to it; slightly taller ones snap open to a useful log height; the rest stay.
struct DraggedHeight {
    double height;
    std::optional<bool> logExpanded;
};
DraggedHeight snapDraggedHeight(double proposedHeight);

/// The outcome of the show/hide toggle from the current height and the toggle's own records.
struct Toggle {
    bool expand;
    double targetHeight;
    double storedHeight;
};
Toggle toggle(double currentHeight, bool buttonsExpanded, double storedHeight);

}  // namespace vantrel::window_heights
