#include "drawing/pipeline.h"

#include <utility>

#include "drawing/title.h"
#include "layer_fixture.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using test::add_line;
using test::add_point;
using test::described;
using test::end_points;
using test::Lines;
using test::only;
using test::show_values;

/// Keeps what the user would see.
class RecordingDesktop final : public UserInterface {
 public:
    bool message_box(MessageStyle style, const std::string& title,
                     const std::string& text) override {
        styles.push_back(style);
        boxes.emplace_back(title, text);
        return true;
    }
    void set_mouse_pointer(int pointer) override { pointers.push_back(pointer); }

    std::vector<MessageStyle> styles;
    std::vector<std::pair<std::string, std::string>> boxes;
    std::vector<int> pointers;
};

class DrawAllTest : public test::LayerFixture {
 protected:
    Lines draw() {
        target = {};
        DrawAll(session, target, measurer, desktop);
        return described(target);
    }
    void add_part(const char* name) {
        session.part.netz_aktuell = session.netz.append();
        session.netz[session.part.netz_aktuell].netz_name = name;
    }

    RecordingDesktop desktop;
};

TEST_F(DrawAllTest, LayersLieOverEachOtherInTheirOrder) {
    session.part.obj.obj_pusi = 1;
    session.part.obj.obj_pube = 1;
    session.part.obj.obj_beob = 1;
    show_values(session, 4);
    PointRow& point = add_point(session, 1010, 2020);
    point.pu_signatur = 1;
    point.pu_bez = "A";
    point.pu_wert_lage = 2;
    point.pu_wert_rechts = 1;
    end_points(session);
    add_line(session, {1010, 2020, 1110, 2020});
    add_line(session, {1010, 2020, 1010, 2120}).lin_typ_seite = 10;
    const Lines lines = draw();
    // Grid pen in the colour of the districts, halves, stub, signature, vector, dot pen, label.
    EXPECT_EQ(lines, (Lines{"DrawStyle 0",           "DrawWidth 1",
                            "ForeColor 128",         "DrawStyle 2",
                            "DrawWidth 1",           "ForeColor 0",
                            "Line 10.15 20 60 20",   "DrawStyle 2",
                            "DrawWidth 1",           "ForeColor 0",
                            "Line 60 20 109.85 20",  "DrawStyle 0",
                            "DrawStyle 0",           "DrawWidth 1",
                            "ForeColor 0",           "Line 10 20.15 10 30",
                            "DrawStyle 2",           "DrawWidth 1",
                            "ForeColor 0",           "Line 10 30 10 40",
                            "TextRotated '' 900 11", "DrawStyle 0",
                            "DrawWidth 1",           "ForeColor 0",
                            "FillStyle 0",           fmt::format("FillColor {}", rgb(0, 127, 255)),
                            "Circle 10 20 0.6",      "DrawStyle 0",
                            "DrawWidth 3",           fmt::format("ForeColor {}", rgb(0, 128, 255)),
                            "Line 10 20 15 20",      "DrawWidth 1",
                            "ForeColor 0",           "FillColor 0",
                            "FillStyle 0",           "Label lbl_pubez 1 'A' 11.2 20 1 2"}));
}

TEST_F(DrawAllTest, SignaturesAreLeftOutWhenOff) {
    session.part.obj.obj_pusi = 0;
    add_point(session, 1010, 2020).pu_signatur = 1;
    end_points(session);
    EXPECT_EQ(only(draw(), "Circle"), Lines{"Circle 10 20 0.15"});
}

TEST_F(DrawAllTest, HeightAndGpsObservationsDrawNoOrientationStubs) {
    add_line(session, {1000, 2000, 1000, 2100}).lin_typ_seite = 10;
    for (const auto beob : std::initializer_list<std::int16_t>{2, 3}) {
        session.part.obj.obj_beob = beob;
        for (const std::int16_t tested : {table_false, table_true}) {
            session.part.obj.obj_test_beob = tested;
            const Lines lines = draw();
            EXPECT_TRUE(only(lines, "TextRotated").empty());
            EXPECT_EQ(only(lines, "Line").size(), tested == table_true ? 3U : 2U);
        }
    }
    session.part.obj.obj_beob = 1;
    EXPECT_EQ(only(draw(), "TextRotated").size(), 1U);
}

TEST_F(DrawAllTest, TestedObservationsAreDrawnInThirds) {
    session.part.obj.obj_beob = 1;
    session.part.obj.obj_test_beob = table_true;
    add_line(session, {1000, 2000, 1090, 2000});
    EXPECT_EQ(only(draw(), "Line").size(), 3U);
}

/// A point with both residuals, each with a test value of the first class.
void add_residuals(Session& session) {
    PointRow& row = add_point(session, 1010, 2020);
    row.pu_wert_lage = 2;
    row.pu_wert_rechts = 1;
    row.pu_wert_hoehe = 5;
    row.pu_wert_dh = 1;
    row.pu_ev_lage = 50;
    end_points(session);
}

TEST_F(DrawAllTest, ResidualsAreColouredByTestWhenTheyStandAlone) {
    add_residuals(session);
    session.part.obj.obj_test_restkl = table_true;
    const std::string green = fmt::format("ForeColor {}", rgb(0, 255, 0));
    for (const auto puwe : std::initializer_list<std::int16_t>{4, 5}) {
        show_values(session, puwe);
        EXPECT_EQ(only(draw(), green).size(), 1U);
    }
    session.part.obj.obj_test_restkl = table_false;
    EXPECT_TRUE(only(draw(), green).empty());
}

TEST_F(DrawAllTest, BothResidualsTogetherAreNeverColouredThoughTheTitleSaysSo) {
    add_residuals(session);
    session.part.obj.obj_test_restkl = table_true;
    show_values(session, 6);
    const Lines lines = draw();
    EXPECT_TRUE(only(lines, fmt::format("ForeColor {}", rgb(0, 255, 0))).empty());
    EXPECT_EQ(only(lines, "Line"), (Lines{"Line 10 20 15 20", "Line 10 20 10 25"}));
    EXPECT_EQ(to_utf8(BuildTitle(session, title_code::objects)),
              "Lagerestklaffungen, EV, Höhenrestklaffungen, EV");
}

TEST_F(DrawAllTest, ValuesAreDrawnByTheirKinds) {
    PointRow& row = add_point(session, 1010, 2020);
    end_points(session);
    row.pu_wert_rechts = 1;
    row.pu_wert_hoch = 2;
    row.pu_wert_dh = 3;
    struct Case {
        std::int16_t puwe;
        std::int16_t lage;
        std::int16_t hoehe;
        std::size_t lines;
    };
    for (const Case& c :
         {Case{0, 1, 4, 0}, Case{1, 1, 0, 1}, Case{2, 0, 4, 1}, Case{3, 1, 4, 2}, Case{4, 2, 0, 1},
          Case{5, 0, 5, 1}, Case{6, 2, 5, 2}, Case{7, -3, 0, 200}, Case{8, 0, -6, 1}}) {
        show_values(session, c.puwe);
        row.pu_wert_lage = c.lage;
        row.pu_wert_hoehe = c.hoehe;
        ++session.part.tables_revision;
        EXPECT_EQ(only(draw(), "Line").size(), c.lines) << c.puwe;
    }
}

TEST_F(DrawAllTest, HourglassIsShownWhileDrawing) {
    add_point(session, 1010, 2020);
    session.window.lbl_legende_visible = true;
    draw();
    EXPECT_EQ(desktop.pointers, (std::vector<int>{11, 0}));
    EXPECT_EQ(session.window.mouse_pointer, 0);
    EXPECT_FALSE(session.window.lbl_legende_visible);
}

TEST_F(DrawAllTest, FileWithoutPartsAndObjectsIsReported) {
    session.window.frm_massstab_shown = true;
    draw();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.styles[0], MessageStyle::critical);
    EXPECT_EQ(desktop.boxes[0].first, " Fehler ");
    EXPECT_EQ(desktop.boxes[0].second, "Datei enthält keine darzustellenden Objekte");
    EXPECT_FALSE(session.window.frm_massstab_shown);
    EXPECT_EQ(desktop.pointers, (std::vector<int>{11, 0}));
}

TEST_F(DrawAllTest, EmptyPartIsReportedAndLosesItsMark) {
    add_part("Nord");
    add_part(
        "S\xFC"
        "d");
    draw();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes[0].second, "Netzteil Süd enthält keine darzustellenden Objekte");
    EXPECT_EQ(session.netz[2].netz_plotmarke, table_false);
    EXPECT_EQ(session.netz[1].netz_plotmarke, table_true);
}

TEST_F(DrawAllTest, BoundariesAndGridNeedAReferenceSystem) {
    session.part.obj.obj_verw = 3;
    session.part.obj.obj_nube = 1;
    session.part.obj.obj_bezu = 0;
    add_point(session, 1010, 2020);
    end_points(session);
    EXPECT_TRUE(only(draw(), "Line").empty());
}

}  // namespace
}  // namespace veldra
