#include "windows/qt/raster_target.h"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qt_application.h"
#include "windows/qt/label_painter.h"
#include "windows/qt/qt_text_measurer.h"

using namespace veldra;

namespace {

/// A picture whose pixels are one metre each.
class RasterTargetTest : public veldra_test::QtTest {
 protected:
    explicit RasterTargetTest(int width = 200, int height = 150)
        : image_(width, height, QImage::Format_RGB32) {
        image_.fill(Qt::white);
        set_logical_resolution(image_, 1.0);
    }

    PictureMapping mapping(double ratio = 1.0) {
        return picture_mapping(image_, image_.width(), image_.height(), ratio);
    }

    [[nodiscard]] bool is_white(int x, int y) const { return image_.pixel(x, y) == 0xffffffffU; }

    /// The smallest rectangle around all pixels that are not white.
    [[nodiscard]] QRect painted() const {
        QRect box;
        for (int y = 0; y < image_.height(); ++y) {
            for (int x = 0; x < image_.width(); ++x) {
                if (!is_white(x, y)) {
                    box |= QRect(x, y, 1, 1);
                }
            }
        }
        return box;
    }

    QImage image_;
};

TEST_F(RasterTargetTest, NorthIsUpAndTheOriginIsTheLowerLeftCorner) {
    RasterTarget target(image_, mapping());
    target.ForeColor(0x0000FF);  // red
    target.Line(0.5F, 0.5F, 10.5F, 0.5F);
    EXPECT_EQ(painted(), QRect(0, 149, 11, 1));
    EXPECT_EQ(image_.pixel(3, 149), 0xffff0000U);
}

TEST_F(RasterTargetTest, PenWidthsAreLogicalPixels) {
    for (const auto& [ratio, width] : {std::pair{1.0, 2}, std::pair{1.5, 3}, std::pair{2.0, 4}}) {
        image_.fill(Qt::white);
        RasterTarget target(image_, mapping(ratio));
        target.DrawWidth(2);
        target.Line(20.0F, 0.0F, 20.0F, 150.0F);
        EXPECT_EQ(painted().width(), width) << ratio;
    }
}

TEST_F(RasterTargetTest, DottedLineIsThreeOnThreeOff) {
    RasterTarget target(image_, mapping());
    target.DrawStyle(2);
    target.Line(0.5F, 100.5F, 20.5F, 100.5F);
    for (int x = 0; x <= 20; ++x) {
        EXPECT_EQ(is_white(x, 49), x % 6 >= 3) << x;
    }
    target.DrawStyle(0);
    target.Line(0.5F, 90.5F, 20.5F, 90.5F);
    for (int x = 0; x <= 20; ++x) {
        EXPECT_FALSE(is_white(x, 59)) << x;
    }
}

TEST_F(RasterTargetTest, LaterOperationsCoverEarlierOnes) {
    RasterTarget target(image_, mapping());
    target.ForeColor(0x0000FF);
    target.Line(10.5F, 10.5F, 60.5F, 10.5F);
    target.ForeColor(0xFF0000);
    target.Line(30.5F, 0.5F, 30.5F, 20.5F);
    EXPECT_EQ(image_.pixel(30, 139), 0xff0000ffU);
    EXPECT_EQ(image_.pixel(29, 139), 0xffff0000U);
}

TEST_F(RasterTargetTest, WhatIsNoNumberIsNotDrawn) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    RasterTarget target(image_, mapping());
    target.Line(nan, 0, 10, 10);
    target.Line(0, 0, 10, infinite);
    target.TextRotated("Text", 0, 9, {});
    target.Circle(nan, 5, 5);
    target.Circle(5, 5, nan);
    target.Circle(5, 5, infinite);
    target.Line(0, 0, nan, 10);
    target.TextRotated("Text", 0, 9, {});
    EXPECT_TRUE(painted().isNull());
}

TEST_F(RasterTargetTest, CircleIsOutlinedAndFilled) {
    RasterTarget target(image_, mapping());
    target.FillStyle(0);
    target.FillColor(0xFF7F00);  // RGB 0, 127, 255
    target.Circle(100.5F, 75.5F, 8.0F);
    EXPECT_EQ(image_.pixel(100, 74), 0xff007fffU);
    EXPECT_EQ(image_.pixel(108, 74), 0xff000000U);
    EXPECT_EQ(painted(), QRect(92, 66, 17, 17));
    image_.fill(Qt::white);
    target.FillStyle(1);
    target.Circle(100.5F, 75.5F, 8.0F);
    EXPECT_TRUE(is_white(100, 74));
    EXPECT_FALSE(is_white(108, 74));
}

TEST_F(RasterTargetTest, EllipseHasThePixelsOfItsSegments) {
    for (const double a : {0.4, 3.0, 20.0, 60.0}) {
        for (const std::int16_t width : {std::int16_t{1}, std::int16_t{3}}) {
            EllipseCurve curve;
            curve.x = 3500100.3;
            curve.y = 5600070.7;
            curve.origin_x = 3500000;
            curve.origin_y = 5600000;
            curve.a = a;
            curve.b = a / 3;
            curve.sine = 0.6;
            curve.cosine = 0.8;
            image_.fill(Qt::white);
            {
                RasterTarget target(image_, mapping());
                target.DrawWidth(width);
                target.DrawingTarget::Ellipse(curve);
            }
            const QImage segments = image_.copy();
            image_.fill(Qt::white);
            {
                RasterTarget target(image_, mapping());
                target.DrawWidth(width);
                target.Ellipse(curve);
            }
            EXPECT_EQ(image_, segments) << a << ' ' << width;
            EXPECT_FALSE(painted().isNull());
        }
    }
}

TEST_F(RasterTargetTest, TextBeginsAtTheTipOrEndsThere) {
    RasterTarget target(image_, mapping());
    target.Line(100.0F, 75.0F, 100.0F, 75.0F);
    image_.fill(Qt::white);
    target.TextRotated("HHHH", 0, 9, {});
    // From the tip to the right, wholly above it: the descent lies between.
    EXPECT_GE(painted().left(), 100);
    EXPECT_LE(painted().left(), 103);
    EXPECT_LT(painted().bottom(), 75);
    EXPECT_GE(painted().bottom(), 75 - 5);
    const int width = painted().width();
    image_.fill(Qt::white);
    target.TextRotated("HHHH", 0, 11, {});
    EXPECT_LE(painted().right(), 100);
    EXPECT_GE(painted().right(), 97);
    EXPECT_NEAR(painted().width(), width, 1);
}

TEST_F(RasterTargetTest, EscapementTurnsCounterClockwise) {
    RasterTarget target(image_, mapping());
    target.Line(100.0F, 75.0F, 100.0F, 75.0F);
    image_.fill(Qt::white);
    // Upwards, ending at the tip: the text stands below the tip and left of it.
    target.TextRotated("HHHH", 900, 11, {});
    EXPECT_GE(painted().top(), 75);
    EXPECT_LE(painted().top(), 78);
    EXPECT_LT(painted().right(), 100);
    EXPECT_GT(painted().height(), painted().width());
    image_.fill(Qt::white);
    // Upwards from the tip on.
    target.TextRotated("HHHH", 900, 9, {});
    EXPECT_LE(painted().bottom(), 75);
    EXPECT_GE(painted().bottom(), 72);
}

TEST_F(RasterTargetTest, VisibleBoxHoldsThePictureAndThePen) {
    RasterTarget target(image_, mapping());
    // A pen is drawn 128 pixels wide at most, and half of it may reach in.
    target.DrawWidth(400);
    const TargetBox box = target.visible_box().value();
    EXPECT_LE(box.xmin, -64);
    EXPECT_GE(box.xmax, 264);
    EXPECT_LE(box.ymin, -64);
    EXPECT_GE(box.ymax, 214);
    image_.fill(Qt::white);
    target.Line(0, 75, 200, 75);
    EXPECT_EQ(painted().height(), 128);
}

/// Labels of 10 point on a picture of one metre a pixel.
class LabelPainterTest : public RasterTargetTest {
 protected:
    Label label(const char* caption, float left, float top) {
        Label result;
        result.caption = caption;
        result.left = left;
        result.top = top;
        const TextExtent extent = measure_text(measurer_.face_metrics({}), 10, caption);
        result.width = static_cast<float>(extent.width / 15);
        result.height = static_cast<float>(extent.height / 15);
        result.visible = true;
        return result;
    }

    void paint(const std::vector<Label>& labels, const FontSpec& font = {},
               std::int32_t colour = 0) {
        for (const Label& label : labels) {
            painter_.paint(image_, mapping(), label, font, colour);
        }
    }

    QtTextMeasurer measurer_;
    LabelPainter painter_{measurer_};
};

TEST_F(LabelPainterTest, TextStandsInItsBox) {
    const Label text = label("1234567890", 20, 100);
    paint({text});
    const QRect box = painted();
    EXPECT_GE(box.left(), 20);
    EXPECT_LE(box.right(), 20 + static_cast<int>(text.width) + 1);
    EXPECT_GE(box.top(), 50);
    EXPECT_LE(box.bottom(), 50 + static_cast<int>(text.height));
    // Ten digits of 0.556 em at 13.33 pixels are 74.1 pixels wide, with narrow margins in the
    // first and the last one.
    EXPECT_NEAR(box.width(), 72.5, 2);
    // A digit is about 0.7 em high.
    EXPECT_NEAR(box.height(), 9.6, 1.1);
}

TEST_F(LabelPainterTest, HiddenAndBlankLabelsAreNotPainted) {
    Label hidden = label("hidden", 20, 50);
    hidden.visible = false;
    paint({hidden, label("    ", 40, 80), label("", 40, 60)});
    EXPECT_TRUE(painted().isNull());
}

TEST_F(LabelPainterTest, ColourAndUnderline) {
    FontSpec font;
    font.underline = -1;
    const Label text = label("lll", 20, 100);
    paint({text}, font, 0x0000FF);
    bool whole_row = false;
    for (int y = 0; y < image_.height(); ++y) {
        int red_pixels = 0;
        for (int x = 20; x < 20 + static_cast<int>(text.width); ++x) {
            red_pixels += image_.pixel(x, y) == 0xffff0000U ? 1 : 0;
        }
        whole_row = whole_row || red_pixels == static_cast<int>(text.width);
    }
    EXPECT_TRUE(whole_row);
}

TEST_F(LabelPainterTest, LabelsAtTheEdgesAreCut) {
    std::vector<Label> labels;
    for (const float x : {-30.0F, -3.0F, 100.0F, 198.0F, 1e30F, -1e30F}) {
        for (const float y : {-5.0F, 3.0F, 80.0F, 149.0F, 160.0F, 1e30F, -1e30F}) {
            labels.push_back(label("Wgj12345", x, y));
        }
    }
    paint(labels);
    EXPECT_EQ(painted().left(), 0);
    EXPECT_EQ(painted().right(), 199);
}

TEST_F(LabelPainterTest, FontsAtTwoResolutionsScale) {
    paint({label("HHHHH", 10, 120)});
    const int width = painted().width();
    image_.fill(Qt::white);
    painter_.paint(image_, mapping(2.0), label("HHHHH", 10, 120), {}, 0);
    EXPECT_NEAR(painted().width(), 2 * width, 2);
}

TEST_F(LabelPainterTest, UmlautsComeFromTheCodePage) {
    paint({label("\xC4\xD6\xDC\xDF", 10, 120)});
    EXPECT_GT(painted().width(), 25);
}

class QtTextMeasurerTest : public veldra_test::QtTest {
 protected:
    QtTextMeasurer measurer_;
};

TEST_F(QtTextMeasurerTest, ArialHasItsPublishedWidths) {
    const FaceMetrics& face = measurer_.face_metrics({});
    // Widths of the metric-compatible faces in 1/2048 em: digits 1139, blank 569, W 1933, i 455.
    EXPECT_NEAR(face.advance['0'], 1139 / 2048.0, 0.001);
    EXPECT_NEAR(face.advance['7'], 1139 / 2048.0, 0.001);
    EXPECT_NEAR(face.advance[' '], 569 / 2048.0, 0.001);
    EXPECT_NEAR(face.advance['W'], 1933 / 2048.0, 0.001);
    EXPECT_NEAR(face.advance['i'], 455 / 2048.0, 0.001);
    EXPECT_NEAR(face.advance[0xC4], face.advance['A'], 0.001);
    EXPECT_NEAR(face.ascent, 0.905, 0.01);
    EXPECT_NEAR(face.descent, 0.212, 0.01);
}

TEST_F(QtTextMeasurerTest, BoldIsWiderAndMetricsAreKept) {
    FontSpec bold;
    bold.bold = -1;
    const FaceMetrics& plain = measurer_.face_metrics({});
    EXPECT_GT(measurer_.face_metrics(bold).advance['i'], plain.advance['i']);
    FontSpec larger;
    larger.points = 30;
    larger.underline = -1;
    EXPECT_EQ(&measurer_.face_metrics(larger), &plain);
}

TEST_F(QtTextMeasurerTest, AnUnknownFaceStillMeasures) {
    FontSpec font;
    font.face = "No Such Face";
    EXPECT_GT(measurer_.face_metrics(font).advance['0'], 0.3F);
}

}  // namespace
