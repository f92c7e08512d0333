// Values that stand exactly on a limit, and those just beside it.
#include <string>

#include <gmock/gmock.h>

#include "graphikdatei/writer.h"
#include "session_fixture.h"

namespace veldra {
namespace {

class EdgesOfRanges : public testing_support::SessionOnFile {
 protected:
    /// The line of the plot settings in the final form of a part of one point.
    std::string written_plot_scale(const PlotSettings& settings) {
        use_file("NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0 1\n");
        vektor_standard(session);
        set_selection_defaults(session.obj);
        kopf_lesen(session);
        punkt_lesen(session);
        session.datei_geladen = 1;
        session.plot = settings;
        endfassung_schreiben(session);
        const std::string text = file_text();
        const std::size_t begin = text.find("MaßstabGrundriss ");
        return begin == std::string::npos ? ""
                                          : text.substr(begin, text.find("\r\n", begin) - begin);
    }
};

TEST_F(EdgesOfRanges, LegendPlaceCountsInTheLayoutCodeFrom1To4Only) {
    PlotSettings plot;
    plot.plot_massstab = 0.001;
    plot.plot_ausrichtung = 1;
    plot.plot_heftrand = 2;
    plot.plot_blatt_auto = table_true;
    // Orientation 1 + 4 times margin 2, and 16 times the place.
    const std::pair<int, std::string> codes[] = {
        {0, "     9"}, {1, "    25"}, {4, "    73"}, {5, "     9"}};
    for (const auto& [place, code] : codes) {
        plot.plot_legendenlage = static_cast<std::int16_t>(place);
        EXPECT_EQ(written_plot_scale(plot),
                  "MaßstabGrundriss 1000          0.000          0.000" + code)
            << place;
    }
}

TEST_F(EdgesOfRanges, AScaleOf1IsOneAndLessIsNone) {
    use_file("NETZTEIL A\nMAßSTABGRUNDRISS 1\nNETZTEIL B\nMAßSTABGRUNDRISS 0.999\n");
    kopf_lesen(session);
    ASSERT_EQ(session.netz.count(), 2);
    EXPECT_EQ(session.netz[1].netz_massstab, 1.0);
    EXPECT_EQ(session.netz[2].netz_massstab, -99.0);
}

TEST_F(EdgesOfRanges, PointKindsReachTo9) {
    use_file("PUNKTSIGNATUR 1 2 9 9 1\nPUNKTSIGNATUR 3 4 10 10 1\nPUNKTSIGNATUR 5 6 -1 -1 1\n");
    punkt_lesen(session);
    ASSERT_EQ(session.pu.count(), 3);
    EXPECT_EQ(session.pu[1].pu_art_lage, 9);
    EXPECT_EQ(session.pu[1].pu_art_hoehe, 9);
    for (const std::int32_t row : {2, 3}) {
        EXPECT_EQ(session.pu[row].pu_art_lage, 0);
        EXPECT_EQ(session.pu[row].pu_art_hoehe, 0);
    }
}

TEST_F(EdgesOfRanges, EvOnTheLimitShowsTheOtherTests) {
    session.settings.stndwert = 2.5;
    read_observations(
        "DISTANZ 1 2 3 4 2.5 1.5 0.5\nDISTANZ 1 2 5 6 2.4 1.5 0.5\n"
        "RICHTUNG 1 2 3 4 2.5 1.75 0.25\n",
        1);
    ASSERT_EQ(session.lin.count(), 2);
    EXPECT_EQ(session.lin[1].lin_ev_seite, 2.5);
    EXPECT_EQ(session.lin[1].lin_nv_seite, 1.5);
    EXPECT_EQ(session.lin[1].lin_ep_seite, 0.5);
    EXPECT_EQ(session.lin[1].lin_nv_hin, 1.75);
    EXPECT_EQ(session.lin[1].lin_ep_hin, 0.25);
    EXPECT_EQ(session.lin[2].lin_ev_seite, 2.4);
    EXPECT_EQ(session.lin[2].lin_nv_seite, -99.0);
    EXPECT_EQ(session.lin[2].lin_ep_seite, -99.0);
}

TEST_F(EdgesOfRanges, EvOfAResidualOnTheLimitShowsItsNv) {
    session.settings.stndwert = 2.5;
    read_values(
        "LAGERESTKLAFFUNGEN 1 2 3 4 1 2.5 1.5 2.4 1.75\n"
        "HÖHENRESTKLAFFUNGEN 1 2 3 1 9 9\n",
        4);
    ASSERT_EQ(session.pu.count(), 1);
    EXPECT_EQ(session.pu[1].pu_ev_lage, 2.5);
    EXPECT_EQ(session.pu[1].pu_nv_lage, 1.5);
    EXPECT_EQ(session.pu[1].pu_ev_hoehe, 2.4);
    EXPECT_EQ(session.pu[1].pu_nv_hoehe, -99.0);
}

}  // namespace
}  // namespace veldra
