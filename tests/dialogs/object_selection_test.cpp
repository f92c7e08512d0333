#include "dialogs/object_selection.h"

#include <gmock/gmock.h>

#include "fake_measurer.h"
#include "network_builder.h"
#include "recording_interface.h"
#include "session_fixture.h"

namespace veldra {
namespace {

using ::testing::ElementsAre;

constexpr double strip_3 = 3500000;
constexpr double zone_32 = 32500000;

class ObjectSelectionTest : public testing::Test {
 protected:
    ObjectSelectionTest() {
        obj.obj_bezu = 1;
        obj.obj_bezu_elli = 1;
        obj.obj_bezu_abbi = 1;
        obj.obj_nube_meridian = 9;
    }
    [[nodiscard]] SelectionControls controls(double roh_rw_min = strip_3) const {
        return selection_controls(obj, roh_rw_min);
    }
    void set_puwe(int code) { obj.obj_puwe = static_cast<std::int16_t>(code); }
    void set_beob(int code) { obj.obj_beob = static_cast<std::int16_t>(code); }

    ObjectSelection obj;
};

TEST_F(ObjectSelectionTest, EpochLabelsGoWithChangesOnly) {
    for (int puwe = 0; puwe <= 8; ++puwe) {
        set_puwe(puwe);
        EXPECT_EQ(controls().chk_epbe, puwe >= 1 && puwe <= 3) << puwe;
    }
}

TEST_F(ObjectSelectionTest, TestOfResidualsGoesWithOneKindOfResidualsOnly) {
    for (int puwe = 0; puwe <= 8; ++puwe) {
        set_puwe(puwe);
        EXPECT_EQ(controls().chk_test_restkl, puwe == 4 || puwe == 5) << puwe;
    }
}

TEST_F(ObjectSelectionTest, TestOfObservationsNeedsObservations) {
    for (int beob = 0; beob <= 3; ++beob) {
        set_beob(beob);
        EXPECT_EQ(controls().chk_test_beob, beob >= 1) << beob;
    }
}

TEST_F(ObjectSelectionTest, ThirdTestIsNamedAfterTheObservations) {
    const std::array<std::string_view, 4> captions{"EP / EH", "EP", "EH", "EP"};
    for (int beob = 0; beob <= 3; ++beob) {
        set_beob(beob);
        EXPECT_EQ(controls().opt_test_3_caption, captions[static_cast<std::size_t>(beob)]) << beob;
    }
}

TEST_F(ObjectSelectionTest, WithoutATickedTestNoTestValueCanBeChosen) {
    const SelectionControls shown = controls();
    EXPECT_FALSE(shown.fra_test);
    EXPECT_THAT(shown.opt_test, ElementsAre(false, false, false, false));
}

TEST_F(ObjectSelectionTest, TestedObservationsHaveAllTestValues) {
    obj.obj_test_beob = table_true;
    EXPECT_TRUE(controls().fra_test);
    EXPECT_THAT(controls().opt_test, ElementsAre(false, true, true, true));
}

TEST_F(ObjectSelectionTest, TickThatIsOutOfUseDoesNotCount) {
    obj.obj_test_beob = table_true;
    obj.obj_test_restkl = table_true;
    set_beob(0);
    set_puwe(6);
    EXPECT_FALSE(controls().fra_test);
    EXPECT_THAT(controls().opt_test, ElementsAre(false, false, false, false));
}

TEST_F(ObjectSelectionTest, TestedResidualsHaveNoThirdTestValueWhateverTheObservations) {
    set_puwe(5);
    obj.obj_test_restkl = table_true;
    obj.obj_test_beob = table_true;
    EXPECT_TRUE(controls().fra_test);
    EXPECT_THAT(controls().opt_test, ElementsAre(false, true, true, false));
}

TEST_F(ObjectSelectionTest, ThirdTestValueMovesToTheFirstWhenResidualsAreTested) {
    obj.obj_test = 3;
    settle_test(obj);
    EXPECT_EQ(obj.obj_test, 3);
    obj.obj_test_restkl = table_true;
    settle_test(obj);
    EXPECT_EQ(obj.obj_test, 3);  // no residuals are shown
    set_puwe(4);
    settle_test(obj);
    EXPECT_EQ(obj.obj_test, 1);
    obj.obj_test = 2;
    settle_test(obj);
    EXPECT_EQ(obj.obj_test, 2);
}

TEST_F(ObjectSelectionTest, DistrictLabelsNeedDistricts) {
    for (int nube = 0; nube <= 5; ++nube) {
        obj.obj_nube = static_cast<std::int16_t>(nube);
        EXPECT_EQ(controls().opt_nbez, nube != 0) << nube;
        EXPECT_EQ(controls().nubemerit, nube == 2 || nube == 3) << nube;
    }
}

TEST_F(ObjectSelectionTest, MeridianStripIsShownAsANumber) {
    EXPECT_EQ(controls().txt_nubemerit, "9");
    obj.obj_nube_meridian = 0;
    EXPECT_EQ(controls().txt_nubemerit, "0");
    obj.obj_nube_meridian = 119;
    EXPECT_EQ(controls().txt_nubemerit, "119");
    obj.obj_nube_meridian = -99;
    EXPECT_EQ(controls().txt_nubemerit, "");
}

TEST_F(ObjectSelectionTest, SizeOfTheEastingDecidesBetweenDhdnAndEtrs) {
    EXPECT_THAT(controls(2500000).opt_bezu, ElementsAre(true, true, false, true));
    EXPECT_THAT(controls(32500000).opt_bezu, ElementsAre(true, false, true, true));
    EXPECT_THAT(controls(15999999.99).opt_bezu, ElementsAre(true, true, false, true));
    EXPECT_THAT(controls(16000000).opt_bezu, ElementsAre(true, false, true, true));
    EXPECT_THAT(controls(-17000000).opt_bezu, ElementsAre(true, true, false, true));
}

TEST_F(ObjectSelectionTest, FixedSystemsShowTheirEllipsoidAndMappingOutOfUse) {
    const SelectionControls dhdn = controls();
    EXPECT_TRUE(dhdn.fra_bezug);
    EXPECT_EQ(dhdn.opt_bezu_checked, 1);
    EXPECT_FALSE(dhdn.cbo_bezu);
    EXPECT_EQ(dhdn.cbo_bezu_elli, 1);
    EXPECT_EQ(dhdn.cbo_bezu_abbi, 1);
    obj.obj_bezu = 2;
    obj.obj_bezu_elli = 4;
    obj.obj_bezu_abbi = 2;
    const SelectionControls etrs = controls(zone_32);
    EXPECT_EQ(etrs.opt_bezu_checked, 2);
    EXPECT_FALSE(etrs.cbo_bezu);
    EXPECT_EQ(etrs.cbo_bezu_elli, 4);
    EXPECT_EQ(etrs.cbo_bezu_abbi, 2);
}

TEST_F(ObjectSelectionTest, OtherSystemHasItsEllipsoidAndMappingChosen) {
    obj.obj_bezu = 3;
    obj.obj_bezu_elli = 5;
    EXPECT_TRUE(controls().cbo_bezu);
    EXPECT_EQ(controls().cbo_bezu_elli, 5);
    EXPECT_TRUE(controls().fra_nummebez);
    EXPECT_TRUE(controls().fra_verwaltung);
}

TEST_F(ObjectSelectionTest, SystemBringsDistrictsAndBoundariesAsStored) {
    obj.obj_nube = 4;
    obj.obj_verw = 6;
    const SelectionControls shown = controls();
    EXPECT_TRUE(shown.fra_nummebez);
    EXPECT_EQ(shown.opt_nube_checked, 4);
    EXPECT_TRUE(shown.fra_verwaltung);
    EXPECT_EQ(shown.opt_verw_checked, 6);
}

TEST_F(ObjectSelectionTest, LocalSystemHasNeitherDistrictsNorBoundaries) {
    obj.obj_bezu = 0;
    obj.obj_nube = 2;
    obj.obj_verw = 6;
    obj.obj_bezu_elli = 4;
    obj.obj_bezu_abbi = 2;
    const SelectionControls shown = controls();
    EXPECT_TRUE(shown.fra_bezug);
    EXPECT_EQ(shown.opt_bezu_checked, 0);
    EXPECT_THAT(shown.opt_bezu, ElementsAre(true, true, false, true));
    EXPECT_FALSE(shown.fra_nummebez);
    EXPECT_EQ(shown.opt_nube_checked, 0);
    EXPECT_FALSE(shown.opt_nbez);
    EXPECT_FALSE(shown.nubemerit);
    EXPECT_EQ(shown.txt_nubemerit, "");
    EXPECT_FALSE(shown.fra_verwaltung);
    EXPECT_EQ(shown.opt_verw_checked, 0);
    EXPECT_FALSE(shown.cbo_bezu);
    EXPECT_EQ(shown.cbo_bezu_elli, 1);
    EXPECT_EQ(shown.cbo_bezu_abbi, 1);
    // What was chosen comes back with a system.
    EXPECT_EQ(obj.obj_nube, 2);
    EXPECT_EQ(obj.obj_verw, 6);
}

TEST_F(ObjectSelectionTest, UnsettledSystemCannotBeChosenAtAll) {
    obj.obj_bezu = -99;
    const SelectionControls shown = controls();
    EXPECT_FALSE(shown.fra_bezug);
    EXPECT_EQ(shown.opt_bezu_checked, no_option);
    EXPECT_THAT(shown.opt_bezu, ElementsAre(false, false, false, false));
    EXPECT_FALSE(shown.fra_nummebez);
    EXPECT_FALSE(shown.fra_verwaltung);
}

TEST_F(ObjectSelectionTest, MeridianWrapsAtBothEnds) {
    obj.obj_nube_meridian = 119;
    step_meridian(obj, 1);
    EXPECT_EQ(obj.obj_nube_meridian, 0);
    step_meridian(obj, -1);
    EXPECT_EQ(obj.obj_nube_meridian, 119);
    step_meridian(obj, -1);
    EXPECT_EQ(obj.obj_nube_meridian, 118);
}

TEST_F(ObjectSelectionTest, TypedMeridianIsTakenAsANumberWithinTheStrips) {
    const std::array<std::pair<const char*, std::int32_t>, 9> typed{{{"12", 12},
                                                                     {"0", 0},
                                                                     {"119", 119},
                                                                     {"120", 0},
                                                                     {"-1", 119},
                                                                     {"abc", 0},
                                                                     {"", 0},
                                                                     {"3,6", 4},
                                                                     {"9e99", 0}}};
    for (const auto& [text, strip] : typed) {
        type_meridian(obj, text);
        EXPECT_EQ(obj.obj_nube_meridian, strip) << text;
    }
}

/// A part with coordinates in strip 3, read by a selection.
class SelectionTaken : public testing_support::SessionOnFile {
 protected:
    void open(const char* records) {
        use_file(records);
        datei_lesen(session, desk);
        drawn = 0;
    }

    test::FakeMeasurer measurer;
    test::RecordingInterface ui;
    int drawn = 0;
    Desk desk{measurer, ui, [this] { ++drawn; }};
};

constexpr const char* two_kinds =
    "PUNKTSIGNATUR 3500000 5600000 0 0 1 \"1\"\nPUNKTSIGNATUR 3500100 5600000 0 0 1 \"2\"\n"
    "PUNKTSIGNATUR 3500100 5600100 0 0 1 \"3\"\n"
    "DISTANZ 3500000 5600000 3500100 5600000\n"
    "HÖHENUNTERSCHIED 3500000 5600000 3500100 5600100\n"
    "HÖHENUNTERSCHIED 3500100 5600000 3500100 5600100\n"
    "LAGERESTKLAFFUNGEN 3500000 5600000 2.0 3.0\n";

TEST_F(SelectionTaken, ReadsTheChosenObservationsAndKeepsThePointsAndTheView) {
    open(two_kinds);
    ASSERT_EQ(session.lin.count(), 1);
    session.pu[1].pu_bez_rechts = 77;
    const Viewport before = session.view;
    session.obj.obj_beob = 2;
    auswahl_uebernehmen(session, session.obj, SelectionLeft::by_ok, desk);
    EXPECT_EQ(session.lin.count(), 2);
    EXPECT_EQ(session.pu[1].pu_bez_rechts, 77);
    EXPECT_EQ(session.view.ansicht_rw_min, before.ansicht_rw_min);
    EXPECT_EQ(session.view.ansicht_masseinheit, before.ansicht_masseinheit);
    EXPECT_EQ(drawn, 1);
    EXPECT_THAT(ui.pointers, testing::Contains(11));
    EXPECT_EQ(ui.pointers.back(), 0);
}

TEST_F(SelectionTaken, RunsTheTwoPassesOfTheSelectionOnly) {
    open(two_kinds);
    // Another text in the file shows who has looked into it since.
    use_file(
        "VERFAHRENLEGENDE anders\nMAßSTABGRUNDRISS 500\nTITEL2 anders\n"
        "OBJEKTE 0 0 0 0 0 0 0 0 0 1 0 1 1 -99 0\nNUMBEZOFFSET 5208 1 2\n"
        "PUNKTSIGNATUR 3500000 5600000 0 0 1 \"anders\"\n"
        "PUNKTSIGNATUR 3500900 5600900 0 0 1 \"neu\"\n"
        "DISTANZ 3500000 5600000 3500100 5600000\nDISTANZ 3500000 5600000 3500100 5600100\n");
    const double scale = session.plot.plot_massstab;
    const std::string title = session.titel[0].getTitelText();
    auswahl_uebernehmen(session, session.obj, SelectionLeft::by_ok, desk);
    // Header and point pass stayed away.
    EXPECT_EQ(session.titel[0].getTitelText(), title);
    EXPECT_EQ(session.titel[1].getTitelText(), "");
    EXPECT_EQ(session.plot.plot_massstab, scale);
    EXPECT_EQ(session.pu.count(), 3);
    EXPECT_EQ(session.pu[1].pu_bez, "1");
    EXPECT_EQ(session.nuoff.count(), 0);
    EXPECT_EQ(session.obj.obj_beob, 1);
    // The other two read what is there now.
    EXPECT_EQ(session.lin.count(), 2);
}

TEST_F(SelectionTaken, DerivesTheValueModes) {
    open(two_kinds);
    session.obj.obj_puwe = 6;
    auswahl_uebernehmen(session, session.obj, SelectionLeft::by_closing, desk);
    EXPECT_EQ(session.obj.obj_wert_lage, 2);
    EXPECT_EQ(session.obj.obj_wert_hoehe, 2);
    EXPECT_EQ(session.pu[1].pu_wert_lage, -2);  // the record without a flag belongs to a new point
}

TEST_F(SelectionTaken, ExtentsFollowTheSelection) {
    open(two_kinds);
    session.extents = Extents();
    auswahl_uebernehmen(session, session.obj, SelectionLeft::by_ok, desk);
    EXPECT_EQ(session.extents.roh_rw_min, 3500000);
    EXPECT_EQ(session.extents.roh_hw_min, 5600000);
}

TEST_F(SelectionTaken, EmptyPartIsFittedAndByOkMovesTheZeroPoint) {
    open("HÖHENUNTERSCHIED 3500000 5600000 3500100 5600100\n");
    ASSERT_EQ(session.lin.count(), 0);
    session.view = Viewport();
    session.plot.plot_null_rechts = 1;
    session.plot.plot_null_hoch = 2;
    auswahl_uebernehmen(session, session.obj, SelectionLeft::by_closing, desk);
    // Nothing gives the square from -2.5 to 2.5, with a margin of 5 %: -2.75 to 2.75 at least.
    EXPECT_LE(session.view.ansicht_hw_min, -2.75);
    EXPECT_GE(session.view.ansicht_hw_max, 2.75);
    EXPECT_EQ(session.plot.plot_null_rechts, 1);
    auswahl_uebernehmen(session, session.obj, SelectionLeft::by_ok, desk);
    EXPECT_EQ(session.plot.plot_null_rechts, -2.5);
    EXPECT_EQ(session.plot.plot_null_hoch, -2.5);
    EXPECT_EQ(drawn, 2);
}

TEST_F(SelectionTaken, ANewLimitRunsTheTwoPassesAndKeepsTheRest) {
    open(
        "PUNKTSIGNATUR 3500000 5600000 0 0 1 \"1\"\nPUNKTSIGNATUR 3500100 5600000 0 0 1 \"2\"\n"
        "DISTANZ 3500000 5600000 3500100 5600000 5.0 9.0 8.0\n"
        "LAGERESTKLAFFUNGEN 3500000 5600000 2.0 3.0 1 5.0 6.0 5.2 6.2\n");
    session.obj.obj_puwe = 4;
    auswahl_uebernehmen(session, session.obj, SelectionLeft::by_ok, desk);
    ASSERT_EQ(session.lin[1].lin_nv_seite, 9.0);
    ASSERT_EQ(session.pu[1].pu_nv_lage, 6.0);
    session.pu[1].pu_bez_rechts = 77;
    const Viewport view = session.view;
    drawn = 0;
    session.settings.stndwert = 5.1;
    session.extents = Extents();
    grenzwert_uebernehmen(session, 0.5, desk);
    EXPECT_EQ(session.lin[1].lin_ev_seite, 5.0);
    EXPECT_EQ(session.lin[1].lin_nv_seite, -99.0);
    EXPECT_EQ(session.lin[1].lin_ep_seite, -99.0);
    EXPECT_EQ(session.pu[1].pu_ev_lage, 5.0);
    EXPECT_EQ(session.pu[1].pu_nv_lage, -99.0);
    EXPECT_EQ(session.pu[1].pu_bez_rechts, 77);
    EXPECT_EQ(session.extents.roh_rw_min, 3500000);
    EXPECT_EQ(session.view.ansicht_masseinheit, view.ansicht_masseinheit);
    EXPECT_EQ(session.obj.obj_puwe, 4);
    EXPECT_EQ(drawn, 1);
    EXPECT_EQ(ui.pointers.back(), 0);
}

TEST_F(SelectionTaken, ANewLimitMovesNoEmptyView) {
    open("HÖHENUNTERSCHIED 3500000 5600000 3500100 5600100\n");
    ASSERT_EQ(session.lin.count(), 0);
    session.view = Viewport();
    session.plot.plot_null_rechts = 1;
    session.settings.stndwert = 2;
    grenzwert_uebernehmen(session, 0.5, desk);
    EXPECT_EQ(session.view.ansicht_masseinheit, Viewport().ansicht_masseinheit);
    EXPECT_EQ(session.plot.plot_null_rechts, 1);
    EXPECT_EQ(drawn, 1);
}

TEST_F(SelectionTaken, WithoutAFileOnlyTheModesFollow) {
    session.obj.obj_puwe = 8;
    auswahl_uebernehmen(session, session.obj, SelectionLeft::by_ok, desk);
    EXPECT_EQ(session.obj.obj_wert_hoehe, 3);
    EXPECT_EQ(drawn, 0);
    EXPECT_TRUE(ui.pointers.empty());
}

TEST_F(SelectionTaken, AnotherSystemIsSettledAtOnce) {
    open(two_kinds);
    ASSERT_EQ(session.obj.obj_bezu, 1);
    ASSERT_EQ(session.obj.obj_nube_meridian, 3);
    choose_reference_system(session, 0);
    EXPECT_EQ(session.obj.obj_bezu, 0);
    EXPECT_EQ(session.obj.obj_nube_meridian, -99);
    choose_reference_system(session, 3);
    EXPECT_EQ(session.obj.obj_bezu, 3);
    EXPECT_EQ(session.obj.obj_nube_meridian, 3);
    choose_ellipsoid(session, 5);
    EXPECT_EQ(session.obj.obj_bezu_elli, 5);
    // A mapping into zones does not go with coordinates in strips.
    choose_mapping(session, 2);
    EXPECT_EQ(session.obj.obj_bezu_abbi, 1);
    EXPECT_EQ(session.obj.obj_bezu_elli, 1);
}

}  // namespace
}  // namespace veldra
