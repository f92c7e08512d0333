#include "windows/qt/painter_target.h"

#include <QImage>

#include <gtest/gtest.h>

#include "qt_application.h"

using namespace veldra;

namespace {

constexpr std::int16_t dotted = 2;
constexpr std::int16_t solid = 0;

/// Pages of 100 by 30 units, one a metre and a millimetre.
class PainterTargetTest : public veldra_test::QtTest {
 protected:
    /// The row of the page that a line at y = 10.5 lies in, '#' where it shows. `draw` takes the
    /// target; `origin` is the ground coordinate of the page's left edge.
    template <typename Draw>
    static std::string row(double origin, Draw&& draw, double units_per_pen_pixel = 1) {
        QImage image(100, 30, QImage::Format_RGB32);
        image.fill(Qt::white);
        {
            QPainter painter(&image);
            PainterTarget target(painter, {QRectF(0, 0, 100, 30), 1, units_per_pen_pixel},
                                 PainterTarget::Labels::leave_out);
            target.Scale(origin, 30, origin + 100, 0);
            target.DrawStyle(dotted);
            draw(target);
        }
        std::string shown;
        for (int x = 0; x < image.width(); ++x) {
            shown += image.pixel(x, 19) == 0xffffffffU ? '.' : '#';
        }
        return shown;
    }
};

TEST_F(PainterTargetTest, DotsAreThreePenPixelsOnAndThreeOff) {
    const std::string shown = row(0, [](PageTarget& page) { page.Line(0, 10.5F, 30, 10.5F); });
    EXPECT_EQ(shown.substr(0, 36), "###...###...###...###...###.........");
}

TEST_F(PainterTargetTest, TheRestOfALineGoesOnWithItsDots) {
    // 40 m lie on the sheet before: six whole periods of 6 m and 4 m, so one metre is off yet two
    // more are to come.
    const std::string shown = row(40, [](PageTarget& page) {
        page.LinePart(40, 10.5F, 70, 10.5F, {40, 0, no_sides});
    });
    EXPECT_EQ(shown.substr(0, 32), "..###...###...###...###...###...");
}

TEST_F(PainterTargetTest, TheNextLineBeginsWithADot) {
    const std::string shown = row(40, [](PageTarget& page) {
        page.LinePart(40, 10.5F, 50, 10.5F, {40, 0, no_sides});
        page.Line(60, 10.5F, 72, 10.5F);
    });
    EXPECT_EQ(shown.substr(0, 34), "..###...##..........###...###.....");
}

TEST_F(PainterTargetTest, TheRestOfASolidLineIsSolid) {
    const std::string shown = row(40, [](PageTarget& page) {
        page.DrawStyle(solid);
        page.LinePart(45, 10.5F, 55, 10.5F, {40, 0, no_sides});
    });
    EXPECT_EQ(shown.substr(0, 20).find_last_not_of('.') - shown.find('#'), 10U);
    EXPECT_EQ(shown.substr(6, 8), "########");
}

TEST_F(PainterTargetTest, DotsRunOnWhereALineComesFromFarAway) {
    // 1 200 000 is a multiple of 12, and more than a device counts.
    const std::string shown = row(
        0, [](PageTarget& page) { page.Line(-1200000, 10.5F, 31, 10.5F); }, 2);
    EXPECT_EQ(shown.substr(0, 36), "######......######......######......");
}

/// A page of 100 by 100 units, one a metre, with a pen of 20; what shows of it.
template <typename Draw>
QImage drawn_with_thick_pen(Draw&& draw) {
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    PainterTarget target(painter, {QRectF(0, 0, 100, 100), 1, 1}, PainterTarget::Labels::leave_out);
    target.Scale(0, 100, 100, 0);
    target.DrawWidth(20);
    draw(target);
    return image;
}

/// Whether the square metre with this lower left corner is black.
bool is_inked(const QImage& image, int x, int y) {
    return image.pixel(x, 99 - y) != 0xffffffffU;
}

TargetBox from_fifty_east() {
    TargetBox window = no_sides;
    window.xmin = 50;
    return window;
}

TEST_F(PainterTargetTest, CutLineEndsFlushWithItsWindow) {
    // y = x: the pen covers |y - x| < 14.14. A line that began at (50, 50) would leave out what is
    // more than 10 m from there and below y = 100 - x.
    const QImage image = drawn_with_thick_pen([](PageTarget& page) {
        page.LinePart(50, 50, 90, 90, {70, 0, from_fifty_east()});
        page.Line(20, 80, 22, 80);
    });
    EXPECT_TRUE(is_inked(image, 51, 39));
    EXPECT_TRUE(is_inked(image, 50, 38));
    EXPECT_FALSE(is_inked(image, 51, 34));
    EXPECT_TRUE(is_inked(image, 50, 62));
    EXPECT_FALSE(is_inked(image, 49, 50));
    EXPECT_FALSE(is_inked(image, 45, 50));
    EXPECT_TRUE(is_inked(image, 15, 80));  // the window holds for the one line
}

TEST_F(PainterTargetTest, CutEllipseEndsFlushWithItsWindow) {
    // A circle of 30 m around (45, 50): it crosses x = 50 at 50 +- 29.58, and its pen covers 20 to
    // 40 m from the centre.
    const QImage image = drawn_with_thick_pen([](PageTarget& page) {
        EllipseCurve curve;
        curve.x = 45;
        curve.y = 50;
        curve.a = 30;
        curve.b = 30;
        EXPECT_TRUE(page.EllipsePart(curve, from_fifty_east()));
        page.Line(20, 90, 22, 90);
    });
    EXPECT_TRUE(is_inked(image, 75, 50));
    EXPECT_TRUE(is_inked(image, 50, 88));
    EXPECT_TRUE(is_inked(image, 50, 71));
    EXPECT_FALSE(is_inked(image, 60, 50));
    EXPECT_FALSE(is_inked(image, 49, 79));
    EXPECT_FALSE(is_inked(image, 15, 50));
    EXPECT_TRUE(is_inked(image, 20, 90));
}

}  // namespace
