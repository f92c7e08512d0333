#include "model/long_work.h"

#include <algorithm>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "commands/lifecycle.h"
#include "commands/write_back.h"
#include "dialogs/object_selection.h"
#include "fake_measurer.h"
#include "graphikdatei/writer.h"
#include "model/undo.h"
#include "recording_interface.h"
#include "session_fixture.h"
#include "settings/defaults.h"

namespace veldra {
namespace {

class EndsAt final : public LongWork {
 public:
    explicit EndsAt(int last) : last_(last) {}
    bool goes_on() override { return ++calls < last_; }
    int calls = 0;

 private:
    int last_;
};

using LongWorkOnFile = testing_support::SessionOnFile;

constexpr const char* one_point =
    "NETZTEIL A\r\nPUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"1\"\r\n";

TEST_F(LongWorkOnFile, PassesTellOfTheirReading) {
    use_file(one_point);
    EndsAt work(1000);
    session.work = &work;
    kopf_lesen(session);
    punkt_lesen(session);
    // Each pass reads one window of the file and finds its end.
    EXPECT_EQ(work.calls, 4);
    EXPECT_EQ(session.pu.count(), 1);
}

TEST_F(LongWorkOnFile, APassThatIsGivenUpThrows) {
    use_file(one_point);
    EndsAt work(1);
    session.work = &work;
    EXPECT_THROW(kopf_lesen(session), WorkCancelled);
}

TEST_F(LongWorkOnFile, WritingIsNeverGivenUp) {
    read_points(one_point);
    session.datei_geladen = 1;
    EndsAt work(1);
    session.work = &work;
    arbeitskopie_schreiben(session);
    endfassung_schreiben(session);
    // Each writing reads one window of what was there before, and finds its end.
    EXPECT_EQ(work.calls, 4);
    EXPECT_NE(file_text().find("Objekte"), std::string::npos);
}

TEST_F(LongWorkOnFile, AForgottenFileLeavesNothing) {
    read_points(one_point);
    store_undo(session.window, {undo_kind::point_label, 1, {}}, undo_caption::point_label);
    session.window.frm_massstab_shown = true;
    session.window.lbl_legende_visible = true;
    session.plotmodus = 1;
    session.window.fenstertitel = "VELDRA [x]";
    const std::uint64_t revision = session.tables_revision;
    forget_file(session);
    EXPECT_TRUE(session.graphikdatei.empty());
    EXPECT_EQ(session.datei_geladen, 0);
    EXPECT_EQ(session.netz.count(), 0);
    EXPECT_EQ(session.netz_aktuell, 0);
    EXPECT_EQ(session.pu.count(), 0);
    EXPECT_GT(session.tables_revision, revision);
    EXPECT_EQ(session.window.caption, "VELDRA - [keine Graphikdatei eröffnet]");
    EXPECT_EQ(session.window.fenstertitel, "VELDRA - [keine Graphikdatei eröffnet]");
    EXPECT_EQ(session.window.undo.undo_art, 0);
    EXPECT_FALSE(session.window[ToolButton::rueckgaengig].enabled);
    EXPECT_FALSE(session.window.frm_massstab_shown);
    EXPECT_FALSE(session.window[ToolButton::massstaebe].enabled);
    EXPECT_FALSE(session.window[MenuItem::m_ansicht_massstab].enabled);
    EXPECT_FALSE(session.window.lbl_legende_visible);
    EXPECT_EQ(session.plotmodus, 0);
}

using Shares = std::vector<std::optional<double>>;

/// Notes how far the work says it is.
class Listener final : public LongWork {
 public:
    bool goes_on() override {
        shares.push_back(share());
        steps.push_back(step());
        return true;
    }
    Shares shares;
    std::vector<Step> steps;
};

TEST(WorkShare, ReadingsShareTheWork) {
    Listener work;
    EXPECT_EQ(work.share(), std::nullopt);
    EXPECT_EQ(work.step(), LongWork::Step::unknown);
    work.expect_readings(4);
    work.tell_reading(0.5);
    EXPECT_EQ(work.share(), 0.125);
    EXPECT_EQ(work.step(), LongWork::Step::reading);
    work.tell_read();
    EXPECT_EQ(work.share(), 0.25);
    work.tell_reading(0.5);
    EXPECT_EQ(work.share(), 0.375);
    work.tell_drawing(0.3);
    EXPECT_EQ(work.share(), 0.3);
    EXPECT_EQ(work.step(), LongWork::Step::drawing);
}

TEST(WorkShare, MoreReadingsThanExpectedStayWithinTheWhole) {
    Listener work;
    work.tell_reading(0.5);
    EXPECT_EQ(work.share(), 0.5);
    work.tell_read();
    EXPECT_EQ(work.share(), 1.0);
    work.tell_reading(0.5);
    EXPECT_EQ(work.share(), 0.75);  // half of the second of two
    work.tell_drawing(1.7);
    EXPECT_EQ(work.share(), 1.0);
}

TEST(WorkShare, WritingsShareTheWork) {
    Listener work;
    work.expect_writings(2);
    EXPECT_EQ(work.step(), LongWork::Step::writing);
    EXPECT_EQ(work.share(), std::nullopt);
    work.tell_writing(0.5);
    EXPECT_EQ(work.share(), 0.25);
    work.tell_written();
    EXPECT_EQ(work.step(), LongWork::Step::unknown);
    EXPECT_EQ(work.share(), std::nullopt);
    work.tell_writing(0.5);
    EXPECT_EQ(work.share(), 0.75);
    work.expect_readings(4);
    EXPECT_EQ(work.step(), LongWork::Step::reading);
    EXPECT_EQ(work.share(), std::nullopt);
    work.tell_reading(0.5);
    EXPECT_EQ(work.share(), 0.125);
}

/// The lifecycle of a file with a listener.
class LongWorkOnDesk : public testing_support::SessionOnFile {
 protected:
    void open(std::string_view utf8) {
        datei_neu_laden(session, folder.file("ve.dat", from_utf8(utf8)), OpenedBy::open_command,
                        desk);
    }

    /// Gives `act` up at its first question, then at its second and so on, until it comes to its
    /// end. `unchanged` looks at the session after each time it was given up.
    template <typename Act, typename Unchanged>
    int give_up_everywhere(const Act& act, const Unchanged& unchanged) {
        constexpr int enough = 100;
        for (int last = 1; last < enough; ++last) {
            EndsAt work(last);
            session.work = &work;
            bool given_up = false;
            try {
                act();
            } catch (const WorkCancelled&) {
                given_up = true;
            }
            session.work = nullptr;
            if (!given_up) {
                return last - 1;
            }
            unchanged();
        }
        return enough;
    }

    test::FakeMeasurer measurer;
    test::RecordingInterface ui;
    int drawn = 0;
    Desk desk{measurer, ui, [this] { ++drawn; }};
};

/// 8192 lines of 64 bytes: two windows of the reader.
std::string two_windows() {
    std::string text;
    for (int i = 0; i < 8192; ++i) {
        std::string line = "PUNKTSIGNATUR " + std::to_string(3500000 + i) + " 5600000 0 0 1 \"1\"";
        line.resize(62, ' ');
        text += line + "\r\n";
    }
    return text;
}

TEST_F(LongWorkOnDesk, OpeningTellsItsShareOfSixReadings) {
    Listener work;
    session.work = &work;
    open(two_windows());
    session.work = nullptr;
    // A reading asks before its first window, before its second, and before it finds the end.
    ASSERT_EQ(work.shares.size(), 18U);
    EXPECT_EQ(work.shares[0], std::nullopt);
    for (std::size_t i = 1; i < work.shares.size(); ++i) {
        const std::size_t reading = i / 3;
        const double of_this_one = static_cast<double>(i % 3) / 2;
        ASSERT_TRUE(work.shares[i].has_value());
        EXPECT_DOUBLE_EQ(*work.shares[i], (static_cast<double>(reading) + of_this_one) / 6) << i;
        EXPECT_EQ(work.steps[i], LongWork::Step::reading);
    }
    EXPECT_EQ(work.share(), 1.0);
}

TEST_F(LongWorkOnDesk, WritingBackTellsItsShareOfTwoWritings) {
    open(two_windows());
    Listener work;
    session.work = &work;
    datei_zurueckschreiben(session, desk);
    session.work = nullptr;
    for (const LongWork::Step step : work.steps) {
        EXPECT_EQ(step, LongWork::Step::writing);
    }
    // The working copy: before the first window, twice among the 8192 points that follow its first
    // line, before the second window and before the end. Its lines of 72 bytes make three windows
    // for the final form.
    ASSERT_EQ(work.shares.size(), 9U);
    EXPECT_EQ(Shares(work.shares.begin(), work.shares.begin() + 6),
              Shares({0.0, 0.25, 0.25, 0.25, 0.5, 0.5}));
    EXPECT_GT(work.shares[6], 0.5);
    EXPECT_GT(work.shares[7], work.shares[6]);
    EXPECT_EQ(work.shares[8], 1.0);
}

constexpr const char* two_parts_to_read =
    "NETZTEIL A\nMAßSTABGRUNDRISS 1000\nTITEL2 erstes\n"
    "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nPUNKTSIGNATUR 40 60 0 0 0 \"2\"\n"
    "LAGEFEHLERELLIPSE 10 20 1.5 0.5 30\nDISTANZ 10 20 40 60 0\n"
    "NETZTEIL B\nMAßSTABGRUNDRISS 500\nOBJEKTE 1 1 0 0 0 0 0 2 0 1 0 1 1\n"
    "PUNKTSIGNATUR 110 120 0 0 1 \"3\"\n";

TEST_F(LongWorkOnDesk, AnotherPartGivenUpAnywhereLeavesTheFormerOne) {
    open(two_parts_to_read);
    session.pu[2].pu_bez_rechts = 70;
    session.obj.obj_pube = 0;
    session.plotmodus = 1;
    session.plot.plot_null_rechts = 12;
    session.nuoff[session.nuoff.append()].nuoff_bez = "35005600";
    session.lbl_pubez.resize(3);
    session.lbl_pubez[2].caption = "2";
    drawn = 0;
    const Extents extents = session.extents;
    const int times =
        give_up_everywhere([this] { netzteil_anzeigen(session, 2, desk); },
                           [&] {
                               EXPECT_EQ(session.netz_aktuell, 1);
                               EXPECT_EQ(session.datei_geladen, 1);
                               EXPECT_EQ(session.plotmodus, 1);
                               EXPECT_EQ(session.pu.count(), 2);
                               EXPECT_EQ(session.pu[2].pu_bez_rechts, 70);
                               EXPECT_EQ(session.pu.punkt_finden(40, 60), 2);
                               EXPECT_EQ(session.lin.count(), 1);
                               EXPECT_EQ(session.nuoff.count(), 1);
                               EXPECT_EQ(session.obj.obj_pube, 0);
                               EXPECT_EQ(session.obj.obj_beob, 1);
                               EXPECT_EQ(session.titel[1].getTitelText(), "erstes");
                               EXPECT_EQ(session.plot.plot_massstab, 1.0 / 1000);
                               EXPECT_EQ(session.plot.plot_null_rechts, 12);
                               EXPECT_EQ(session.lbl_pubez.at(2).caption, "2");
                               EXPECT_EQ(session.extents.gesamt_rw_max, extents.gesamt_rw_max);
                               EXPECT_EQ(ui.pointers.back(), 0);
                               EXPECT_EQ(drawn, 0);
                           });
    // A writing and three readings, each with its window and its end. What is given up amid the
    // writing ends with it.
    EXPECT_EQ(times, 8);
    EXPECT_EQ(session.netz_aktuell, 2);
    EXPECT_EQ(session.obj.obj_beob, 2);
    EXPECT_EQ(session.pu.count(), 1);
    EXPECT_EQ(drawn, 1);
    netzteil_anzeigen(session, 1, desk);
    EXPECT_EQ(session.pu[2].pu_bez_rechts, 70);
    EXPECT_EQ(session.nuoff.count(), 1);
}

TEST_F(LongWorkOnDesk, AnotherSelectionGivenUpAnywhereLeavesTheFormerOne) {
    open(two_parts_to_read);
    session.obj.obj_puwe = 7;
    auswahl_uebernehmen(session, session.obj, SelectionLeft::by_ok, desk);
    ASSERT_EQ(session.pu[1].pu_wert_lage, -3);
    session.pu[2].pu_bez_rechts = 70;
    const ObjectSelection before = session.obj;
    drawn = 0;
    const auto choose = [this] {
        session.obj.obj_puwe = 8;
        session.obj.obj_beob = 2;
    };
    choose();
    const int times = give_up_everywhere(
        [&] { auswahl_uebernehmen(session, before, SelectionLeft::by_ok, desk); },
        [&] {
            EXPECT_EQ(session.obj.obj_puwe, 7);
            EXPECT_EQ(session.obj.obj_wert_lage, 3);
            EXPECT_EQ(session.obj.obj_wert_hoehe, 0);
            EXPECT_EQ(session.obj.obj_beob, 1);
            EXPECT_EQ(session.lin.count(), 1);
            EXPECT_EQ(session.pu[1].pu_wert_lage, -3);
            EXPECT_EQ(session.pu[1].pu_wert_rechts, 1.5);
            EXPECT_EQ(session.pu[2].pu_bez_rechts, 70);
            EXPECT_EQ(session.pu.punkt_finden(40, 60), 2);
            EXPECT_EQ(drawn, 0);
            choose();
        });
    EXPECT_EQ(times, 4);
    EXPECT_EQ(session.obj.obj_beob, 2);
    EXPECT_EQ(session.lin.count(), 0);
    EXPECT_EQ(session.pu[1].pu_wert_lage, 0);
    EXPECT_EQ(session.pu[2].pu_bez_rechts, 70);
    EXPECT_EQ(drawn, 1);
}

TEST_F(LongWorkOnDesk, AnotherSelectionWithoutValuesKeepsThePoints) {
    open(two_parts_to_read);
    const PointRow* const row = &session.pu[1];
    const ObjectSelection before = session.obj;
    session.obj.obj_beob = 2;
    EndsAt work(1);
    session.work = &work;
    EXPECT_THROW(auswahl_uebernehmen(session, before, SelectionLeft::by_ok, desk), WorkCancelled);
    EXPECT_EQ(&session.pu[1], row);
    EXPECT_EQ(session.obj.obj_beob, 1);
    EXPECT_EQ(session.lin.count(), 1);
}

TEST_F(LongWorkOnDesk, ANewLimitGivenUpAnywhereLeavesTheFormerOne) {
    open(
        "NETZTEIL A\nPUNKTSIGNATUR 10 20 0 0 1\nPUNKTSIGNATUR 40 60 0 0 1\n"
        "DISTANZ 10 20 40 60 5.0 9.0\n");
    standard_test(session, 2);
    drawn = 0;
    const int times = give_up_everywhere(
        [&] {
            session.settings.stndwert = 7;
            standard_test(session, 2);
            grenzwert_uebernehmen(session, 0.5, desk);
        },
        [&] {
            EXPECT_EQ(session.settings.stndwert, 0.5);
            EXPECT_EQ(session.twins.settings.stndwert, 0.5);
            EXPECT_EQ(session.lin[1].lin_nv_seite, 9.0);
            EXPECT_EQ(drawn, 0);
        });
    EXPECT_EQ(times, 4);
    EXPECT_EQ(session.settings.stndwert, 7);
    EXPECT_EQ(session.lin[1].lin_nv_seite, -99);
    EXPECT_EQ(drawn, 1);
}

TEST_F(LongWorkOnDesk, AReadingAnewThatIsGivenUpLeavesNoFileLoaded) {
    open(two_parts_to_read);
    EndsAt work(1);
    session.work = &work;
    EXPECT_THROW(datei_erneut_lesen(session, desk), WorkCancelled);
    EXPECT_EQ(session.datei_geladen, 0);
}

}  // namespace
}  // namespace veldra
