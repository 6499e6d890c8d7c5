#include <gtest/gtest.h>

#include <QApplication>
#include <QCursor>
#include <QEnterEvent>
#include <QIcon>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "DisplayHoverButton.h"
#include "TestRows.h"

namespace {

using vantrel::DisplayHoverButton;
using vantrel::DisplayHoverButtonCell;

// An opaque image of one colour, optionally with a transparent band of columns so a test can
// look at both kinds of pixel.
QPixmap pictureOf(QSize size, const QColor& colour, int clearFrom = -1, int clearTo = -1) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    for (int x = std::max(clearFrom, 0); x < clearTo; ++x) {
        for (int y = 0; y < size.height(); ++y) image.setPixelColor(x, y, Qt::transparent);
    }
    return QPixmap::fromImage(image);
}

void giveIcon(DisplayHoverButton& button, const QPixmap& picture) {
    button.setIcon(QIcon(picture));
    button.setIconSize(picture.size());
}

// The button as it paints itself, on a transparent ground: whatever has alpha was drawn by it.
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

int topmostDrawnRow(const QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0) return y;
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

// 60% of a colour over a channel: what the pressed image should hold.
int tinted(int channel, int tint) {
    return static_cast<int>(std::lround(0.6 * tint + 0.4 * channel));
}

// Tests that care where the mouse is put it somewhere no test window reaches.
class HoverButton : public testing::Test {
protected:
    void SetUp() override { QCursor::setPos(790, 590); }
};

struct PlacementRow {
    const char* name;
    int imageWidth;
    float offset;
    int left;
};

class HoverButtonPlacement : public HoverButton,
                             public testing::WithParamInterface<PlacementRow> {};

TEST_P(HoverButtonPlacement, CentresTheImageOnTheStandardWidthLessTheOffset) {
    const PlacementRow& row = GetParam();
    DisplayHoverButton button;
    button.resize(100, 20);
    giveIcon(button, pictureOf({row.imageWidth, 17}, Qt::white));
    button.cell().setOffset(row.offset);

    const QImage image = rendered(button);
    EXPECT_EQ(leftmostDrawnColumn(image), row.left);
    EXPECT_EQ(topmostDrawnRow(image), 1);
    EXPECT_EQ(button.cell().imageRect(), QRectF(row.left, 1, row.imageWidth, 17));
    EXPECT_EQ(image.pixelColor(row.left + row.imageWidth - 1, 17), QColor(Qt::white));
    EXPECT_EQ(qAlpha(image.pixel(row.left + row.imageWidth, 9)), 0);
}

INSTANTIATE_TEST_SUITE_P(Offsets, HoverButtonPlacement,
                         testing::Values(PlacementRow{"no_offset", 17, 0, 5},
                                         PlacementRow{"two_points_left", 17, 2, 3},
                                         PlacementRow{"sixty_points_right", 17, -60, 65},
                                         PlacementRow{"three_points_left", 17, 3, 2},
                                         PlacementRow{"wider_image", 21, 0, 3}),
                         rowName<PlacementRow>);

// The controller swaps the frame-rate picture at run time, after the button has been painted.
TEST_F(HoverButton, DrawsTheIconItHasNowAtItsIconSize) {
    DisplayHoverButton button;
    button.resize(40, 20);
    giveIcon(button, pictureOf({17, 17}, Qt::white));
    EXPECT_EQ(rendered(button).pixelColor(12, 9), QColor(Qt::white));

    button.setIcon(QIcon(pictureOf({17, 17}, Qt::red)));
    EXPECT_EQ(rendered(button).pixelColor(12, 9), QColor(Qt::red));

    button.setIconSize({9, 9});
    const QImage smaller = rendered(button);
    EXPECT_EQ(leftmostDrawnColumn(smaller), 9);
    EXPECT_EQ(qAlpha(smaller.pixel(17, 9)), 255);
    EXPECT_EQ(qAlpha(smaller.pixel(18, 9)), 0);
    EXPECT_EQ(qAlpha(smaller.pixel(12, 10)), 0);
}

// An odd difference to the standard width is split evenly, so the image sits on a half point.
TEST_F(HoverButton, OddWidthsAreCentredOnHalfPoints) {
    DisplayHoverButtonCell cell;
    cell.setImage(pictureOf({16, 17}, Qt::white));
    EXPECT_EQ(cell.imageRect(), QRectF(5.5, 1, 16, 17));
    cell.setOffset(0.5f);
    EXPECT_EQ(cell.imageRect(), QRectF(5, 1, 16, 17));
}

TEST_F(HoverButton, DrawsNoTitleAndNoBezel) {
    DisplayHoverButton button;
    button.setText(QStringLiteral("Title"));
    button.resize(40, 20);
    const QImage image = rendered(button);
    EXPECT_EQ(leftmostDrawnColumn(image), -1);
    // Pressed is not hovered: still nothing without an image.
    button.setDown(true);
    EXPECT_FALSE(button.cell().isHighlighted());
    EXPECT_EQ(leftmostDrawnColumn(rendered(button)), -1);
}

TEST_F(HoverButton, EnterDrawsTheBackdropAndLeaveRemovesIt) {
    DisplayHoverButton button;
    button.resize(40, 20);
    EXPECT_FALSE(button.cell().isHighlighted());

    sendEnter(button);
    ASSERT_TRUE(button.cell().isHighlighted());
    const QImage lit = rendered(button);
    for (QPoint point : {QPoint(20, 10), QPoint(20, 0), QPoint(39, 10), QPoint(0, 10)}) {
        const QColor colour = lit.pixelColor(point);
        SCOPED_TRACE(testing::Message() << "at " << point.x() << "," << point.y());
        EXPECT_NEAR(colour.alphaF(), 0.25, 0.01);
        EXPECT_NEAR(colour.redF(), 0.01, 0.02);
        EXPECT_NEAR(colour.greenF(), 0.03, 0.02);
        EXPECT_NEAR(colour.blueF(), 0.07, 0.02);
    }
    // Rounded corners: the corner pixel is only partly covered.
    EXPECT_GT(lit.pixelColor(0, 0).alphaF(), 0.0);
    EXPECT_LT(lit.pixelColor(0, 0).alphaF(), 0.2);
    EXPECT_LT(lit.pixelColor(39, 19).alphaF(), 0.2);

    sendLeave(button);
    EXPECT_FALSE(button.cell().isHighlighted());
    EXPECT_EQ(leftmostDrawnColumn(rendered(button)), -1);
}

class PaintCounter : public QWidget {
public:
    int paints = 0;

protected:
    void paintEvent(QPaintEvent* /*event*/) override { ++paints; }
};

TEST_F(HoverButton, HoverChangesRepaintTheControl) {
    PaintCounter control;
    control.resize(40, 20);
    control.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&control));
    DisplayHoverButtonCell cell(&control);

    QApplication::processEvents();
    control.paints = 0;
    cell.mouseEntered();
    EXPECT_TRUE(cell.isHighlighted());
    EXPECT_TRUE(QTest::qWaitFor([&] { return control.paints > 0; }, 1000));

    QApplication::processEvents();
    control.paints = 0;
    cell.mouseExited();
    EXPECT_FALSE(cell.isHighlighted());
    EXPECT_TRUE(QTest::qWaitFor([&] { return control.paints > 0; }, 1000));
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
    EXPECT_FALSE(button->cell().isHighlighted());
    sendEnter(*button);
    EXPECT_EQ(button->cell().isHighlighted(), !underTheMouse);
    sendLeave(*button);
    sendEnter(*button);
    EXPECT_TRUE(button->cell().isHighlighted());
}

INSTANTIATE_TEST_SUITE_P(Places, HoverButtonAppearing, testing::Bool());

struct PressedRow {
    const char* name;
    QColor picture;
};

class HoverButtonPressed : public HoverButton, public testing::WithParamInterface<PressedRow> {};

TEST_P(HoverButtonPressed, DarkensTheImageBySixtyPercentBlack) {
    const QColor picture = GetParam().picture;
    DisplayHoverButton button;
    button.resize(40, 20);
    giveIcon(button, pictureOf({17, 17}, picture));

    const QColor plain = rendered(button).pixelColor(12, 9);
    EXPECT_EQ(plain, picture);

    button.setDown(true);
    const QColor pressed = rendered(button).pixelColor(12, 9);
    EXPECT_EQ(pressed.alpha(), 255);
    EXPECT_NEAR(pressed.red(), tinted(picture.red(), 0), 1);
    EXPECT_NEAR(pressed.green(), tinted(picture.green(), 0), 1);
    EXPECT_NEAR(pressed.blue(), tinted(picture.blue(), 0), 1);
    EXPECT_LT(pressed.lightness(), plain.lightness());

    button.setDown(false);
    EXPECT_EQ(rendered(button).pixelColor(12, 9), picture);
}

INSTANTIATE_TEST_SUITE_P(Colours, HoverButtonPressed,
                         testing::Values(PressedRow{"white", QColor(255, 255, 255)},
                                         PressedRow{"orange", QColor(200, 100, 50)},
                                         PressedRow{"grey", QColor(120, 120, 120)}),
                         rowName<PressedRow>);

TEST_F(HoverButton, PressedImageKeepsTransparentPixelsTransparent) {
    DisplayHoverButton button;
    button.resize(40, 20);
    // Columns 4 to 8 of the image are clear: the button's columns 9 to 13.
    giveIcon(button, pictureOf({17, 17}, Qt::white, 4, 9));
    button.setDown(true);

    const QImage image = rendered(button);
    for (int x = 9; x < 14; ++x) EXPECT_EQ(qAlpha(image.pixel(x, 9)), 0) << "column " << x;
    EXPECT_NEAR(image.pixelColor(7, 9).red(), tinted(255, 0), 1);
    EXPECT_NEAR(image.pixelColor(16, 9).red(), tinted(255, 0), 1);

    const QImage& coloured = button.cell().coloredImage(Qt::black, 1.0f);
    EXPECT_EQ(qAlpha(coloured.pixel(5, 9)), 0);
    EXPECT_EQ(qAlpha(coloured.pixel(2, 9)), 255);
}

struct ColouredRow {
    const char* name;
    QColor picture;
    QColor tint;
    float alpha;
};

class HoverButtonColoured : public HoverButton, public testing::WithParamInterface<ColouredRow> {};

// Premultiplied values: the image at `alpha`, then the tint at 60% over it, but only where the
// image has coverage.
TEST_P(HoverButtonColoured, LaysTheColourOverTheImageAtItsOpacity) {
    const ColouredRow& row = GetParam();
    DisplayHoverButtonCell cell;
    cell.setImage(pictureOf({17, 17}, row.picture));

    const QImage& coloured = cell.coloredImage(row.tint, row.alpha);
    ASSERT_EQ(coloured.size(), QSize(17, 17));
    const QRgb pixel = coloured.pixel(8, 8);
    const double coverage = row.alpha;
    EXPECT_NEAR(qAlpha(pixel), 255 * coverage, 1);
    auto expected = [&](int channel, int tint) { return coverage * (0.6 * tint + 0.4 * channel); };
    EXPECT_NEAR(qRed(pixel), expected(row.picture.red(), row.tint.red()), 1.5);
    EXPECT_NEAR(qGreen(pixel), expected(row.picture.green(), row.tint.green()), 1.5);
    EXPECT_NEAR(qBlue(pixel), expected(row.picture.blue(), row.tint.blue()), 1.5);
}

INSTANTIATE_TEST_SUITE_P(
    Tints, HoverButtonColoured,
    testing::Values(ColouredRow{"black_on_white", Qt::white, Qt::black, 1.0f},
                    ColouredRow{"blue_on_green", QColor(0, 200, 0), Qt::blue, 1.0f},
                    ColouredRow{"black_on_white_half", Qt::white, Qt::black, 0.5f},
                    ColouredRow{"half_transparent_tint", Qt::white, QColor(0, 0, 0, 64), 1.0f}),
    rowName<ColouredRow>);

TEST_F(HoverButton, ImagesOfTwoSizesShareOneScratchImage) {
    DisplayHoverButton small;
    small.resize(40, 20);
    giveIcon(small, pictureOf({17, 17}, Qt::white));
    small.setDown(true);
    DisplayHoverButton wide;
    wide.resize(40, 20);
    giveIcon(wide, pictureOf({21, 13}, QColor(100, 200, 250)));
    wide.setDown(true);

    const QImage smallPressed = rendered(small);
    EXPECT_NEAR(smallPressed.pixelColor(12, 9).red(), tinted(255, 0), 1);
    EXPECT_EQ(qAlpha(smallPressed.pixel(22, 9)), 0);
    EXPECT_EQ(DisplayHoverButtonCell::scratchImage({17, 17}).constBits(),
              small.cell().coloredImage(Qt::black, 1.0f).constBits());

    const QImage widePressed = rendered(wide);
    EXPECT_EQ(DisplayHoverButtonCell::scratchImage({21, 13}).size(), QSize(21, 13));
    EXPECT_EQ(&DisplayHoverButtonCell::scratchImage({21, 13}),
              &small.cell().coloredImage(Qt::black, 1.0f));
    // The wide image spans columns 3 to 23 and rows 1 to 13.
    EXPECT_EQ(leftmostDrawnColumn(widePressed), 3);
    EXPECT_EQ(qAlpha(widePressed.pixel(23, 13)), 255);
    EXPECT_EQ(qAlpha(widePressed.pixel(24, 13)), 0);
    EXPECT_EQ(qAlpha(widePressed.pixel(23, 14)), 0);
    EXPECT_NEAR(widePressed.pixelColor(20, 7).red(), tinted(100, 0), 1);
    EXPECT_NEAR(widePressed.pixelColor(20, 7).blue(), tinted(250, 0), 1);

    EXPECT_EQ(rendered(small), smallPressed);
    EXPECT_EQ(rendered(wide), widePressed);
}

TEST_F(HoverButton, HighResolutionImageIsPlacedInPointsAndColouredInPixels) {
    QPixmap picture = pictureOf({34, 34}, Qt::white);
    picture.setDevicePixelRatio(2);
    DisplayHoverButtonCell cell;
    cell.setImage(picture);
    cell.setOffset(2);
    EXPECT_EQ(cell.imageRect(), QRectF(3, 1, 17, 17));

    const QImage& coloured = cell.coloredImage(Qt::black, 1.0f);
    EXPECT_EQ(coloured.size(), QSize(34, 34));
    EXPECT_EQ(coloured.devicePixelRatio(), 2.0);

    QImage view(80, 40, QImage::Format_ARGB32_Premultiplied);
    view.setDevicePixelRatio(2);
    view.fill(Qt::transparent);
    QPainter painter(&view);
    cell.drawInterior(painter, {40, 20}, true);
    painter.end();
    EXPECT_EQ(leftmostDrawnColumn(view), 6);
    EXPECT_EQ(topmostDrawnRow(view), 2);
    EXPECT_EQ(qAlpha(view.pixel(39, 20)), 255);
    EXPECT_EQ(qAlpha(view.pixel(40, 20)), 0);
    EXPECT_NEAR(view.pixelColor(20, 20).red(), tinted(255, 0), 1);
}

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
    ASSERT_TRUE(field->hasFocus());
    EXPECT_EQ(qAlpha(rendered(*button).pixel(20, 0)), 0);

    QSignalSpy clicked(button, &QToolButton::clicked);
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(20, 10));
    EXPECT_TRUE(field->hasFocus());

    QTest::keyClick(field, Qt::Key_Tab);
    ASSERT_TRUE(button->hasFocus());
    const QImage focused = rendered(*button);
    EXPECT_GT(qAlpha(focused.pixel(20, 0)), 0);
    EXPECT_GT(qAlpha(focused.pixel(0, 10)), 0);
    EXPECT_EQ(qAlpha(focused.pixel(20, 10)), 0);

    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 2);
}

}  // namespace
