#include <gtest/gtest.h>

#include <QApplication>
#include <QCursor>
#include <QEnterEvent>
#include <QLineEdit>
#include <QTest>

#include "DisplayHoverButton.h"
#include "TestRows.h"

namespace {

using vantrel::DisplayHoverButton;

// A button with an opaque image of one colour whose columns 4 to 8 are transparent.
struct Button : DisplayHoverButton {
    Button(QSize size, const QColor& colour, float offset = 0) {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(colour);
        for (int x = 4; x < 9; ++x) {
            for (int y = 0; y < image.height(); ++y) image.setPixelColor(x, y, Qt::transparent);
        }
        setIcon(QIcon(QPixmap::fromImage(image)));
        setIconSize(size);
        cell().setOffset(offset);
        resize(100, 20);
    }

    // As the button paints itself on a transparent ground: whatever has alpha was drawn by it.
    QImage rendered() {
        QImage image(size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        return image;
    }

    void hover(bool inside) {
        const QPointF point(50, 10);
        QEnterEvent enter(point, point, mapToGlobal(point));
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(this, inside ? static_cast<QEvent*>(&enter) : &leave);
    }
};

struct PaintRow {
    const char* name;
    QSize image;
    float offset;
    QRectF rect;
    QColor colour;
    QColor tint;
    float alpha;
};

class HoverButtonPainting : public testing::TestWithParam<PaintRow> {};

// Centred in the standard width less the offset, one point from the top; odd differences land
// on half points. Coloured, the image
// lies under the tint at 60%, at `alpha`, where the image has coverage; pressed, under black.
TEST_P(HoverButtonPainting, PlacesAndColoursTheImage) {
    const PaintRow& row = GetParam();
    Button button(row.image, row.colour, row.offset);
    const QImage plain = button.rendered();
    EXPECT_EQ(button.cell().imageRect(), row.rect);
    const int left = static_cast<int>(row.rect.left());
    EXPECT_EQ(plain.pixelColor(left + 12, 5), row.colour);
    EXPECT_EQ(qAlpha(plain.pixel(left + 5, 5)), 0);
    const QRgb pixel = button.cell().coloredImage(row.tint, row.alpha).pixel(12, 4);
    const auto tinted = [&](int channel, int tint) {
        return row.alpha * (0.6 * tint + 0.4 * channel);
    };
    EXPECT_NEAR(qAlpha(pixel), 255 * row.alpha, 1);
    EXPECT_NEAR(qRed(pixel), tinted(row.colour.red(), row.tint.red()), 1.5);
    EXPECT_NEAR(qBlue(pixel), tinted(row.colour.blue(), row.tint.blue()), 1.5);
    button.setDown(true);
    const QImage pressed = button.rendered();
    EXPECT_NEAR(pressed.pixelColor(left + 12, 5).green(), 0.4 * row.colour.green(), 1);
    EXPECT_EQ(qAlpha(pressed.pixel(left + 5, 5)), 0);
    EXPECT_EQ(qAlpha(pressed.pixel(0, 10)), 0);  // pressed is not hovered: no backdrop
    // The controller swaps the frame-rate picture at run time, after the button has been painted.
    QPixmap swapped(row.image);
    swapped.fill(Qt::red);
    button.setIcon(QIcon(swapped));
    EXPECT_EQ(qAlpha(button.rendered().pixel(left + 5, 5)), 255);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rows, HoverButtonPainting, testing::Values(
    PaintRow{"centred", {17, 17}, 0, {5, 1, 17, 17}, Qt::white, Qt::black, 1.0f},
    PaintRow{"sixty_points_right", {17, 17}, -60, {65, 1, 17, 17}, QColor(200, 100, 50), Qt::black, 0.5f},
    PaintRow{"wider_image", {21, 13}, 0, {3, 1, 21, 13}, Qt::white, QColor(0, 0, 0, 64), 1.0f},
    PaintRow{"odd_width_half_point_offset", {16, 17}, 0.5f, {5, 1, 16, 17}, Qt::white, Qt::black, 1.0f},
    PaintRow{"odd_width", {16, 17}, 0, {5.5, 1, 16, 17}, Qt::white, Qt::black, 1.0f}),
    rowName<PaintRow>);
// clang-format on

// A rounded backdrop while the mouse is over the button; a button that appears under the mouse
// stays plain until the mouse leaves and comes back.
TEST(HoverButton, LightsUpWhileTheMouseIsOver) {
    QWidget window;
    window.setGeometry(100, 100, 200, 100);
    auto* button = new Button({17, 17}, Qt::white);
    button->setParent(&window);
    QCursor::setPos(window.geometry().topLeft() + QPoint(30, 10));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QApplication::processEvents();
    button->hover(true);
    EXPECT_FALSE(button->cell().isHighlighted());
    button->hover(false);
    button->hover(true);
    ASSERT_TRUE(button->cell().isHighlighted());
    const QImage lit = button->rendered();
    EXPECT_NEAR(lit.pixelColor(2, 10).alphaF(), 0.25, 0.01);
    EXPECT_NEAR(lit.pixelColor(2, 10).blueF(), 0.07, 0.02);
    EXPECT_LT(lit.pixelColor(0, 0).alphaF(), 0.2);
    button->hover(false);
    EXPECT_EQ(qAlpha(button->rendered().pixel(2, 10)), 0);
    // Fitted to its image (x 5 to 22), the button is there only around it.
    button->fitToImage();
    for (const int x : {2, 3, 23, 24}) {
        EXPECT_EQ(window.childAt(button->pos() + QPoint(x, 10)) == button, x == 3 || x == 23) << x;
    }
    QCursor::setPos(790, 590);  // where no other test's window reaches
}

TEST(HoverButton, TakesFocusFromTheKeyboardOnlyAndShowsIt) {
    QWidget window;
    auto* field = new QLineEdit(&window);
    auto* button = new Button({17, 17}, Qt::white);
    button->setParent(&window);
    button->setGeometry(0, 40, 40, 20);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    field->setFocus();
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(20, 10));
    EXPECT_TRUE(field->hasFocus());
    EXPECT_EQ(qAlpha(button->rendered().pixel(20, 0)), 0);
    QTest::keyClick(field, Qt::Key_Tab);
    ASSERT_TRUE(button->hasFocus());
    EXPECT_GT(qAlpha(button->rendered().pixel(20, 0)), 0);
}

}  // namespace
