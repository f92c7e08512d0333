// What a page of a document shows, read back from its content.

#include "pdf/page.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <sstream>
#include <tuple>

#include <gmock/gmock.h>

#include "pdf/document.h"
#include "pdf_fixture.h"

namespace veldra::pdf_test {
namespace {

constexpr double exact = 0.02;  // mm, what plots must keep to
constexpr double pixel = 25.4 / 300;

void expect_at(const Point& p, double x, double y, double tolerance = rounding) {
    EXPECT_NEAR(p.x, x, tolerance);
    EXPECT_NEAR(p.y, y, tolerance);
}

using PdfPages = PdfFile;

TEST_F(PdfPages, MillimetresStartAtTheCornerOfThePrintableArea) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.scale_millimetres();
        p.Line(10, 20, 30.5F, 45.25F);
    });
    ASSERT_EQ(page.paths.size(), 1U);
    const Path& path = page.paths[0];
    expect_at(path.pieces.at(0).from, 15, 25);
    expect_at(path.pieces.at(0).to, 35.5, 50.25);
    EXPECT_EQ(path.painted, "S");
    EXPECT_NEAR(path.pen.width, pixel, rounding);
    EXPECT_EQ(path.pen.cap, 1);
    EXPECT_EQ(path.pen.join, 1);
    EXPECT_TRUE(path.pen.dash.empty());
    EXPECT_EQ(path.pen.colour, "0 ");
    ASSERT_TRUE(page.clip);
    expect_at((*page.clip)[0], 5, 5);
    expect_at((*page.clip)[1], 205, 292);
}

TEST_F(PdfPages, ScaleGivesTheUserCoordinatesOfTheCorners) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.Scale(-1000, 4740, 3000, -1000);  // 20 m a millimetre
        p.Line(-1000, 4740, 3000, -1000);
        p.Line(0, 0, 20, 20);
    });
    ASSERT_EQ(page.paths.size(), 1U);
    ASSERT_EQ(page.paths[0].pieces.size(), 2U);
    expect_at(page.paths[0].pieces[0].from, 5, 5);
    expect_at(page.paths[0].pieces[0].to, 205, 292);
    expect_at(page.paths[0].pieces[1].from, 55, 242);
    expect_at(page.paths[0].pieces[1].to, 56, 241);
}

/// Paper in millimetres, upright, and pixels an inch.
struct PaperCase {
    double width;
    double height;
    double resolution;
};

class PdfScale : public PdfFile, public ::testing::WithParamInterface<PaperCase> {};

TEST_P(PdfScale, KnownPointsAreWhereTheScalePutsThem) {
    const PaperCase& paper = GetParam();
    PdfPrinter printer(asked, paper.resolution);
    printer.set_PaperSize(256);
    printer.set_Width(static_cast<float>(paper.width * 1440 / 25.4));
    printer.set_Height(static_cast<float>(paper.height * 1440 / 25.4));
    // 1 : 500, so that a millimetre of paper is half a metre of ground.
    const double inner_width = paper.width - 10;
    const double inner_height = paper.height - 10;
    write(printer, [&](PageTarget& p) {
        p.Scale(0, inner_height / 2, inner_width / 2, 0);
        EXPECT_DOUBLE_EQ(p.pixel_size(), 25.4 / paper.resolution);
        for (int i = 0; i < 100; ++i) {
            const double t = i / 100.0;
            p.DrawWidth(static_cast<std::int16_t>(1 + i % 2));  // each line a path of its own
            p.Line(static_cast<float>(inner_width / 2 * t),
                   static_cast<float>(inner_height / 2 * t),
                   static_cast<float>(inner_width / 2 * (1 - t)),
                   static_cast<float>(inner_height / 4));
        }
    });
    const ShownPage page = shown();
    EXPECT_NEAR(page.width, paper.width, 0.01);
    EXPECT_NEAR(page.height, paper.height, 0.01);
    ASSERT_EQ(page.paths.size(), 100U);
    for (int i = 0; i < 100; ++i) {
        const double t = i / 100.0;
        const Path& path = page.paths[static_cast<std::size_t>(i)];
        ASSERT_EQ(path.pieces.size(), 1U);
        expect_at(path.pieces[0].from, 5 + inner_width * t, 5 + inner_height * (1 - t), exact);
        expect_at(path.pieces[0].to, 5 + inner_width * (1 - t), 5 + inner_height / 2, exact);
        EXPECT_NEAR(path.pen.width, (1 + i % 2) * 25.4 / paper.resolution, rounding);
    }
    // Distances across the whole sheet, which rounding of the page would stretch.
    const Point a = page.paths[0].pieces[0].from;
    const Point b = page.paths[99].pieces[0].from;
    EXPECT_NEAR(std::hypot(b.x - a.x, b.y - a.y), std::hypot(inner_width, inner_height) * 0.99,
                exact);
}

std::string paper_name(const ::testing::TestParamInfo<PaperCase>& info) {
    std::ostringstream name;
    name << info.param.width << "x" << info.param.height << "at" << info.param.resolution;
    return name.str();
}

INSTANTIATE_TEST_SUITE_P(, PdfScale,
                         ::testing::Values(PaperCase{210, 297, 300}, PaperCase{210, 297, 1200},
                                           PaperCase{841, 1189, 300}, PaperCase{841, 1189, 1200},
                                           PaperCase{5000, 914, 300}, PaperCase{914, 5000, 1200}),
                         paper_name);

TEST_F(PdfPages, LinesThatGoOnBecomeOnePath) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.Line(10, 10, 20, 10);
        p.Line(20, 10, 20, 20);
        p.Line(30, 30, 40, 30);
        p.ForeColor(0x0000ff);
        p.Line(40, 30, 50, 30);
    });
    ASSERT_EQ(page.paths.size(), 2U);
    ASSERT_EQ(page.paths[0].pieces.size(), 3U);
    expect_at(page.paths[0].pieces[1].from, 25, 15);
    expect_at(page.paths[0].pieces[2].from, 35, 35);
    EXPECT_EQ(page.paths[1].pen.colour, "1 0 0 ");
}

TEST_F(PdfPages, ThePenIsToldOnlyWhenItChanges) {
    const auto count = [&](const PdfFile::Drawing& draw) { return drawn(draw).operations; };
    const std::size_t plain = count([](PageTarget& p) { p.Line(10, 10, 20, 10); });
    const std::size_t same = count([](PageTarget& p) {
        p.DrawWidth(1);
        p.DrawStyle(0);
        p.ForeColor(0xff0000);
        p.ForeColor(0);
        p.Line(10, 10, 20, 10);
    });
    EXPECT_EQ(same, plain);
}

TEST_F(PdfPages, WidthsAndColours) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.DrawWidth(12);
        p.ForeColor(0x336699);  // blue 0x33, green 0x66, red 0x99
        p.Line(10, 10, 20, 10);
        p.DrawWidth(0);
        p.ForeColor(0x808080);
        p.Line(10, 20, 20, 20);
        p.DrawWidth(32767);
        p.Line(10, 50, 20, 50);
    });
    ASSERT_EQ(page.paths.size(), 3U);
    EXPECT_NEAR(page.paths[0].pen.width, 1.016, rounding);
    EXPECT_EQ(page.paths[0].pen.colour, "0.6 0.4 0.2 ");
    EXPECT_NEAR(page.paths[1].pen.width, pixel, rounding);
    EXPECT_EQ(page.paths[1].pen.colour, "0.502 ");
    EXPECT_NEAR(page.paths[2].pen.width, 128 * pixel, rounding);
}

TEST_F(PdfPages, DottedLinesAreThreePixelsOnAndThreeOff) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.DrawStyle(2);
        p.Line(10, 10, 20, 10);
        p.Line(20, 10, 30, 10);
        p.DrawStyle(0);
        p.Line(30, 10, 40, 10);
    });
    ASSERT_EQ(page.paths.size(), 2U);
    EXPECT_EQ(page.paths[0].pen.cap, 0);
    ASSERT_EQ(page.paths[0].pen.dash.size(), 2U);
    EXPECT_NEAR(page.paths[0].pen.dash[0], 0.254, rounding);
    EXPECT_NEAR(page.paths[0].pen.dash[1], 0.254, rounding);
    EXPECT_EQ(page.paths[0].pen.phase, 0);
    EXPECT_TRUE(page.paths[1].pen.dash.empty());
    EXPECT_EQ(page.paths[1].pen.cap, 1);
    // Each line is a subpath of its own, in which the dots start anew.
    const auto pdf = document();
    auto stream = QPDFPageDocumentHelper(*pdf).getAllPages().at(0).getPageContents().at(0);
    const auto buffer = stream.getStreamData(qpdf_dl_all);
    const std::string content(reinterpret_cast<const char*>(buffer->getBuffer()),
                              buffer->getSize());
    EXPECT_THAT(content, ::testing::HasSubstr("15000 282000 m 25000 282000 l\n"
                                              "25000 282000 m 35000 282000 l\n"));
}

TEST_F(PdfPages, WhatIsFarOutsideIsCutOffAndTheDotsRunOn) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.scale_millimetres();
        p.DrawStyle(2);
        p.Line(-1000, 100, 300, 100);
        p.Line(10, 120, 20, 120);
        p.DrawStyle(0);
        p.Line(100, -1e9F, 100, 1e9F);
    });
    ASSERT_EQ(page.paths.size(), 3U);
    const Path& dotted = page.paths[0];
    expect_at(dotted.pieces[0].from, dotted.pieces[0].from.x, 105);
    EXPECT_LT(dotted.pieces[0].from.x, 5 - 64 * pixel);
    EXPECT_GT(dotted.pieces[0].from.x, -100);
    // A dot starts each 0.508 mm from the true start at -995 mm of paper.
    const double begun = dotted.pieces[0].from.x + 995;
    EXPECT_NEAR(dotted.pen.phase, std::fmod(begun, 0.508), 0.002);
    EXPECT_EQ(page.paths[1].pen.phase, 0);
    ASSERT_EQ(page.paths[1].pen.dash.size(), 2U);
    EXPECT_NEAR(page.paths[2].pieces[0].from.x, 105, rounding);
    EXPECT_LT(page.paths[2].pieces[0].from.y, 0);
    EXPECT_GT(page.paths[2].pieces[0].from.y, -100);
    EXPECT_GT(page.paths[2].pieces[0].to.y, 297);
    EXPECT_LT(page.paths[2].pieces[0].to.y, 400);
}

TEST_F(PdfPages, TheRestOfALineGoesOnWithItsDots) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.Scale(0, 574, 400, 0);  // 2 m a millimetre
        p.DrawStyle(2);
        p.LinePart(10, 20, 30, 20, {1.5, 0, no_sides});
        p.DrawStyle(0);
        p.LinePart(10, 40, 30, 40, {1.5, 0, no_sides});
    });
    ASSERT_EQ(page.paths.size(), 2U);
    expect_at(page.paths[0].pieces.at(0).from, 10, 282);
    EXPECT_NEAR(page.paths[0].pen.phase, 0.75 - 0.508, 0.001);
    EXPECT_TRUE(page.paths[1].pen.dash.empty());
    EXPECT_EQ(page.paths[1].pen.phase, 0);
    expect_at(page.paths[1].pieces.at(0).to, 20, 272);
}

/// A window without sides but those that are given.
TargetBox window_from(double xmin, double ymin = no_sides.ymin) {
    TargetBox window = no_sides;
    window.xmin = xmin;
    window.ymin = ymin;
    return window;
}

TEST_F(PdfPages, ACutLineEndsFlushWithItsWindow) {
    // 2 m a millimetre; the pen of 12 pixels is 1.016 mm wide. The line rises by 4 for 3, so it is
    // a pen's width beyond the left side of the window 1.016 / 0.6 = 1.6933 mm farther on.
    const ShownPage page = drawn([](PageTarget& p) {
        p.Scale(0, 574, 400, 0);
        p.DrawWidth(12);
        p.LinePart(10, 20, 40, 60, {100, 0, window_from(10)});
        p.Line(40, 60, 50, 60);
    });
    ASSERT_EQ(page.paths.size(), 2U);
    const Path& path = page.paths[0];
    ASSERT_EQ(path.pieces.size(), 1U);
    expect_at(path.pieces[0].from, 10 - 1.016, 282 + 1.016 / 3 * 4);
    expect_at(path.pieces[0].to, 25, 262);
    EXPECT_EQ(path.pen.cap, 1);
    EXPECT_NEAR(path.clip[0].x, 10, rounding);
    EXPECT_LT(path.clip[0].y, 0);
    EXPECT_GT(path.clip[1].x, 210);
    EXPECT_GT(path.clip[1].y, 297);
    // What comes next is clipped to the printable area only.
    expect_at(page.paths[1].clip[0], 5, 5);
    expect_at(page.paths[1].clip[1], 205, 292);
}

TEST_F(PdfPages, ACutLineGoesOnNoFartherThanItDoes) {
    // 1 m ahead of the piece is 0.5 mm: 0.3 across and 0.4 up.
    const ShownPage page = drawn([](PageTarget& p) {
        p.Scale(0, 574, 400, 0);
        p.DrawWidth(12);
        p.LinePart(10, 20, 40, 60, {1, 0, window_from(10)});
        p.LinePart(40, 60, 10, 20, {0, 1, window_from(10)});
    });
    ASSERT_EQ(page.paths.size(), 2U);
    expect_at(page.paths[0].pieces.at(0).from, 9.7, 282.4);
    expect_at(page.paths[1].pieces.at(0).from, 25, 262);
    expect_at(page.paths[1].pieces.at(0).to, 9.7, 282.4);
}

TEST_F(PdfPages, BothSidesOfAWindowCutALine) {
    // One end at the left side, the other at the lower one; the pen of a pixel is 0.08467 mm wide.
    const ShownPage page = drawn([](PageTarget& p) {
        scale_upwards(p);
        p.LinePart(20, 80, 80, 20, {50, 50, window_from(20, 20)});
    });
    ASSERT_EQ(page.paths.size(), 1U);
    const Path& path = page.paths[0];
    expect_at(path.pieces.at(0).from, 25 - pixel, 212 - pixel);
    expect_at(path.pieces.at(0).to, 85 + pixel, 272 + pixel);
    EXPECT_NEAR(path.clip[0].x, 25, rounding);
    EXPECT_NEAR(path.clip[1].y, 272, rounding);
}

TEST_F(PdfPages, DotsOfACutLineCountFromItsTrueStart) {
    // 48.3067 mm of the line lie ahead of what is written; dots start each 0.508 mm.
    const ShownPage page = drawn([](PageTarget& p) {
        p.Scale(0, 574, 400, 0);
        p.DrawStyle(2);
        p.DrawWidth(12);
        p.LinePart(10, 20, 40, 60, {100, 0, window_from(10)});
        p.Line(10, 70, 20, 70);
    });
    ASSERT_EQ(page.paths.size(), 2U);
    EXPECT_NEAR(page.paths[0].pen.phase, 50 - 1.016 / 0.6 - 95 * 0.508, 0.001);
    EXPECT_EQ(page.paths[1].pen.phase, 0);
    EXPECT_EQ(page.paths[1].pen.dash.size(), 2U);
}

TEST_F(PdfPages, MovingLeavesNoMark) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.MoveTo(50, 50);
        p.TextRotated("Ziel", 0, 9, FontSpec());
    });
    EXPECT_TRUE(page.paths.empty());
    ASSERT_EQ(page.texts.size(), 1U);
    EXPECT_NEAR(page.texts[0].base.x, 55, rounding);
}

TEST_F(PdfPages, WhatLiesOutsideOfThePrintableAreaIsNotWritten) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.scale_millimetres();
        FontSpec font;
        p.Line(-10, -10, -5, 300);
        p.Circle(300, 20, 3);
        p.Print("draussen", 250, 20, font, 0);
        p.Polygon(std::array<PagePoint, 3>{{{-20, 0}, {-10, 0}, {-10, 50}}}, 0);
        EllipseCurve curve;
        curve.x = -50;
        curve.a = 10;
        curve.b = 5;
        p.Ellipse(curve);
    });
    EXPECT_TRUE(page.paths.empty());
    EXPECT_TRUE(page.texts.empty());
}

TEST_F(PdfPages, WhatIsNoNumberIsNotDrawn) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float inf = std::numeric_limits<float>::infinity();
    const ShownPage page = drawn([](PageTarget& p) {
        FontSpec font;
        p.Line(nan, 0, 10, 10);
        p.Line(0, 0, 10, inf);
        p.Line(-inf, -inf, inf, inf);
        p.TextRotated("Ziel", 450, 9, font);
        p.Circle(nan, 10, 1);
        p.Circle(10, 10, nan);
        p.Circle(10, 10, inf);
        p.Circle(10, 10, -1);
        p.Print("Text", std::nan(""), 10, font, 0);
        p.Polygon(std::array<PagePoint, 3>{{{0, 0}, {std::nan(""), 0}, {10, 50}}}, 0);
        EllipseCurve curve;
        curve.a = std::nan("");
        p.Ellipse(curve);
        p.Scale(0, 0, 0, 0);
        p.Line(1, 1, 2, 2);
        p.Circle(1, 1, 2);
        p.Print("Text", 0, 10, font, 0);
    });
    EXPECT_TRUE(page.paths.empty());
    EXPECT_TRUE(page.texts.empty());
}

TEST_F(PdfPages, VisibleBoxIsThePrintableAreaAndWhatPensReach) {
    write([](PageTarget& p) {
        p.Scale(-1000, 4740, 3000, -1000);
        const auto box = p.visible_box();
        ASSERT_TRUE(box);
        const double reach = 64 * pixel * 20;  // half of the widest pen, 20 m a millimetre
        EXPECT_NEAR(box->xmin, -1000 - reach, 1e-6);
        EXPECT_NEAR(box->xmax, 3000 + reach, 1e-6);
        EXPECT_NEAR(box->ymin, -1000 - reach, 1e-6);
        EXPECT_NEAR(box->ymax, 4740 + reach, 1e-6);
        p.scale_millimetres();
        EXPECT_NEAR(p.visible_box()->ymax, 287 + 64 * pixel, 1e-6);
        EXPECT_NEAR(p.visible_box()->ymin, -64 * pixel, 1e-6);
    });
}

/// Points along a Bezier curve.
Point along(const Path::Piece& piece, double t) {
    const auto& [h1, h2] = *piece.handles;
    const double u = 1 - t;
    const auto mix = [&](double a, double b, double c, double d) {
        return u * u * u * a + 3 * u * u * t * b + 3 * u * t * t * c + t * t * t * d;
    };
    return {mix(piece.from.x, h1.x, h2.x, piece.to.x), mix(piece.from.y, h1.y, h2.y, piece.to.y)};
}

class PdfCircle : public PdfFile, public ::testing::WithParamInterface<double> {};

TEST_P(PdfCircle, IsRound) {
    const double radius = GetParam();
    const ShownPage page = drawn([&](PageTarget& p) {
        p.scale_millimetres();
        p.DrawWidth(2);
        p.ForeColor(0xff0000);
        p.FillColor(0x00ffff);
        p.Circle(90, 95, static_cast<float>(radius));
    });
    ASSERT_EQ(page.paths.size(), 1U);
    const Path& path = page.paths[0];
    EXPECT_EQ(path.painted, "b");
    EXPECT_EQ(path.pen.colour, "0 0 1 ");
    EXPECT_EQ(path.pen.fill, "1 1 0 ");
    EXPECT_NEAR(path.pen.width, 2 * pixel, rounding);
    double turned = 0;
    for (const Path::Piece& piece : path.pieces) {
        ASSERT_TRUE(piece.handles);
        for (int i = 0; i <= 50; ++i) {
            const Point at = along(piece, i / 50.0);
            EXPECT_NEAR(std::hypot(at.x - 95, at.y - 100), radius, 0.012);
        }
        const double from = std::atan2(piece.from.y - 100, piece.from.x - 95);
        const double to = std::atan2(piece.to.y - 100, piece.to.x - 95);
        turned += std::fmod(from - to + 4 * std::numbers::pi, 2 * std::numbers::pi);
    }
    EXPECT_NEAR(turned, 2 * std::numbers::pi, 1e-6);
}

INSTANTIATE_TEST_SUITE_P(, PdfCircle, ::testing::Values(0.3, 0.5, 0.7, 4.9, 12.0, 29.0, 80.0));

TEST_F(PdfPages, CirclesOfOneLookShareAForm) {
    write([](PageTarget& p) {
        for (int i = 0; i < 50; ++i) {
            p.Circle(10.0F + static_cast<float>(i), 10, 1 + 1e-6F * static_cast<float>(i));
        }
        p.FillStyle(1);
        p.Circle(50, 50, 1);
        p.FillColor(0xff);  // of no account for what is not filled
        p.Circle(50, 60, 1);
        p.DrawStyle(2);
        p.Circle(50, 70, 1);
    });
    const ShownPage page = shown();
    ASSERT_EQ(page.paths.size(), 53U);
    EXPECT_EQ(page.paths[0].painted, "b");
    EXPECT_EQ(page.paths[50].painted, "s");
    EXPECT_EQ(page.paths[51].painted, "s");
    ASSERT_EQ(page.paths[52].pen.dash.size(), 2U);
    expect_at(page.paths[49].pieces[0].from, 5 + 10 + 49 + 1, 15);
    const auto pdf = document();
    auto resources =
        QPDFPageDocumentHelper(*pdf).getAllPages().at(0).getAttribute("/Resources", false);
    EXPECT_EQ(resources.getKey("/XObject").getKeys().size(), 3U);
}

TEST_F(PdfPages, ACircleWithoutRadiusIsADot) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.DrawWidth(6);
        p.Circle(50, 50, 0);
    });
    ASSERT_EQ(page.paths.size(), 1U);
    EXPECT_EQ(page.paths[0].painted, "S");
    expect_at(page.paths[0].pieces.at(0).from, 55, 55);
    expect_at(page.paths[0].pieces.at(0).to, 55, 55);
    EXPECT_EQ(page.paths[0].pen.cap, 1);
}

EllipseCurve ellipse(double x, double y, double a, double b, double azimuth) {
    EllipseCurve curve;
    curve.x = 4500000 + x;
    curve.y = 5500000 + y;
    curve.origin_x = 4500000;
    curve.origin_y = 5500000;
    curve.a = a;
    curve.b = b;
    curve.sine = std::sin(azimuth);
    curve.cosine = std::cos(azimuth);
    return curve;
}

double distance_to_segment(const Point& p, const Point& a, const Point& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double length = dx * dx + dy * dy;
    const double t =
        length > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / length, 0.0, 1.0) : 0;
    return std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

class PdfEllipse : public PdfFile,
                   public ::testing::WithParamInterface<std::tuple<double, double, double>> {
 protected:
    /// The segments that trace the curve, on upright A4 with scale_upwards, mm of paper.
    static std::vector<std::array<Point, 2>> traced(const EllipseCurve& curve) {
        std::vector<std::array<Point, 2>> segments;
        trace_ellipse(curve, [&](double x1, double y1, double x2, double y2) {
            segments.push_back({Point{5 + x1 - curve.origin_x, 292 - (y1 - curve.origin_y)},
                                Point{5 + x2 - curve.origin_x, 292 - (y2 - curve.origin_y)}});
        });
        return segments;
    }
};

TEST_P(PdfEllipse, KeepsToTheTracedCurve) {
    const auto [a, b, azimuth] = GetParam();
    const EllipseCurve curve = ellipse(100, 140, a, b, azimuth);
    const ShownPage page = drawn([&](PageTarget& p) {
        scale_upwards(p);
        p.Ellipse(curve);
    });
    const auto segments = traced(curve);
    std::vector<Point> written;
    for (const Path& path : page.paths) {
        for (const Path::Piece& piece : path.pieces) {
            for (int i = 0; i <= 100; ++i) {
                const double t = i / 100.0;
                written.push_back(piece.handles
                                      ? along(piece, t)
                                      : Point{piece.from.x + t * (piece.to.x - piece.from.x),
                                              piece.from.y + t * (piece.to.y - piece.from.y)});
            }
        }
    }
    ASSERT_FALSE(written.empty());
    double worst = 0;
    for (const Point& p : written) {
        double nearest = 1e9;
        for (const auto& [from, to] : segments) {
            nearest = std::min(nearest, distance_to_segment(p, from, to));
        }
        worst = std::max(worst, nearest);
    }
    EXPECT_LT(worst, exact);
    // And no part of the curve is missing.
    for (const auto& [from, to] : segments) {
        double nearest = 1e9;
        for (const Point& p : written) {
            nearest = std::min(nearest, std::hypot(p.x - from.x, p.y - from.y));
        }
        EXPECT_LT(nearest, 0.05 * std::max(a, 1.0));
    }
}

INSTANTIATE_TEST_SUITE_P(, PdfEllipse,
                         ::testing::Values(std::tuple(0.4, 0.1, 0.3), std::tuple(0.5, 0.5, 0.0),
                                           std::tuple(3.0, 1.0, 1.0), std::tuple(4.9, 4.8, 2.0),
                                           std::tuple(12.0, 0.02, 2.5), std::tuple(19.9, 10.0, 0.7),
                                           std::tuple(45.0, 30.0, 2.9), std::tuple(5.0, 0.0, 0.5),
                                           std::tuple(150.0, 60.0, 0.4)));

TEST_F(PdfPages, EllipsesInsideOfThePageAreCurves) {
    const ShownPage page = drawn([](PageTarget& p) {
        scale_upwards(p);
        p.Ellipse(ellipse(100, 140, 4, 2, 0.5));
    });
    ASSERT_EQ(page.paths.size(), 1U);
    EXPECT_EQ(page.paths[0].painted, "s");
    EXPECT_LE(page.paths[0].pieces.size(), 4U);
}

TEST_F(PdfPages, EllipsesAcrossTheEdgeOfThePageAreCurves) {
    const ShownPage page = drawn([](PageTarget& p) {
        scale_upwards(p);
        p.Ellipse(ellipse(199, 140, 4, 2, 0.5));
    });
    ASSERT_EQ(page.paths.size(), 1U);
    EXPECT_LE(page.paths[0].pieces.size(), 4U);
}

TEST_F(PdfPages, LargeEllipsesAreOneLineAround) {
    const ShownPage page = drawn([](PageTarget& p) {
        scale_upwards(p);
        p.Ellipse(ellipse(100, 140, 45, 30, 0.5));
    });
    std::size_t pieces = 0;
    for (const Path& path : page.paths) {
        pieces += path.pieces.size();
    }
    EXPECT_EQ(page.paths.size(), 2U);  // paths of at most 64 pieces
    EXPECT_EQ(pieces, 100U);
}

TEST_F(PdfPages, CutEllipsesAreCurvesUnderTheirWindow) {
    // Around 101 mm with a half-axis of 4 mm to the east, cut at 100 mm.
    const ShownPage page = drawn([](PageTarget& p) {
        scale_upwards(p);
        EXPECT_TRUE(p.EllipsePart(ellipse(101, 140, 2, 4, 0), window_from(100)));
        p.Ellipse(ellipse(101, 140, 2, 4, 0));
    });
    ASSERT_EQ(page.paths.size(), 2U);
    const Path& path = page.paths[0];
    EXPECT_EQ(path.painted, "s");
    EXPECT_NEAR(path.clip[0].x, 105, rounding);
    EXPECT_GT(path.clip[1].x, 210);
    expect_at(page.paths[1].clip[0], 5, 5);
    ASSERT_LE(path.pieces.size(), 4U);
    ASSERT_EQ(path.pieces.size(), page.paths[1].pieces.size());
    double left = 210;
    for (const Path::Piece& piece : path.pieces) {
        for (int i = 0; i <= 20; ++i) {
            const Point at = along(piece, i / 20.0);
            const double across = (at.x - 106) / 4;
            const double up = (at.y - 152) / 2;
            EXPECT_NEAR(std::hypot(across, up), 1, 0.002);
            left = std::min(left, at.x);
        }
    }
    EXPECT_NEAR(left, 102, 0.02);
}

TEST_F(PdfPages, OfALargeCutEllipseOnlyWhatShowsIsWritten) {
    // A circle of 50 mm, cut through its middle, and at a quarter.
    const ShownPage page = drawn([](PageTarget& p) {
        scale_upwards(p);
        p.EllipsePart(ellipse(100, 140, 50, 50, 0), window_from(100));
        p.DrawWidth(2);
        p.EllipsePart(ellipse(100, 140, 50, 50, 0), window_from(100, 140));
    });
    std::size_t half = 0;
    std::size_t quarter = 0;
    for (const Path& path : page.paths) {
        (path.pen.width < 1.5 * pixel ? half : quarter) += path.pieces.size();
        EXPECT_NEAR(path.clip[0].x, 105, rounding);
        for (const Path::Piece& piece : path.pieces) {
            EXPECT_NEAR(std::hypot(piece.from.x - 105, piece.from.y - 152), 50, 0.001);
            EXPECT_NEAR(std::hypot(piece.to.x - 105, piece.to.y - 152), 50, 0.001);
        }
    }
    // Beside the 50 and 25 pieces inside one more at each cut.
    EXPECT_EQ(half, 52U);
    EXPECT_EQ(quarter, 27U);
}

TEST_F(PdfPages, PolygonsAreFilled) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.Polygon(std::array<PagePoint, 4>{{{10, 10}, {50, 20}, {50, 22}, {10, 12}}}, 0x00ff00);
        p.Polygon(std::array<PagePoint, 2>{{{10, 10}, {50, 20}}}, 0);
    });
    ASSERT_EQ(page.paths.size(), 1U);
    EXPECT_EQ(page.paths[0].painted, "f");
    EXPECT_EQ(page.paths[0].pen.fill, "0 1 0 ");
    ASSERT_EQ(page.paths[0].pieces.size(), 4U);
    expect_at(page.paths[0].pieces[0].from, 15, 15);
    expect_at(page.paths[0].pieces[1].from, 55, 25);
    expect_at(page.paths[0].pieces[2].from, 55, 27);
    expect_at(page.paths[0].pieces[3].from, 15, 17);
}

TEST_F(PdfPages, LayersAreClosedAsOftenAsOpened) {
    write([](PageTarget& page) {
        for (const PageLayer layer : {PageLayer::frame, PageLayer::values, PageLayer::labels}) {
            page.begin_layer(layer);
            page.Line(10, 10, 20, 20);
            page.begin_layer(layer);
            page.Circle(30, 30, 2);
        }
        page.begin_layer(PageLayer::signatures);  // nothing is drawn in it
    });
    const auto pdf = document();
    std::string content;
    auto pages = QPDFPageDocumentHelper(*pdf).getAllPages();
    for (QPDFObjectHandle piece : pages.at(0).getPageContents()) {
        const auto data = piece.getStreamData();
        content.append(reinterpret_cast<const char*>(data->getBuffer()), data->getSize());
    }
    int depth = 0;
    int opened = 0;
    for (std::size_t at = 0; at + 3 <= content.size(); ++at) {
        const std::string_view word(content.data() + at, 3);
        opened += word == "BDC" ? 1 : 0;
        depth += word == "BDC" ? 1 : word == "EMC" ? -1 : 0;
        ASSERT_TRUE(depth == 0 || depth == 1) << "layers do not lie in each other";
    }
    EXPECT_EQ(opened, 3);
    EXPECT_EQ(depth, 0);
}

TEST_F(PdfPages, LayersHoldWhatIsDrawnInThem) {
    const ShownPage page = drawn([](PageTarget& p) {
        FontSpec font;
        p.Line(10, 5, 20, 5);
        p.begin_layer(PageLayer::frame);
        p.Line(10, 10, 20, 10);
        p.begin_layer(PageLayer::districts);
        p.begin_layer(PageLayer::observations);
        p.Line(10, 20, 20, 20);
        p.begin_layer(PageLayer::signatures);
        p.Circle(10, 30, 1);
        p.begin_layer(PageLayer::values);
        p.Ellipse(ellipse(100, 140, 4, 2, 0.5));
        p.begin_layer(PageLayer::boundaries);
        p.Polygon(std::array<PagePoint, 3>{{{10, 10}, {50, 20}, {50, 22}}}, 0);
        p.begin_layer(PageLayer::labels);
        p.Print("7", 10, 50, font, 0);
        p.begin_layer(PageLayer::observations);
        p.Line(10, 60, 20, 60);
    });
    std::vector<std::string> layers;
    for (const Path& path : page.paths) {
        layers.push_back(path.layer);
    }
    EXPECT_THAT(layers, ::testing::ElementsAre("", "Rahmen", "Beobachtungen", "Signaturen", "Werte",
                                               "Grenzen", "Beobachtungen"));
    ASSERT_EQ(page.texts.size(), 1U);
    EXPECT_EQ(page.texts[0].layer, "Beschriftung");
}

TEST_F(PdfPages, PagesLargerThanPointsCountTo) {
    // Such papers are beyond what the printer takes; documents can do it.
    EXPECT_EQ(page_unit({5000, 900}), 1.0);
    EXPECT_EQ(page_unit({900, 6000}), 2.0);
    PdfDocument document(std::make_shared<FontBook>(), {"Rolle"});
    CircleForms circles;
    PdfPage page(document, circles, {{900, 6000}, 5, 5, pixel}, {"N", "B"});
    page.Line(0, 0, 890, 5990);
    page.finish();
    write_document(document, file);
    const ShownPage back = shown();
    EXPECT_NEAR(back.height, 6000, 0.01);
    expect_at(back.paths.at(0).pieces.at(0).from, 5, 5, exact);
    expect_at(back.paths.at(0).pieces.at(0).to, 895, 5995, exact);
}

}  // namespace
}  // namespace veldra::pdf_test
