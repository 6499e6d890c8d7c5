#include "WindowHeights.h"

namespace vantrel::window_heights {

DraggedHeight snapDraggedHeight(double proposedHeight) {
    if (proposedHeight >= kCollapsed && proposedHeight < kSnapToCollapsedBelow) {
        return {kCollapsed, false};
    }
    if (proposedHeight >= kSnapToCollapsedBelow && proposedHeight <= kSnapExpanded) {
        return {kSnapExpanded, true};
    }
    return {proposedHeight, std::nullopt};
}

Toggle toggle(double currentHeight, bool buttonsExpanded, double storedHeight) {
    // The record is brought in line with the real height first: dragging never updates it, and at
    // start-up it says expanded while the window is collapsed.
    if (!buttonsExpanded && currentHeight != kCollapsed) buttonsExpanded = true;
    if (buttonsExpanded && currentHeight == kCollapsed) {
        buttonsExpanded = false;
        storedHeight = kFirstExpanded;
    }
    if (buttonsExpanded) return {false, kCollapsed, currentHeight};
    return {true, storedHeight, storedHeight};
}

}  // namespace vantrel::window_heights
