#include "windows/qt/picture_image.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qt_application.h"
#include "recording_interface.h"
#include "view/viewport.h"
#include "windows/qt/qt_text_measurer.h"

using namespace veldra;

namespace {

/// Two points 100 m apart on a picture of 600 x 400 logical pixels.
class PictureImageTest : public veldra_test::QtTest {
 protected:
    PictureImageTest() {
        add_point(3500000, 5600000, 1, "101");
        add_point(3500100, 5600000, -1, "102");
        session_.pu.close_signature_rows();
        session_.lin.lin_suchen({3500000, 5600000, 3500100, 5600000});
        session_.lin[1].lin_typ_hin = 11;
        session_.lin[1].lin_typ_rueck = 11;
        ++session_.tables_revision;
        session_.lbl_pubez.resize(3);
        session_.picture = {600 * 15.0, 400 * 15.0};
        FitView(session_, 3499950, 5599950, 3500150, 5600050, 0);
    }

    void add_point(double rechts, double hoch, std::int16_t signatur, const char* name) {
        PointRow& row = session_.pu[session_.pu.punkt_neu(rechts, hoch)];
        row.pu_signatur = signatur;
        row.pu_bez = name;
    }

    QImage picture(double ratio = 1.0) {
        return render_picture(session_, measurer_, ui_,
                              QSize(static_cast<int>(600 * ratio), static_cast<int>(400 * ratio)),
                              ratio);
    }

    Session session_;
    QtTextMeasurer measurer_;
    test::RecordingInterface ui_;
};

TEST_F(PictureImageTest, PointsLinesAndLabelsStandWhereTheyBelong) {
    const QImage image = picture();
    // 200 m fill the width: 3 pixels a metre, points at 150 and 450, half way up.
    EXPECT_EQ(image.pixel(150, 200), qRgb(0, 127, 255));
    EXPECT_EQ(image.pixel(450, 200), qRgb(255, 0, 63));
    EXPECT_EQ(image.pixel(300, 200), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(300, 100), picture_background);
    int ink = 0;
    for (int y = 200; y < 220; ++y) {
        for (int x = 155; x < 190; ++x) {
            ink += image.pixel(x, y) != picture_background ? 1 : 0;
        }
    }
    EXPECT_GT(ink, 40);
    EXPECT_THAT(ui_.texts, testing::IsEmpty());
}

TEST_F(PictureImageTest, FractionalScalingKeepsPlaces) {
    for (const double ratio : {1.25, 1.5, 2.0}) {
        const QImage image = picture(ratio);
        EXPECT_EQ(image.pixel(static_cast<int>(450 * ratio), static_cast<int>(200 * ratio)),
                  qRgb(255, 0, 63))
            << ratio;
    }
}

TEST_F(PictureImageTest, TheSamePictureGivesTheSameBytes) {
    const QByteArray first = png_bytes(picture());
    EXPECT_TRUE(first.startsWith("\x89PNG"));
    EXPECT_FALSE(first.contains("tIME"));
    EXPECT_EQ(first, png_bytes(picture()));
    EXPECT_EQ(QImage::fromData(first), picture());
}

TEST_F(PictureImageTest, SvgHoldsShapesAndLabels) {
    const QByteArray svg = svg_bytes(session_, measurer_, ui_, QSize(600, 400));
    EXPECT_TRUE(svg.contains("viewBox=\"0 0 600 400\""));
    EXPECT_TRUE(svg.contains(">101</text>"));
    EXPECT_TRUE(svg.contains(">102</text>"));
    EXPECT_EQ(svg.count("<circle"), 2);
    EXPECT_EQ(svg, svg_bytes(session_, measurer_, ui_, QSize(600, 400)));
}

TEST_F(PictureImageTest, MemoryIsUsedAgainWhileNobodyElseHoldsThePicture) {
    const QSize size(40, 30);
    QImage image = empty_picture(size, 1.0);
    image.setPixel(3, 4, qRgb(1, 2, 3));
    const uchar* const memory = image.constBits();
    clear_picture(image, size, 1.0);
    EXPECT_EQ(image.constBits(), memory);
    EXPECT_EQ(image, empty_picture(size, 1.0));
    image.setPixel(3, 4, qRgb(1, 2, 3));
    const QImage held = image;
    clear_picture(image, size, 1.0);
    EXPECT_EQ(held.pixel(3, 4), qRgb(1, 2, 3));
    EXPECT_EQ(image, empty_picture(size, 1.0));
    clear_picture(image, QSize(50, 30), 2.0);
    EXPECT_EQ(image, empty_picture(QSize(50, 30), 2.0));
}

TEST_F(PictureImageTest, CopiesHaveMemoryOfTheirOwn) {
    const QImage from = picture(2.0);
    QImage copy;
    for (int i = 0; i < 2; ++i) {
        copy_picture(from, copy);
        EXPECT_EQ(copy, from);
        EXPECT_EQ(copy.dotsPerMeterX(), from.dotsPerMeterX());
        EXPECT_NE(copy.constBits(), from.constBits());
        copy.setPixel(3, 4, qRgb(1, 2, 3));
        copy.setDevicePixelRatio(2);
        EXPECT_EQ(from.pixel(3, 4), picture_background);
    }
    copy_picture(from, copy);
    EXPECT_EQ(copy.devicePixelRatio(), from.devicePixelRatio());
    const QImage held = copy;
    copy_picture(empty_picture(from.size(), 1.0), copy);
    EXPECT_EQ(held, from);
}

TEST_F(PictureImageTest, NothingToDrawIsSaidAndLeavesTheBackground) {
    session_.pu.clear();
    session_.lin.clear();
    ++session_.tables_revision;
    const QImage image = picture();
    EXPECT_THAT(ui_.texts, testing::ElementsAre("Datei enthält keine darzustellenden Objekte"));
    EXPECT_EQ(image.pixel(150, 200), picture_background);
}

}  // namespace
