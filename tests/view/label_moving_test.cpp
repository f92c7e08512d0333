#include "view/label_moving.h"

#include <gtest/gtest.h>

#include "drawing/districts.h"
#include "graphikdatei/writer.h"
#include "model/undo.h"
#include "network_builder.h"
#include "session_fixture.h"

namespace veldra {
namespace {

using test::add_point;

/// A view of 150 m x 90 m at (1000, 2000), 1 cm a twip; labels are 2 m high and 5 m wide. At
/// 1:1000 with vectors at 1:2 a centimetre of a value is 5 m of ground.
class LabelMoving : public testing::Test {
 protected:
    LabelMoving() {
        session.plot.plot_massstab = 0.001;
        session.view = {1000, 2000, 1150, 2090, 0.01};
        session.settings.stanplt = 60;
        session.settings.stanptp = 0;
    }

    /// A point with its label where it stands by default: 1.2 m to the east of it.
    PointRow& labelled_point(double rechts, double hoch) {
        PointRow& row = add_point(session, rechts, hoch);
        session.lbl_pubez.resize(static_cast<std::size_t>(session.pu.count()) + 1);
        session.lbl_pubez.back() = {"7",
                                    static_cast<float>(rechts - 1000 + 1.2),
                                    static_cast<float>(hoch - 2000),
                                    5,
                                    2,
                                    true,
                                    true};
        return row;
    }

    /// A district label at a node, 2 m high, with its lower left corner on the node.
    void node_label(double rechts, double hoch) {
        DistrictGrid& grid = district_cache(session).grid;
        grid.grid_rechts = {0, rechts};
        grid.grid_hoch = {0, hoch};
        grid.grid_bez = {"", "5208"};
        grid.grid_bez_ecke = {"", ""};
        session.lbl_nubez.resize(2);
        session.lbl_nubez[1] = {"5208 ",
                                static_cast<float>(rechts - 1000),
                                static_cast<float>(hoch - 2000 + 2),
                                5,
                                2,
                                true,
                                true};
    }

    [[nodiscard]] const Label& label(std::size_t i) const { return session.lbl_pubez[i]; }

    static constexpr LabelDrag point_drag{LabelArray::lbl_pubez, 1, 3000, 4000};
    static constexpr LabelDrag node_drag{LabelArray::lbl_nubez, 1, 3000, 4000};

    Session session;
};

TEST_F(LabelMoving, OffsetsArePercentOfTheLabelsHeight) {
    PointRow& row = labelled_point(1010, 2020);
    // 400 twips to the right and 100 down: 4 m east, 1 m south.
    drop_label(session, point_drag, 3400, 4100);
    EXPECT_NEAR(row.pu_bez_rechts, 260, 1e-4);  // (1.2 + 4) / 2 m
    EXPECT_NEAR(row.pu_bez_hoch, -50, 1e-4);    // -1 / 2 m
    EXPECT_NEAR(label(1).left, 15.2, 1e-5);
    EXPECT_NEAR(label(1).top, 19, 1e-5);
    EXPECT_EQ(session.window.undo.undo_art, 1);
    EXPECT_EQ(session.window.undo.undo_index, 1);
    EXPECT_EQ(session.window.undo.undo_wert[0], 0);
    EXPECT_EQ(session.window[MenuItem::m_ansicht_undo].caption,
              "Rückgängig: Verschiebung Bezeichnung");
}

TEST_F(LabelMoving, ASecondMoveStartsFromTheFirst) {
    PointRow& row = labelled_point(1010, 2020);
    drop_label(session, point_drag, 3400, 4100);
    drop_label(session, point_drag, 2900, 3900);  // 1 m west, 1 m north
    EXPECT_NEAR(row.pu_bez_rechts, 210, 1e-4);
    EXPECT_NEAR(row.pu_bez_hoch, 0, 1e-4);
    EXPECT_NEAR(session.window.undo.undo_wert[0], 260, 1e-4);
    EXPECT_NEAR(session.window.undo.undo_wert[1], -50, 1e-4);
}

TEST_F(LabelMoving, OffsetsAtAVectorCountFromItsTip) {
    PointRow& row = labelled_point(1010, 2020);
    row.pu_wert_lage = -1;
    row.pu_wert_rechts = 2;  // tip at 1020, 2015
    row.pu_wert_hoch = -1;
    session.lbl_pubez[1].left = 20;
    session.lbl_pubez[1].top = 15;
    drop_label(session, point_drag, 3200, 3900);  // 2 m east, 1 m north
    EXPECT_DOUBLE_EQ(row.pu_bez_rechts, 100);
    EXPECT_DOUBLE_EQ(row.pu_bez_hoch, 50);
    EXPECT_EQ(label(1).left, 22.0F);
    EXPECT_EQ(label(1).top, 16.0F);
}

TEST_F(LabelMoving, OffsetsAtABarCountFromItsTopAtTheEpochsPlace) {
    PointRow& row = labelled_point(1010, 2020);
    row.pu_wert_hoehe = 4;
    row.pu_wert_dh = 2;  // 10 m up
    row.pu_epoche = 3;   // 3 m to the east
    session.lbl_pubez[1].left = 13;
    session.lbl_pubez[1].top = 30;
    drop_label(session, point_drag, 3100, 4000);
    EXPECT_DOUBLE_EQ(row.pu_bez_rechts, 50);
    EXPECT_DOUBLE_EQ(row.pu_bez_hoch, 0);
}

TEST_F(LabelMoving, ADragToItsStartStoresOffsetsAllTheSame) {
    PointRow& row = labelled_point(1010, 2020);
    drop_label(session, point_drag, 3000, 4000);
    EXPECT_NEAR(row.pu_bez_rechts, 60, 1e-4);
    EXPECT_EQ(session.window.undo.undo_art, 1);
}

TEST_F(LabelMoving, AnOffsetOfExactlyZeroIsStoredAsZero) {
    PointRow& row = labelled_point(1010, 2020);
    session.lbl_pubez[1].left = 12;
    drop_label(session, point_drag, 2800, 3900);  // 2 m west, 1 m north
    EXPECT_EQ(row.pu_bez_rechts, 0);
    EXPECT_DOUBLE_EQ(row.pu_bez_hoch, 50);
}

TEST_F(LabelMoving, GhostFollowsTheMouseInTheLabelsSize) {
    labelled_point(1010, 2020);
    const GhostBox ghost = ghost_box(session, point_drag, 3400, 4100);
    EXPECT_FLOAT_EQ(ghost.left, 15.2F);
    EXPECT_EQ(ghost.top, 19.0F);
    EXPECT_EQ(ghost.width, 5.0F);
    EXPECT_EQ(ghost.height, 2.0F);
}

TEST_F(LabelMoving, ABlankLabelCannotBeMoved) {
    PointRow& row = labelled_point(1010, 2020);
    session.lbl_pubez[1].caption = "    ";
    EXPECT_FALSE(can_be_dragged(session, LabelArray::lbl_pubez, 1));
    drop_label(session, point_drag, 3400, 4100);
    EXPECT_EQ(row.pu_bez_rechts, 0);
    EXPECT_EQ(session.window.undo.undo_art, 0);
}

TEST_F(LabelMoving, NamesOfRemoteTargetsCannotBeMoved) {
    session.lbl_fzbez.resize(2);
    session.lbl_fzbez[1].caption = "Kirche";
    EXPECT_FALSE(can_be_dragged(session, LabelArray::lbl_fzbez, 1));
    EXPECT_EQ(find_label(session, LabelArray::lbl_fzbez, 1), nullptr);
}

TEST_F(LabelMoving, UndoPutsALabelBackToItsStandardPlace) {
    PointRow& row = labelled_point(1010, 2020);
    drop_label(session, point_drag, 3400, 4100);
    undo_label_move(session);
    EXPECT_EQ(row.pu_bez_rechts, 0);
    EXPECT_EQ(row.pu_bez_hoch, 0);
    EXPECT_FLOAT_EQ(label(1).left, 11.2F);
    EXPECT_EQ(label(1).top, 20.0F);
    EXPECT_EQ(session.window.undo.undo_art, 0);
    EXPECT_EQ(session.window[ToolButton::rueckgaengig].tool_tip, "Rückgängig:");
}

TEST_F(LabelMoving, UndoAtAVectorPutsTheLabelRelativeToThePoint) {
    PointRow& row = labelled_point(1010, 2020);
    row.pu_wert_lage = 1;
    row.pu_wert_rechts = 2;
    row.pu_bez_rechts = 100;
    row.pu_bez_hoch = 50;
    session.lbl_pubez[1].left = 22;  // 2 m from the tip at 1020
    session.lbl_pubez[1].top = 21;
    drop_label(session, point_drag, 3400, 4000);
    EXPECT_DOUBLE_EQ(row.pu_bez_rechts, 300);
    undo_label_move(session);
    EXPECT_DOUBLE_EQ(row.pu_bez_rechts, 100);
    EXPECT_EQ(label(1).left, 12.0F);  // 2 m from the point
    EXPECT_EQ(label(1).top, 21.0F);
}

TEST_F(LabelMoving, DistrictLabelsKeepTheirPlaceOnTheGround) {
    node_label(1030, 2040);
    drop_label(session, node_drag, 3400, 4100);  // 4 m east, 1 m south
    ASSERT_EQ(session.nuoff.count(), 1);
    EXPECT_EQ(session.nuoff[1].nuoff_bez, "5208");
    EXPECT_DOUBLE_EQ(session.nuoff[1].nuoff_rechts, 1034);
    EXPECT_DOUBLE_EQ(session.nuoff[1].nuoff_hoch, 2039);
    EXPECT_EQ(session.lbl_nubez[1].left, 34.0F);
    EXPECT_EQ(session.lbl_nubez[1].top, 41.0F);
    EXPECT_EQ(session.window.undo.undo_art, 2);
    EXPECT_EQ(session.window.undo.undo_wert[0], 1030);
    EXPECT_EQ(session.window.undo.undo_wert[1], 2040);
    EXPECT_EQ(session.window[MenuItem::m_ansicht_undo].caption,
              "Rückgängig: Verschiebung NB-Bezeichnung");
}

TEST_F(LabelMoving, ASecondMoveOfADistrictLabelReusesItsEntry) {
    node_label(1030, 2040);
    drop_label(session, node_drag, 3400, 4100);
    drop_label(session, node_drag, 3100, 4000);
    ASSERT_EQ(session.nuoff.count(), 1);
    EXPECT_DOUBLE_EQ(session.nuoff[1].nuoff_rechts, 1035);
    EXPECT_DOUBLE_EQ(session.nuoff[1].nuoff_hoch, 2039);
    EXPECT_EQ(session.window.undo.undo_wert[0], 1034);
    EXPECT_EQ(session.window.undo.undo_wert[1], 2039);
}

TEST_F(LabelMoving, TheLastOfSeveralEntriesIsTheOneThatMoves) {
    node_label(1030, 2040);
    for (int i = 0; i < 2; ++i) {
        session.nuoff[session.nuoff.append()] = {"5208", 1031.0 + i, 2041};
    }
    drop_label(session, node_drag, 3000, 4000);
    EXPECT_EQ(session.nuoff.count(), 2);
    EXPECT_EQ(session.nuoff[1].nuoff_rechts, 1031);
    EXPECT_EQ(session.nuoff[2].nuoff_rechts, 1030);
    EXPECT_EQ(session.window.undo.undo_wert[0], 1032);
}

TEST_F(LabelMoving, UndoOfADistrictLabelKeepsTheEntry) {
    node_label(1030, 2040);
    drop_label(session, node_drag, 3400, 4100);
    undo_label_move(session);
    ASSERT_EQ(session.nuoff.count(), 1);
    EXPECT_EQ(session.nuoff[1].nuoff_rechts, 1030);
    EXPECT_EQ(session.nuoff[1].nuoff_hoch, 2040);
    EXPECT_EQ(session.lbl_nubez[1].left, 30.0F);
    EXPECT_EQ(session.lbl_nubez[1].top, 42.0F);
    EXPECT_EQ(session.window.undo.undo_art, 0);
}

TEST_F(LabelMoving, ALabelThatIsNoNodesCannotBeMoved) {
    node_label(1030, 2040);
    district_cache(session).grid.grid_bez[1].clear();
    EXPECT_FALSE(can_be_dragged(session, LabelArray::lbl_nubez, 1));
    drop_label(session, node_drag, 3400, 4100);
    EXPECT_EQ(session.nuoff.count(), 0);
}

using LabelMovingOnFile = testing_support::SessionOnFile;

TEST_F(LabelMovingOnFile, OffsetsAreInTheFileAfterLeaving) {
    read_points(
        "NETZTEIL A\r\n"
        "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"1\"\r\n"
        "PUNKTSIGNATUR  3500100.000  5600000.000  0  0 1 \"2\"\r\n");
    session.datei_geladen = 1;
    session.view = {3500000, 5600000, 3500150, 5600090, 0.01};
    session.lbl_pubez.resize(3);
    session.lbl_pubez[2] = {"2", 101, 0, 5, 2, true, true};
    session.lbl_nubez.resize(2);
    session.lbl_nubez[1] = {"5208 ", 30, 42, 5, 2, true, true};
    DistrictGrid& grid = district_cache(session).grid;
    grid.grid_rechts = {0, 3500030};
    grid.grid_hoch = {0, 5600040};
    grid.grid_bez = {"", "5208"};
    drop_label(session, {LabelArray::lbl_pubez, 2, 0, 0}, 200, -300);  // 2 m east, 3 m north
    drop_label(session, {LabelArray::lbl_nubez, 1, 0, 0}, -250, 0);    // 2.5 m west
    arbeitskopie_schreiben(session);
    endfassung_schreiben(session);

    Session again;
    again.graphikdatei = session.graphikdatei;
    again.arbeitsdatei_basis = session.graphikdatei;
    kopf_lesen(again);
    punkt_lesen(again);
    ASSERT_EQ(again.pu.count(), 2);
    EXPECT_EQ(again.pu[1].pu_bez_rechts, 0);
    EXPECT_DOUBLE_EQ(again.pu[2].pu_bez_rechts, 150);  // (1 + 2) / 2 m
    EXPECT_DOUBLE_EQ(again.pu[2].pu_bez_hoch, 150);
    ASSERT_EQ(again.nuoff.count(), 1);
    EXPECT_EQ(again.nuoff[1].nuoff_bez, "5208");
    EXPECT_DOUBLE_EQ(again.nuoff[1].nuoff_rechts, 3500027.5);
    EXPECT_DOUBLE_EQ(again.nuoff[1].nuoff_hoch, 5600040);
}

TEST_F(LabelMoving, DroppedLabelIsFoundWhereItLies) {
    labelled_point(1010, 2020);
    ViewIndex& index = session.view_index;
    const auto rows_at = [&](const TargetBox& place) {
        index.refresh(session.pu, session.lin, session.tables_revision);
        std::vector<std::int32_t> rows;
        index.visit_points(session.pu, place, {},
                           [&rows](std::int32_t row) { rows.push_back(row); });
        return rows;
    };
    const TargetBox far_away{1090, 2020, 1100, 2025};
    EXPECT_TRUE(rows_at(far_away).empty());
    drop_label(session, point_drag, 11000, 4000);  // 80 m east
    EXPECT_EQ(rows_at(far_away), std::vector<std::int32_t>{1});
    undo_label_move(session);
    EXPECT_EQ(rows_at(far_away), std::vector<std::int32_t>{1});  // until the index is rebuilt
    ++session.tables_revision;
    EXPECT_TRUE(rows_at(far_away).empty());
}

}  // namespace
}  // namespace veldra
