// The index of what is in view may only leave out what nobody sees: pixel by pixel, the pictures of
// all samples are those of a target that does not say what it shows.

#include <algorithm>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "commands/lifecycle.h"
#include "graphikdatei/observation_pass.h"
#include "graphikdatei/value_pass.h"
#include "plot/preview.h"
#include "plot/printer_adapters.h"
#include "qt_application.h"
#include "recording_interface.h"
#include "text/length_units.h"
#include "view/viewport.h"
#include "windows/qt/picture_image.h"
#include "windows/qt/qt_text_measurer.h"

using namespace veldra;

namespace {

constexpr QSize picture_size(400, 300);

/// Hands everything on, but asks for all rows of the tables.
class AllRows final : public DrawingTarget {
 public:
    explicit AllRows(DrawingTarget& picture) : picture_(picture) {}

    void DrawStyle(std::int16_t style) override { picture_.DrawStyle(style); }
    void DrawWidth(std::int16_t width) override { picture_.DrawWidth(width); }
    void ForeColor(std::int32_t colour) override { picture_.ForeColor(colour); }
    void FillStyle(std::int16_t style) override { picture_.FillStyle(style); }
    void FillColor(std::int32_t colour) override { picture_.FillColor(colour); }
    void Line(float x1, float y1, float x2, float y2) override { picture_.Line(x1, y1, x2, y2); }
    void Circle(float x, float y, float radius) override { picture_.Circle(x, y, radius); }
    void Ellipse(const EllipseCurve& curve) override { picture_.Ellipse(curve); }
    void TextRotated(std::string_view text, std::int32_t escapement, std::int32_t align,
                     const FontSpec& font) override {
        picture_.TextRotated(text, escapement, align, font);
    }
    void LabelPlaced(LabelArray array, std::int32_t index, const Label& label, const FontSpec& font,
                     std::int32_t colour) override {
        picture_.LabelPlaced(array, index, label, font, colour);
    }

 private:
    DrawingTarget& picture_;
};

struct Sample {
    const char* file;
    const char* boundaries;  ///< "": none
    bool zones;              ///< the boundaries are in ETRS 89, as the file is
    int parts;
};

constexpr Sample samples[] = {{"ve_dhdn.dat", "verwgrenz_dhdn.dat", false, 6},
                              {"ve_etrs89.dat", "verwgrenz_etrs89.dat", true, 2},
                              {"ve_lokal.dat", "", false, 2},
                              {"ve_ohne_netzteil.dat", "verwgrenz_dhdn.dat", false, 0}};

/// Where the edges of a view lie in the extents: 0 is their left or lower edge, 1 the other one.
struct Share {
    const char* name;
    double left;
    double bottom;
    double right;
    double top;
};

constexpr Share views[] = {{"whole", -0.05, -0.05, 1.05, 1.05},
                           {"a part", 0.2, 0.3, 0.6, 0.7},
                           {"deep", 0.5, 0.5, 0.503, 0.503},
                           {"across the left and lower edge", -0.3, -0.4, 0.1, 0.05},
                           {"across the upper edge", 0.4, 0.95, 0.5, 1.05},
                           {"from far away", -8, -8, 9, 9}};

class SamplePictures : public veldra_test::QtTest, public testing::WithParamInterface<Sample> {
 protected:
    void open_part(std::int32_t part) {
        const std::string folder = std::string(SAMPLES_DIR) + "/";
        session_ = Session();
        session_.picture = {picture_size.width() * twips_per_pixel,
                            picture_size.height() * twips_per_pixel};
        session_.settings.verw_datei =
            *GetParam().boundaries == '\0' ? std::string() : folder + GetParam().boundaries;
        if (GetParam().zones) {
            session_.settings.verw_elli = 4;
            session_.settings.verw_abbi = 2;
            session_.settings.verw_datum[1] = DatumRow{};
        }
        datei_setzen(session_, folder + GetParam().file);
        datei_lesen(session_, desk_);
        ASSERT_EQ(session_.netz.count(), GetParam().parts);
        if (part > 1) {
            session_.netz_aktuell = part;
            load_plot_settings(session_);
            netzteil_lesen(session_, desk_);
        }
    }

    /// Another selection, each number another mixture of what the layers can draw.
    void choose(int number) {
        ObjectSelection& obj = session_.obj;
        obj.obj_puwe = static_cast<std::int16_t>(number);
        obj.obj_beob = static_cast<std::int16_t>(number % 4);
        obj.obj_pusi = static_cast<std::int16_t>(number % 3 == 0 ? 0 : 1);
        obj.obj_pube = static_cast<std::int16_t>(number % 5 == 4 ? 0 : 1);
        obj.obj_epbe = number % 2 == 1 ? table_true : table_false;
        obj.obj_test = static_cast<std::int16_t>(1 + number % 3);
        obj.obj_test_beob = number % 2 == 1 ? table_true : table_false;
        obj.obj_test_restkl = number > 3 ? table_true : table_false;
        obj.obj_nube = static_cast<std::int16_t>(number % 6);
        obj.obj_nbez = 1;
        derive_value_modes(obj);
        beob_lesen(session_);
        wert_lesen(session_);
        ComputeExtents(session_, desk_);
    }

    void look_at(const Share& share) {
        const Extents& e = session_.extents;
        const double width = e.gesamt_rw_max - e.gesamt_rw_min;
        const double height = e.gesamt_hw_max - e.gesamt_hw_min;
        FitView(session_, e.gesamt_rw_min + share.left * width,
                e.gesamt_hw_min + share.bottom * height, e.gesamt_rw_min + share.right * width,
                e.gesamt_hw_min + share.top * height, 0);
    }

    /// The picture with its labels.
    template <typename Through>
    QImage picture(Through through) {
        QImage image = empty_picture(picture_size, 1.0);
        {
            RasterTarget raster(image, session_mapping(session_, image, 1.0));
            through(raster);
        }
        draw_labels(session_, painter_, image, 1.0);
        return image;
    }

    void compare(const Share& share) {
        look_at(share);
        const QImage by_index =
            picture([this](DrawingTarget& raster) { draw_picture(session_, raster, desk_); });
        labels_by_index_ = session_.lbl_pubez_placed.size();
        const QImage of_all_rows = picture([this](DrawingTarget& raster) {
            AllRows all(raster);
            draw_picture(session_, all, desk_);
        });
        ASSERT_GE(session_.lbl_pubez_placed.size(),
                  static_cast<std::size_t>(session_.pu.pu_anzahl_signatur));
        EXPECT_TRUE(by_index == of_all_rows)
            << GetParam().file << " part " << session_.netz_aktuell << ", values "
            << session_.obj.obj_puwe << ", " << share.name << ", mode " << session_.plotmodus;
        EXPECT_TRUE(ui_.texts.empty()) << ui_.texts.front();
    }

    /// Paints labels over the layers, after `change`, and takes them away again.
    void expect_layers_given_back(
        const Share& share, const std::function<void()>& change = [] {}) {
        QImage image = empty_picture(picture_size, 1.0);
        draw_layers(session_, measurer_, ui_, image, 1.0);
        const QImage layers = image.copy();
        change();
        CoveredTiles beneath;
        draw_labels(session_, painter_, image, 1.0, &beneath);
        painted_over_ = painted_over_ || image != layers;
        beneath.give_back(canvas_of(image));
        EXPECT_TRUE(image == layers) << GetParam().file << ", " << share.name;
    }

    void compare_all_views() {
        for (const Share& share : views) {
            compare(share);
        }
    }

    Session session_;
    QtTextMeasurer measurer_;
    test::RecordingInterface ui_;
    LabelPainter painter_{measurer_};
    Desk desk_{measurer_, ui_, [] {}};
    std::size_t labels_by_index_ = 0;
    bool painted_over_ = false;
};

TEST_P(SamplePictures, AreTheSameWithAndWithoutTheIndex) {
    for (std::int32_t part = 1; part <= std::max(GetParam().parts, 1); ++part) {
        open_part(part);
        compare_all_views();
        for (int number = 0; number <= 8; ++number) {
            choose(number);
            compare_all_views();
        }
    }
}

TEST_P(SamplePictures, AreTheSameInThePlotMode) {
    for (std::int32_t part = 1; part <= std::max(GetParam().parts, 1); ++part) {
        open_part(part);
        session_.plotmodus = 1;
        compare_all_views();
    }
}

TEST_P(SamplePictures, LeaveOutWhatIsNotInView) {
    open_part(1);
    compare(views[2]);
    EXPECT_LT(labels_by_index_, static_cast<std::size_t>(session_.pu.count()) / 4);
}

TEST_P(SamplePictures, KeepALabelThatWasMovedIntoTheViewFromFarOutside) {
    open_part(1);
    compare(views[1]);
    // Each label in turn is put into the middle of the view, wherever its point lies.
    std::size_t moved = 0;
    for (std::int32_t i = 1; i <= session_.pu.pu_anzahl_signatur; i += 7) {
        ++moved;
        PointRow& row = session_.pu[i];
        const auto height = static_cast<double>(session_.lbl_pubez[1].height);
        const Viewport& view = session_.view;
        row.pu_bez_rechts =
            ((view.ansicht_rw_min + view.ansicht_rw_max) / 2 - row.pu_rechts) / height * 100;
        row.pu_bez_hoch =
            ((view.ansicht_hw_min + view.ansicht_hw_max) / 2 - row.pu_hoch) / height * 100;
        session_.view_index.label_moved(i);
    }
    compare(views[1]);
    EXPECT_GE(labels_by_index_, moved);
}

TEST_P(SamplePictures, AreGivenBackWholeFromBeneathTheirLabels) {
    open_part(1);
    for (const std::int16_t plot_mode : {std::int16_t{0}, std::int16_t{1}}) {
        session_.plotmodus = plot_mode;
        for (const Share& share : views) {
            look_at(share);
            expect_layers_given_back(share);
        }
    }
    EXPECT_TRUE(painted_over_);
}

TEST_P(SamplePictures, AreGivenBackFromBeneathTextsThatAreLargerThanTheirBoxes) {
    open_part(1);
    for (const Share& share : views) {
        look_at(share);
        expect_layers_given_back(share, [this] {
            session_.lbl_pubez_font.points = 40;
            session_.lbl_pubez_font.italic = 1;
            session_.lbl_pubez_font.underline = 1;
        });
    }
    EXPECT_TRUE(painted_over_);
}

INSTANTIATE_TEST_SUITE_P(AllSamples, SamplePictures, testing::ValuesIn(samples),
                         [](const auto& tested) {
                             const std::string file = tested.param.file;
                             return file.substr(0, file.find('.'));
                         });

}  // namespace
