#include "plot/preview.h"

#include <algorithm>

#include <fmt/format.h>

#include "drawing/describe.h"
#include "drawing/layer_fixture.h"
#include "drawing/pipeline.h"
#include "plot/sheet_outlines.h"
#include "recording_interface.h"
#include "scripted_printer.h"

namespace veldra {
namespace {

using test::add_point;
using test::described;
using test::end_points;
using test::Lines;
using test::RecordingInterface;
using test::ScriptedPrinter;

/// A view of 150 by 90 m with its corner at (1000, 2000), 1 cm of ground a twip, at the plot scale
/// 1:1000: a millimetre of paper is a metre of ground. Without a printer an upright sheet with its
/// binding margin on the left has 196.7 - 15 - 0.5 = 181.2 by 285.2 - 0.5 - 12 = 272.7 mm. The zero
/// point is the corner of the view.
class PreviewTest : public test::LayerFixture {
 protected:
    PreviewTest() {
        session.plotmodus = 1;
        session.plot.plot_ausrichtung = 1;
        session.plot.plot_heftrand = 2;
        session.plot.plot_legendenlage = 1;
        session.plot.plot_null_rechts = 1000;
        session.plot.plot_null_hoch = 2000;
        session.plot.plot_blatt_auto = table_true;
        session.titel[0].setTitelText("Netz");
    }

    /// A point with a signature of class 0 and no label of its own.
    void add_signature(double rechts, double hoch) {
        add_point(session, rechts, hoch).pu_signatur = 1;
    }
    [[nodiscard]] Desk desk(Printer* printer = nullptr) {
        return {measurer, ui, [] {}, printer};
    }
    Lines draw(Printer* printer = nullptr) {
        end_points(session);
        target = {};
        draw_picture(session, target, desk(printer));
        return described(target);
    }
    template <typename Kind>
    [[nodiscard]] std::vector<Kind> drawn() const {
        std::vector<Kind> found;
        for (const Operation& op : target.operations()) {
            if (const auto* kind = std::get_if<Kind>(&op)) {
                found.push_back(*kind);
            }
        }
        return found;
    }
    /// Lines of the sheet frames.
    std::vector<std::string> frames() {
        RecordingTarget recording;
        draw_sheet_frames(session, recording);
        std::vector<std::string> lines;
        for (const Operation& op : recording.operations()) {
            if (const auto* line = std::get_if<operation::Line>(&op)) {
                lines.push_back(fmt::format("{:.1f} {:.1f} {:.1f} {:.1f}", line->x1, line->y1,
                                            line->x2, line->y2));
            }
        }
        return lines;
    }
    [[nodiscard]] static bool holds(const std::vector<std::string>& lines, const char* line) {
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
    [[nodiscard]] bool enabled(MenuItem item) const { return session.window[item].enabled; }
    [[nodiscard]] bool enabled(ToolButton button) const { return session.window[button].enabled; }

    RecordingInterface ui;
};

// Sizes

TEST_F(PreviewTest, SignatureOfTwoMillimetresIsACircleOfTwoMetres) {
    session.settings.punsigplo[0] = 2;
    add_signature(1010, 2010);
    draw();
    ASSERT_EQ(drawn<operation::Circle>().size(), 1U);
    EXPECT_EQ(drawn<operation::Circle>()[0], (operation::Circle{10, 10, 2}));
}

TEST_F(PreviewTest, EverySizeIsThatOfThePlot) {
    Settings& settings = session.settings;
    settings.punsigplo = {1, 2, 3, 4};
    settings.Stquerplo = 5;
    settings.Stkreuplo = 6;
    settings.lenoriplo = 7;
    settings.punkt_klein_plot = 0.5;
    session.plot.plot_massstab = 0.0005;  // a millimetre is 2 m
    const LayerFrame frame = preview_frame(session, {}, measurer);
    EXPECT_EQ(frame.punsig, (std::array<float, 4>{2, 4, 6, 8}));
    EXPECT_DOUBLE_EQ(frame.stquer, 10);
    EXPECT_DOUBLE_EQ(frame.stkreu, 12);
    EXPECT_DOUBLE_EQ(frame.lenori, 14);
    EXPECT_FLOAT_EQ(frame.punkt_klein, 1);
    EXPECT_EQ(frame.origin_rechts, 1000);
    EXPECT_EQ(frame.origin_hoch, 2000);
    EXPECT_FALSE(frame.window.has_value());
    EXPECT_EQ(frame.width_factor, 1);
}

TEST_F(PreviewTest, DigitsOfTwoAndAHalfMillimetresHaveLinesOfFourPointTwoMetres) {
    session.settings.pubsizplo = 2.5F;
    session.settings.nubsizplo = 5;
    const LayerFrame frame = preview_frame(session, {}, measurer);
    const auto height = [&](const FontSpec& font) {
        return label_size(frame, measurer.face_metrics(font), font, "1234").height;
    };
    EXPECT_NEAR(height(frame.point_font), 2.5 * 1.68, 1e-5);
    EXPECT_NEAR(height(frame.remote_font), 2.5 * 1.68, 1e-5);
    EXPECT_NEAR(height(frame.district_font), 5 * 1.68, 1e-5);
}

TEST_F(PreviewTest, FittedFontsHaveTheirSizeOnPaper) {
    // 10 points are 200 twips, 25.4 * 200 / 1440 = 3.527778 mm.
    const LayerFrame frame = preview_frame(session, {10, 20}, measurer);
    const auto height = [&](const FontSpec& font) {
        return label_size(frame, measurer.face_metrics(font), font, "1").height;
    };
    EXPECT_NEAR(height(frame.point_font), 3.527778, 1e-5);
    EXPECT_NEAR(height(frame.district_font), 7.055556, 1e-5);
}

TEST_F(PreviewTest, LeavingThePlotModeBringsTheSizesOfTheScreenBack) {
    session.settings.punsigplo[0] = 2;
    session.obj.obj_pube = 1;
    add_signature(1010, 2010);
    session.pu[1].pu_bez = "A";
    session.plotmodus = 0;
    const Lines before = draw();
    session.plotmodus = 1;
    EXPECT_NE(draw(), before);
    session.plotmodus = 0;
    EXPECT_EQ(draw(), before);
    EXPECT_EQ(session.lbl_pubez_font.points, session.settings.pubgrascr);
    EXPECT_FALSE(session.window.lbl_legende_visible);
    EXPECT_TRUE(frames().empty());
}

// Sheets

TEST_F(PreviewTest, CountsFollowFromTheExtentsWhileTheyAreAutomatic) {
    add_signature(1010, 2010);
    add_signature(1200, 2020);  // 200 + 2 + 0.01 m right of the zero point: two sheets
    session.plot.plot_blatt_rechts = 7;
    session.plot.plot_blatt_hoch = 7;
    draw();
    EXPECT_EQ(session.plot.plot_blatt_rechts, 2);
    EXPECT_EQ(session.plot.plot_blatt_hoch, 1);
}

TEST_F(PreviewTest, CountsAreAtLeastOne) {
    session.plot.plot_null_rechts = 5000;
    session.plot.plot_null_hoch = 5000;
    add_signature(1010, 2010);
    draw();
    EXPECT_EQ(session.plot.plot_blatt_rechts, 1);
    EXPECT_EQ(session.plot.plot_blatt_hoch, 1);
}

TEST_F(PreviewTest, CountsOfTheUserStay) {
    add_signature(1010, 2010);
    session.plot.plot_blatt_auto = 0;
    session.plot.plot_blatt_rechts = 3;
    session.plot.plot_blatt_hoch = 2;
    draw();
    EXPECT_EQ(session.plot.plot_blatt_rechts, 3);
    EXPECT_EQ(session.plot.plot_blatt_hoch, 2);
}

TEST_F(PreviewTest, OutlinesHaveEachLineOnce) {
    add_signature(1010, 2010);
    session.plot.plot_blatt_auto = 0;
    session.plot.plot_blatt_rechts = 3;
    session.plot.plot_blatt_hoch = 2;
    draw();
    // Edges at 0, 181.2, 362.4, 543.6 and at 0, 272.7, 545.4, all of them in view.
    session.view = {900, 1900, 1900, 2600, 0.1};
    const std::vector<Segment> lines = sheet_outlines(session);
    ASSERT_EQ(lines.size(), 7U);
    EXPECT_NEAR(lines[1].ax, 1181.2, 1e-9);
    EXPECT_NEAR(lines[1].ay, 2000, 1e-9);
    EXPECT_NEAR(lines[1].by, 2545.4, 1e-9);
    EXPECT_NEAR(lines[5].ay, 2272.7, 1e-9);
    EXPECT_NEAR(lines[5].bx, 1543.6, 1e-9);
    session.plot.plot_massstab = 0;
    EXPECT_TRUE(sheet_outlines(session).empty());
}

TEST_F(PreviewTest, SheetsInViewShowTheirCornerMarks) {
    add_signature(1010, 2010);
    session.plot.plot_legendenlage = 0;
    draw();
    const std::vector<std::string> lines = frames();
    EXPECT_EQ(lines.size(), 12U);  // four edges, two strokes at each corner
    EXPECT_TRUE(holds(lines, "0.0 0.0 181.2 0.0"));
    EXPECT_TRUE(holds(lines, "0.0 0.0 0.0 5.0"));
    EXPECT_TRUE(holds(lines, "0.0 0.0 5.0 0.0"));
    EXPECT_TRUE(holds(lines, "181.2 272.7 176.2 272.7"));
    EXPECT_TRUE(holds(lines, "181.2 272.7 181.2 267.7"));
}

TEST_F(PreviewTest, ManySmallSheetsAreOneOutline) {
    add_signature(1010, 2010);
    session.plot.plot_legendenlage = 0;
    session.plot.plot_blatt_auto = 0;
    session.plot.plot_blatt_rechts = 30000;
    session.plot.plot_blatt_hoch = 30000;
    draw();
    session.view = {0, 0, 1.5e6, 0.9e6, 1000};  // a pixel is 15 km
    EXPECT_EQ(frames().size(), 4U);
}

TEST_F(PreviewTest, SheetsInAnAreaAreFoundByTheirGround) {
    add_signature(1010, 2010);
    session.plot.plot_blatt_auto = 0;
    session.plot.plot_blatt_rechts = 3;
    session.plot.plot_blatt_hoch = 2;
    draw();
    const SheetRange middle = sheets_in(session, {1182, 2010, 1362, 2020});
    EXPECT_EQ(middle.first_column, 2);
    EXPECT_EQ(middle.last_column, 2);
    EXPECT_EQ(middle.first_row, 1);
    EXPECT_EQ(middle.last_row, 1);
    EXPECT_EQ(sheets_in(session, {0, 0, 9000, 9000}).count(), 6);
    EXPECT_EQ(sheets_in(session, {0, 0, 900, 9000}).count(), 0);
    EXPECT_EQ(sheets_in(session, {2000, 0, 3000, 9000}).count(), 0);
}

// Legend

TEST_F(PreviewTest, LegendHasItsSizeOnPaperAtEachCorner) {
    // Four lines of 3 mm digits, of which the empty second is left out: 4 + 3 * 1.68 * 3 = 19.12
    // mm high. The sheet is 181.2 by 272.7 m.
    add_signature(1010, 2010);
    for (Titelzeile& zeile : session.titel) {
        zeile.setTitelSize(3);
    }
    session.plot.plot_legendenlage = 2;
    draw();
    EXPECT_TRUE(session.window.lbl_legende_visible);
    const Label& legend = session.lbl_legende;
    EXPECT_NEAR(legend.height, 19.12, 1e-4);
    EXPECT_NEAR(legend.left, 0, 1e-4);
    EXPECT_NEAR(legend.top, 19.12, 1e-4);
    const float width = legend.width;
    // The longest line, "Grundriss 1: 1000", has 17 letters, each half as wide as the 5.04 mm of
    // its line; 6 mm of room.
    EXPECT_NEAR(width, 17 * 2.52 + 6, 1e-4);
    session.plot.plot_legendenlage = 1;
    draw();
    EXPECT_NEAR(legend.left, 0, 1e-4);
    EXPECT_NEAR(legend.top, 272.7, 1e-4);
    session.plot.plot_legendenlage = 3;
    draw();
    EXPECT_NEAR(legend.left + width, 181.2, 1e-4);
    EXPECT_NEAR(legend.top, 272.7, 1e-4);
    session.plot.plot_legendenlage = 4;
    draw();
    EXPECT_NEAR(legend.left + width, 181.2, 1e-4);
    EXPECT_NEAR(legend.top, 19.12, 1e-4);
}

TEST_F(PreviewTest, LegendShowsTheLinesOfThePlot) {
    add_signature(1010, 2010);
    draw();
    ASSERT_EQ(session.legende_texte.size(), 3U);
    EXPECT_EQ(session.legende_texte[0].label.caption, "Netz");
    EXPECT_EQ(session.legende_texte[2].label.caption, "Grundriss 1: 1000");
    // 3 mm from the left and 2 mm from the top.
    EXPECT_NEAR(session.legende_texte[0].label.left, 3, 1e-4);
    EXPECT_NEAR(session.legende_texte[0].label.top, 272.7 - 2, 1e-4);
}

TEST_F(PreviewTest, WithoutAPlaceThereIsNoLegend) {
    add_signature(1010, 2010);
    session.plot.plot_legendenlage = 0;
    draw();
    EXPECT_FALSE(session.window.lbl_legende_visible);
    EXPECT_TRUE(session.legende_texte.empty());
}

TEST_F(PreviewTest, MovedSheetsTakeTheirTextsAlong) {
    add_signature(1010, 2010);
    draw();
    const float before = session.lbl_legende.left;
    session.window.lbl_legende_visible = false;
    session.window.sheets_moving = true;
    EXPECT_TRUE(frames().empty());
    session.plot.plot_null_rechts += 25;
    place_sheet_texts(session, desk());
    EXPECT_TRUE(session.window.lbl_legende_visible);
    EXPECT_FALSE(session.window.sheets_moving);
    EXPECT_FALSE(frames().empty());
    EXPECT_FLOAT_EQ(session.lbl_legende.left, before + 25);
}

// Numbers on the edges

TEST_F(PreviewTest, EdgeNumbersStandOnTheSheetsAndCannotBeTaken) {
    session.settings.numbez_datum = {};
    session.plot.plot_massstab = 0.0001;
    session.plot.plot_null_rechts = 2570500;
    session.plot.plot_null_hoch = 5618500;
    session.view = {2570000, 5618000, 2573000, 5622000, 0.2};
    session.obj.obj_bezu = 1;
    session.obj.obj_bezu_elli = 1;
    session.obj.obj_bezu_abbi = 1;
    session.obj.obj_nube_meridian = 2;
    session.obj.obj_nube = 2;
    session.obj.obj_nbez = 2;
    session.plot.plot_legendenlage = 0;
    add_signature(2571100, 5619100);
    draw();
    std::vector<std::string> captions;
    for (const Label& label : session.lbl_nubez) {
        if (label.visible) {
            captions.push_back(label.caption);
            EXPECT_FALSE(label.enabled);
        }
    }
    // The sheet reaches from 2570.5 to 2572.312 and from 5618.5 to 5621.227.
    EXPECT_TRUE(holds(captions, " 25705618 | 25715618 "));
    EXPECT_TRUE(holds(captions, " 25715621 | 25725621 "));
    EXPECT_TRUE(holds(captions, " 25705619 \r\n 25705618 "));
    EXPECT_TRUE(holds(captions, " 25725621 \r\n 25725620 "));
}

TEST_F(PreviewTest, DistrictsLeaveTheLegendOut) {
    // 1:10 000: the sheet reaches from 2570.5 to 2572.312 and from 5618.5 to 5621.227 km. In its
    // upper left corner the legend is 191.2 m high and over 500 m wide, so that it covers a piece
    // of the line 2571; in the lower right one, pieces of 2571 and 2572.
    session.settings.numbez_datum = {};
    session.plot.plot_massstab = 0.0001;
    session.plot.plot_null_rechts = 2570500;
    session.plot.plot_null_hoch = 5618500;
    session.plot.plot_blatt_auto = table_false;
    session.plot.plot_blatt_rechts = 1;
    session.plot.plot_blatt_hoch = 1;
    session.view = {2570000, 5618000, 2573000, 5622000, 0.2};
    session.obj.obj_bezu = 1;
    session.obj.obj_bezu_elli = 1;
    session.obj.obj_bezu_abbi = 1;
    session.obj.obj_nube_meridian = 2;
    session.obj.obj_nube = 2;
    for (Titelzeile& zeile : session.titel) {
        zeile.setTitelSize(3);
    }
    session.titel[0].setTitelText("Netz mit einem Namen von 500 m");
    add_signature(2571100, 5619100);
    const auto through_legend = [&] {
        const Label& legend = session.lbl_legende;
        const TargetBox inner{legend.left + 1.0, legend.top - legend.height + 1.0,
                              legend.left + legend.width - 1.0, legend.top - 1.0};
        int found = 0;
        for (const operation::Line& line : drawn<operation::Line>()) {
            const Segment segment{line.x1, line.y1, line.x2, line.y2};
            found += ClipSegment(inner, segment).result != 0 ? 1 : 0;
        }
        return found;
    };
    draw();
    ASSERT_TRUE(session.window.lbl_legende_visible);
    EXPECT_GT(session.lbl_legende.left + session.lbl_legende.width, 1001);
    EXPECT_EQ(through_legend(), 0);
    EXPECT_TRUE(legend_cuts_layers(session));
    // The ground that the legend leaves gets its lines back.
    const Label before = session.lbl_legende;
    session.plot.plot_legendenlage = 4;
    draw();
    EXPECT_EQ(through_legend(), 0);
    session.lbl_legende = before;
    EXPECT_GT(through_legend(), 0);
    session.plot.plot_legendenlage = 0;
    EXPECT_FALSE(legend_cuts_layers(session));
    session.plot.plot_legendenlage = 1;
    session.obj.obj_nube = 0;
    EXPECT_FALSE(legend_cuts_layers(session));
    session.obj.obj_verw = 1;
    EXPECT_TRUE(legend_cuts_layers(session));
    session.plotmodus = 0;
    EXPECT_FALSE(legend_cuts_layers(session));
}

// Printer and window

TEST_F(PreviewTest, PrinterIsTriedAndTellsThePaper) {
    add_signature(1010, 2010);
    ScriptedPrinter printer;
    draw(&printer);
    EXPECT_EQ(session.printer.drucker_ok, table_true);
    // A4 with 5 mm that cannot be printed on, on all sides: 200 - 15 - 0.5 mm.
    EXPECT_NEAR(session.sheet.papier_breite, 0.1845, 1e-6);
}

TEST_F(PreviewTest, PrinterThatRefusesAnOrientationIsNotUsed) {
    add_signature(1010, 2010);
    test::ScriptedDevice device;
    device.orientations = {1};
    ScriptedPrinter printer({device});
    draw(&printer);
    EXPECT_EQ(session.printer.drucker_ok, table_false);
    EXPECT_NEAR(session.sheet.papier_breite, 0.1812, 1e-6);
}

TEST_F(PreviewTest, CommandsOfThePlotModeAreOffered) {
    constexpr MenuItem of_plot_mode[] = {MenuItem::m_plotten_einstellungen,
                                         MenuItem::m_plotten_null, MenuItem::m_plotten_alle,
                                         MenuItem::m_plotten_aktuell, MenuItem::m_plotten_aus};
    add_signature(1010, 2010);
    draw();
    for (const MenuItem item : of_plot_mode) {
        EXPECT_TRUE(enabled(item));
    }
    EXPECT_FALSE(enabled(MenuItem::m_plotten_ein));
    EXPECT_TRUE(enabled(ToolButton::plot_aus));
    EXPECT_FALSE(enabled(ToolButton::plot_ein));
    EXPECT_TRUE(enabled(ToolButton::lupe_plus));
    session.plotmodus = 0;
    draw();
    for (const MenuItem item : of_plot_mode) {
        EXPECT_FALSE(enabled(item));
    }
    EXPECT_TRUE(enabled(MenuItem::m_plotten_ein));
    EXPECT_FALSE(enabled(ToolButton::plot_aus));
    EXPECT_TRUE(enabled(ToolButton::plot_ein));
}

TEST_F(PreviewTest, NothingToDrawIsReportedAndTheWayOutStaysOpen) {
    draw();
    EXPECT_EQ(ui.texts, (std::vector<std::string>{"Datei enthält keine darzustellenden Objekte"}));
    EXPECT_TRUE(enabled(ToolButton::plot_aus));
    EXPECT_FALSE(enabled(ToolButton::plot_ein));
}

TEST_F(PreviewTest, CaptionIsThatOfTheScreen) {
    add_signature(1010, 2010);
    session.obj.obj_beob = 1;
    session.window.fenstertitel = "VELDRA [x]";
    draw();
    EXPECT_EQ(session.window.caption, "VELDRA [x]: Lagebeobachtungen");
}

}  // namespace
}  // namespace veldra
