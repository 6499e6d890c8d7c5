#include <QMainWindow>

#include "ControllerFixture.h"
#include "TestRows.h"
#include "WindowHeights.h"

namespace {

using vantrel::window_heights::snapDraggedHeight;

struct SnapRow {
    const char* name;
    double proposed;
    double height;
    std::optional<bool> logExpanded;
};

class DragSnapping : public testing::TestWithParam<SnapRow> {};

TEST_P(DragSnapping, SnapsNearTheTwoHeights) {
    const auto snapped = snapDraggedHeight(GetParam().proposed);
    EXPECT_EQ(snapped.height, GetParam().height);
    EXPECT_EQ(snapped.logExpanded, GetParam().logExpanded);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(WindowHeights, DragSnapping, testing::Values(
    SnapRow{"collapsed", 252, 252, false},
    SnapRow{"below_snap_open", 275.9, 252, false},
    SnapRow{"snap_open_starts", 276, 317, true},
    SnapRow{"snap_open_ends", 317, 317, true},
    SnapRow{"tall_stays", 400, 400, std::nullopt},
    SnapRow{"below_collapsed_stays", 200, 200, std::nullopt}),
    rowName<SnapRow>);
// clang-format on

class WindowToggle : public ControllerFixture {
protected:
    int heightAfterToggle() {
        controller->changeWindow(nullptr);
        QTest::qWait(450);
        return controller->calcWindow()->height();
    }
};

TEST_F(WindowToggle, FirstToggleOpensTo500KeepingTheTopEdge) {
    auto& calc = start();
    const int top = calc.calcWindow()->geometry().top();
    EXPECT_FALSE(ui().saveButton->isEnabled());
    EXPECT_EQ(heightAfterToggle(), 500);
    EXPECT_EQ(calc.calcWindow()->geometry().top(), top);
    EXPECT_TRUE(calc.logExpanded());
    EXPECT_TRUE(ui().saveButton->isEnabled());
    EXPECT_TRUE(ui().clearButton->isEnabled());
    EXPECT_EQ(heightAfterToggle(), 252);
    EXPECT_EQ(calc.storedHeight(), 500.0);
    EXPECT_FALSE(ui().clearButton->isEnabled());
    EXPECT_EQ(heightAfterToggle(), 500);
}

// The next collapse remembers a dragged height, even when toggles come during the animation.
TEST_F(WindowToggle, DraggedHeightIsRememberedThroughQuickToggles) {
    auto& calc = start();
    heightAfterToggle();
    calc.calcWindow()->resize(calc.calcWindow()->width(), 400);
    QTest::qWait(50);
    EXPECT_EQ(calc.calcWindow()->height(), 400);
    for (int toggle = 0; toggle < 3; ++toggle) {
        calc.changeWindow(nullptr);
        QTest::qWait(60);
    }
    QTest::qWait(400);
    EXPECT_EQ(calc.calcWindow()->height(), 252);
    EXPECT_EQ(calc.storedHeight(), 400.0);
    EXPECT_EQ(heightAfterToggle(), 400);
}

TEST_F(WindowToggle, DraggingNearCollapsedSnapsShut) {
    auto& calc = start();
    heightAfterToggle();
    calc.calcWindow()->resize(calc.calcWindow()->width(), 265);
    QTest::qWait(50);
    EXPECT_EQ(calc.calcWindow()->height(), 252);
    EXPECT_FALSE(calc.logExpanded());
    EXPECT_FALSE(ui().saveButton->isEnabled());
}

TEST_F(WindowToggle, FrameIsRestoredAtTheNextStart) {
    auto& calc = start();
    heightAfterToggle();
    calc.calcWindow()->move(40, 60);
    QTest::qWait(50);
    const QRect frame = calc.calcWindow()->geometry();
    auto& restarted = start();
    QTest::qWait(50);
    EXPECT_EQ(restarted.calcWindow()->geometry(), frame);
    EXPECT_EQ(restarted.storedHeight(), 252.0);
    EXPECT_FALSE(restarted.logExpanded());
}

}  // namespace
