#include <gtest/gtest.h>

#include <QApplication>
#include <QCursor>
#include <QEnterEvent>
#include <QIcon>
#include <QImage>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include "DisplayHoverButton.h"
#include "TestRows.h"

namespace {

using vantrel::DisplayHoverButton;
using vantrel::DisplayHoverButtonCell;

// An opaque image of one colour, with columns [clearFrom, clearTo) transparent.
QPixmap pictureOf(QSize size, const QColor& colour, int clearFrom = 0, int clearTo = 0) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    for (int x = clearFrom; x < clearTo; ++x) {
        for (int y = 0; y < size.height(); ++y) image.setPixelColor(x, y, Qt::transparent);
    }
    return QPixmap::fromImage(image);
}

// The button as it paints itself on a transparent ground: whatever has alpha was drawn by it.
QImage rendered(QWidget& widget) {
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

int leftmostDrawnColumn(const QImage& image) {
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (qAlpha(image.pixel(x, y)) > 0) return x;
        }
    }
    return -1;
}

void sendEnter(QWidget& widget) {
    const QPointF inside(widget.width() / 2.0, widget.height() / 2.0);
    QEnterEvent enter(inside, widget.mapTo(widget.window(), inside), widget.mapToGlobal(inside));
    QApplication::sendEvent(&widget, &enter);
}

void sendLeave(QWidget& widget) {
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&widget, &leave);
}

struct PlacementRow {
    const char* name;
    QSize image;
    float offset;
    qreal devicePixelRatio;
    QRectF rect;
};

class HoverButtonPlacement : public testing::TestWithParam<PlacementRow> {};

// Centred in the standard width, less the offset, one point from the top; odd differences land
// on half points, and a high-resolution image is placed by its size in points.
TEST_P(HoverButtonPlacement, CentresTheImageOnTheStandardWidthLessTheOffset) {
    const PlacementRow& row = GetParam();
    QPixmap picture = pictureOf(row.image, Qt::white);
    picture.setDevicePixelRatio(row.devicePixelRatio);
    DisplayHoverButtonCell cell;
    cell.setImage(picture);
    cell.setOffset(row.offset);
    EXPECT_EQ(cell.imageRect(), row.rect);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Offsets, HoverButtonPlacement, testing::Values(
    PlacementRow{"no_offset", {17, 17}, 0, 1, {5, 1, 17, 17}},
    PlacementRow{"two_points_left", {17, 17}, 2, 1, {3, 1, 17, 17}},
    PlacementRow{"sixty_points_right", {17, 17}, -60, 1, {65, 1, 17, 17}},
    PlacementRow{"wider_image", {21, 13}, 0, 1, {3, 1, 21, 13}},
    PlacementRow{"odd_width_half_point", {16, 17}, 0, 1, {5.5, 1, 16, 17}},
    PlacementRow{"half_point_offset", {16, 17}, 0.5f, 1, {5, 1, 16, 17}},
    PlacementRow{"high_resolution", {34, 34}, 2, 2, {3, 1, 17, 17}}),
    rowName<PlacementRow>);
// clang-format on

// Tests that care where the mouse is put it somewhere no test window reaches.
class HoverButton : public testing::Test {
protected:
    void SetUp() override { QCursor::setPos(790, 590); }
};

// The controller swaps the frame-rate picture at run time, after the button has been painted.
TEST_F(HoverButton, DrawsOnlyTheIconItHasNowAndNoTitle) {
    DisplayHoverButton button;
    button.setText(QStringLiteral("Title"));
    button.resize(40, 20);
    EXPECT_EQ(leftmostDrawnColumn(rendered(button)), -1);
    button.setIcon(QIcon(pictureOf({17, 17}, Qt::white)));
    button.setIconSize({17, 17});
    EXPECT_EQ(rendered(button).pixelColor(12, 9), QColor(Qt::white));
    EXPECT_EQ(leftmostDrawnColumn(rendered(button)), 5);
    button.setIcon(QIcon(pictureOf({17, 17}, Qt::red)));
    button.setIconSize({9, 9});
    const QImage smaller = rendered(button);
    EXPECT_EQ(smaller.pixelColor(9, 9), QColor(Qt::red));
    EXPECT_EQ(qAlpha(smaller.pixel(18, 9)), 0);
}

TEST_F(HoverButton, EnterDrawsTheBackdropAndLeaveRemovesIt) {
    DisplayHoverButton button;
    button.resize(40, 20);
    sendEnter(button);
    ASSERT_TRUE(button.cell().isHighlighted());
    const QImage lit = rendered(button);
    const QColor middle = lit.pixelColor(20, 10);
    EXPECT_NEAR(middle.alphaF(), 0.25, 0.01);
    EXPECT_NEAR(middle.blueF(), 0.07, 0.02);
    EXPECT_NEAR(lit.pixelColor(39, 10).alphaF(), 0.25, 0.01);
    // Rounded corners: the corner pixel is only partly covered.
    EXPECT_LT(lit.pixelColor(0, 0).alphaF(), 0.2);
    button.setDown(true);  // pressed is not hovered
    sendLeave(button);
    EXPECT_FALSE(button.cell().isHighlighted());
    EXPECT_EQ(leftmostDrawnColumn(rendered(button)), -1);
}

// A button that appears under the mouse stays plain until the mouse leaves and comes back; one
// that appears elsewhere lights up at the first enter.
class HoverButtonAppearing : public HoverButton, public testing::WithParamInterface<bool> {};

TEST_P(HoverButtonAppearing, UnderTheMouseWaitsForTheMouseToComeBack) {
    const bool underTheMouse = GetParam();
    QWidget window;
    window.setGeometry(100, 100, 200, 100);
    auto* button = new DisplayHoverButton(&window);
    button->setGeometry(10, 10, 40, 20);
    if (underTheMouse) QCursor::setPos(window.geometry().topLeft() + QPoint(30, 20));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QApplication::processEvents();
    sendEnter(*button);
    EXPECT_EQ(button->cell().isHighlighted(), !underTheMouse);
    sendLeave(*button);
    sendEnter(*button);
    EXPECT_TRUE(button->cell().isHighlighted());
}

INSTANTIATE_TEST_SUITE_P(Places, HoverButtonAppearing, testing::Bool());

struct ColouredRow {
    const char* name;
    QColor picture;
    QColor tint;
    float alpha;
};

class HoverButtonColoured : public testing::TestWithParam<ColouredRow> {};

// Premultiplied: the image at `alpha`, the tint at 60% over it, only where the image has
// coverage. Pressed is the image under 60% black.
TEST_P(HoverButtonColoured, LaysTheColourOverTheImageAtItsOpacity) {
    const ColouredRow& row = GetParam();
    DisplayHoverButton button;
    button.resize(40, 20);
    // Image columns 4 to 8 are clear: the button's columns 9 to 13.
    button.setIcon(QIcon(pictureOf({17, 17}, row.picture, 4, 9)));
    button.setIconSize({17, 17});
    EXPECT_EQ(rendered(button).pixelColor(16, 9), row.picture);
    const QImage& coloured = button.cell().coloredImage(row.tint, row.alpha);
    auto expected = [&](int channel, int tint) { return row.alpha * (0.6 * tint + 0.4 * channel); };
    const QRgb pixel = coloured.pixel(12, 8);
    EXPECT_NEAR(qAlpha(pixel), 255 * row.alpha, 1);
    EXPECT_NEAR(qRed(pixel), expected(row.picture.red(), row.tint.red()), 1.5);
    EXPECT_NEAR(qGreen(pixel), expected(row.picture.green(), row.tint.green()), 1.5);
    EXPECT_NEAR(qBlue(pixel), expected(row.picture.blue(), row.tint.blue()), 1.5);
    EXPECT_EQ(qAlpha(coloured.pixel(5, 8)), 0);

    button.setDown(true);
    const QImage pressed = rendered(button);
    EXPECT_NEAR(pressed.pixelColor(16, 9).green(), expected(row.picture.green(), 0) / row.alpha, 1);
    EXPECT_EQ(qAlpha(pressed.pixel(11, 9)), 0);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Tints, HoverButtonColoured, testing::Values(
    ColouredRow{"black_on_white", Qt::white, Qt::black, 1.0f},
    ColouredRow{"blue_on_green", QColor(0, 200, 0), Qt::blue, 1.0f},
    ColouredRow{"black_on_orange_half", QColor(200, 100, 50), Qt::black, 0.5f},
    ColouredRow{"half_transparent_tint", Qt::white, QColor(0, 0, 0, 64), 1.0f}),
    rowName<ColouredRow>);
// clang-format on

TEST_F(HoverButton, TakesFocusFromTheKeyboardOnlyAndShowsIt) {
    QWidget window;
    auto* field = new QLineEdit(&window);
    auto* button = new DisplayHoverButton(&window);
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(field);
    layout->addWidget(button);
    button->setFixedSize(40, 20);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    field->setFocus();
    EXPECT_EQ(qAlpha(rendered(*button).pixel(20, 0)), 0);
    QSignalSpy clicked(button, &QToolButton::clicked);
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(20, 10));
    EXPECT_TRUE(field->hasFocus());
    QTest::keyClick(field, Qt::Key_Tab);
    ASSERT_TRUE(button->hasFocus());
    const QImage focused = rendered(*button);
    EXPECT_GT(qAlpha(focused.pixel(20, 0)), 0);
    EXPECT_EQ(qAlpha(focused.pixel(20, 10)), 0);
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 2);
}

}  // namespace
