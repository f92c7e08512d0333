// Moved labels of changes: the offsets in their records, and what they do to the rest of a line.
#include "graphikdatei/change_records.h"

#include <gmock/gmock.h>

#include "graphikdatei/writer.h"
#include "model/undo.h"
#include "session_fixture.h"
#include "view/label_moving.h"

namespace veldra {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr EpochOffset some{12.34, -5};

std::string moved(std::string_view line, ChangeRecord kind, const EpochOffset& offset = some) {
    return with_label_offset(line, kind, offset);
}

TEST(LabelOffset, StandsBehindTheEpochText) {
    EXPECT_EQ(moved("L 1 2 3 4 1 1990", ChangeRecord::lage), "L 1 2 3 4 1 1990 12.3 -5.0");
    EXPECT_EQ(moved("H 1 2 3 1 \"1. Epoche\"", ChangeRecord::hoehe),
              "H 1 2 3 1 \"1. Epoche\" 12.3 -5.0");
    EXPECT_EQ(moved("N\xC4 3 4 1991", ChangeRecord::lage_epoche), "N\xC4 3 4 1991 12.3 -5.0");
    EXPECT_EQ(moved("N\xC4 3 1991", ChangeRecord::hoehe_epoche), "N\xC4 3 1991 12.3 -5.0");
}

TEST(LabelOffset, ReplacesTheOneThatIsThere) {
    EXPECT_EQ(moved("L  1 2 3 4 1 1990  0.5   0.75  more  of it ", ChangeRecord::lage),
              "L  1 2 3 4 1 1990  12.3   -5.0  more  of it ");
    EXPECT_EQ(moved("L 1 2 3 4 1 1990 \"7\"\"8\"more", ChangeRecord::lage),
              "L 1 2 3 4 1 1990 12.3 -5.0 more");
    // Half an offset counts as none, and becomes a whole one.
    EXPECT_EQ(moved("L 1 2 3 4 1 1990 0.5", ChangeRecord::lage), "L 1 2 3 4 1 1990 12.3 -5.0");
    EXPECT_EQ(moved("L 1 2 3 4 1 \"90\"7 8", ChangeRecord::lage), "L 1 2 3 4 1 \"90\" 12.3 -5.0");
}

TEST(LabelOffset, IsNeverTheStandardPlace) {
    EXPECT_EQ(moved("N\xC4 3 1991", ChangeRecord::hoehe_epoche, {0.04, -0.04}),
              "N\xC4 3 1991 0.1 0.1");
    EXPECT_EQ(moved("N\xC4 3 1991", ChangeRecord::hoehe_epoche, {-0.05, 0.05}),
              "N\xC4 3 1991 -0.1 0.1");
}

TEST(LabelOffset, FillsWhatIsMissingBeforeIt) {
    EXPECT_EQ(moved("L 1 2 3 4", ChangeRecord::lage), "L 1 2 3 4 0 \"\" 12.3 -5.0");
    EXPECT_EQ(moved("N\xC4", ChangeRecord::lage_epoche), "N\xC4 0 0 \"\" 12.3 -5.0");
}

TEST(LabelOffset, LeavesAQuoteThatIsNotClosedItsText) {
    // Such a text has lost the line's last character.
    EXPECT_EQ(moved("H 1 2 3 1 \"Epoche 10", ChangeRecord::hoehe),
              "H 1 2 3 1 \"Epoche 1\" 12.3 -5.0");
    EXPECT_EQ(moved("L 1 2 3 \"45", ChangeRecord::lage), "L 1 2 3 \"4\" 0 \"\" 12.3 -5.0");
}

TEST(LabelOffset, NeverMakesALineTooLongToBeRead) {
    const std::string text(32740, 'x');
    const std::string room = "N\xC4 3 " + text;  // 32745 characters, 32755 with offsets
    EXPECT_EQ(moved(room, ChangeRecord::hoehe_epoche), room + " 12.3 -5.0");
    const std::string none = room + std::string(13, 'x');  // 32758 and 32768
    EXPECT_EQ(moved(none, ChangeRecord::hoehe_epoche), none);
}

class MovedChanges : public testing_support::SessionOnFile {
 protected:
    static constexpr const char* text =
        "NETZTEIL A\r\n"
        "NÄCHSTEEPOCHE 9 9 \"ohne Anfang\"\r\n"
        "PUNKTSIGNATUR 1000 2000 0 0 1 \"7\"\r\n"
        "LAGEÄNDERUNG 1000.000  2000.000 3 4 1 1990\r\n"
        "LAGERESTKLAFFUNGEN 1000 2000  1\t2 1\r\n"
        "NÄCHSTEEPOCHE 1 1 \"1991\" 5 6\r\n"
        "HÖHENÄNDERUNG 1000 2000 3 0 h1\r\n"
        "NÄCHSTEEPOCHE 2 h2\r\n"
        "NETZTEIL B\r\n"
        "LAGEÄNDERUNG 1000 2000 3 4 1 1990\r\n";

    void SetUp() override {
        read_values(text, both);
        session.datei_geladen = 1;
        session.obj.obj_epbe = table_true;
        session.plot.plot_massstab = 0.001;
        session.view = {900, 1900, 1100, 2100, 0.01};
        session.lbl_pubez.resize(static_cast<std::size_t>(session.pu.count()) + 1);
    }

    /// Rows: 1 the point, 2 and 3 its position's epochs, 4 and 5 its height's.
    void drag(std::int32_t row) {
        session.lbl_pubez[static_cast<std::size_t>(row)] = {"1990", 100, 100, 5, 2, true, true};
        drop_label(session, {LabelArray::lbl_pubez, row, 0, 0}, 100, 200);
    }

    void select(std::int16_t obj_puwe) {
        session.obj.obj_puwe = obj_puwe;
        derive_value_modes(session.obj);
        clear_undo_for_selection(session.window);
        wert_lesen(session);
    }

    [[nodiscard]] std::string copy_text() {
        arbeitskopie_schreiben(session);
        return to_utf8(testing_support::file_bytes(working_path(session)));
    }

    static constexpr std::int16_t position = 1;
    static constexpr std::int16_t height = 2;
    static constexpr std::int16_t both = 3;
};

TEST_F(MovedChanges, OnlyTheRecordOfTheMovedLabelChanges) {
    move_point_label(session, 5, {-12.5, 30});
    EXPECT_THAT(copy_text(), HasSubstr("LAGEÄNDERUNG 1000.000  2000.000 3 4 1 1990\r\n"
                                       "LAGERESTKLAFFUNGEN 1000 2000  1\t2 1\r\n"
                                       "NÄCHSTEEPOCHE 1 1 \"1991\" 5 6\r\n"
                                       "HÖHENÄNDERUNG 1000 2000 3 0 h1\r\n"
                                       "NÄCHSTEEPOCHE 2 h2 -12.5 30.0\r\n"
                                       "NETZTEIL B\r\n"
                                       "LAGEÄNDERUNG 1000 2000 3 4 1 1990\r\n"));
}

TEST_F(MovedChanges, EachKindIsReadBackFromItsRecord) {
    for (std::int32_t row = 2; row <= 5; ++row) {
        move_point_label(session, row, {10.0 * row, -1.0 * row});
    }
    arbeitskopie_schreiben(session);
    endfassung_schreiben(session);
    kopf_lesen(session);
    punkt_lesen(session);
    EXPECT_TRUE(session.epochen_bez.empty());
    select(both);
    for (std::int32_t row = 2; row <= 5; ++row) {
        EXPECT_DOUBLE_EQ(session.pu[row].pu_bez_rechts, 10.0 * row);
        EXPECT_DOUBLE_EQ(session.pu[row].pu_bez_hoch, -1.0 * row);
    }
    EXPECT_EQ(session.pu[3].pu_bez, "1991");
    EXPECT_EQ(session.pu[3].pu_wert_rechts, 4);
    EXPECT_EQ(session.pu[5].pu_bez, "h2");
}

TEST_F(MovedChanges, ASelectionThatDoesNotShowThemWritesThemToo) {
    move_point_label(session, 3, {70, 80});
    select(height);
    EXPECT_THAT(copy_text(), HasSubstr("NÄCHSTEEPOCHE 1 1 \"1991\" 70.0 80.0\r\n"));
}

TEST_F(MovedChanges, ASelectionAndBackFindsTheLabelWhereItWasPut) {
    move_point_label(session, 5, {1.23, 4.56});
    select(position);
    EXPECT_EQ(session.pu.count(), 3);
    EXPECT_EQ(session.pu[2].pu_bez_rechts, 0);
    select(height);  // the same record in another row
    EXPECT_EQ(session.pu[3].pu_bez, "h2");
    EXPECT_EQ(session.pu[3].pu_bez_rechts, 1.23);
    EXPECT_EQ(session.pu[3].pu_bez_hoch, 4.56);
    (void)copy_text();
    select(both);
    EXPECT_EQ(session.pu[5].pu_bez_rechts, 1.23);
}

TEST_F(MovedChanges, UndoWorksWhileTheLabelIsNotShownAndAfterwards) {
    drag(3);
    EXPECT_NE(session.pu[3].pu_bez_rechts, 5);
    select(height);
    EXPECT_EQ(session.window.undo.undo_art, undo_kind::point_label);
    undo_label_move(session);
    EXPECT_EQ(session.window.undo.undo_art, undo_kind::none);
    select(both);
    EXPECT_EQ(session.pu[3].pu_bez_rechts, 5);
    EXPECT_EQ(session.pu[3].pu_bez_hoch, 6);
    EXPECT_THAT(copy_text(), HasSubstr("NÄCHSTEEPOCHE 1 1 \"1991\" 5 6\r\n"));
}

TEST_F(MovedChanges, UndoFindsTheRowThatTheRecordHasNow) {
    drag(4);
    const double first = session.pu[4].pu_bez_rechts;
    drag(4);
    select(height);
    session.lbl_pubez.resize(4);
    session.lbl_pubez[2] = {"h1", 7, 7, 5, 2, true, true};
    undo_label_move(session);
    EXPECT_EQ(session.pu[2].pu_bez, "h1");
    EXPECT_EQ(session.pu[2].pu_bez_rechts, first);
    // 2 m high, relative to the point at 100, 100 of the view.
    EXPECT_FLOAT_EQ(session.lbl_pubez[2].left, static_cast<float>(100 + 2 * first / 100));
    select(both);
    EXPECT_EQ(session.pu[4].pu_bez_rechts, first);
}

TEST_F(MovedChanges, OtherStepsAreForgottenBeforeASelection) {
    drag(1);
    select(both);
    EXPECT_EQ(session.window.undo.undo_art, undo_kind::none);
}

TEST_F(MovedChanges, ThePartReadAnewHasWhatItsRecordsSay) {
    move_point_label(session, 2, {70, 80});
    punkt_lesen(session);
    wert_lesen(session);
    EXPECT_EQ(session.pu[2].pu_bez_rechts, 0);
}

}  // namespace
}  // namespace veldra
