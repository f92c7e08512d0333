// Each value of the tables stands under its own name: all values of the files are different.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "program_run.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using testing_support::file_bytes;
using testing_support::ProgramRun;
using testing_support::TempFolder;

class Tables : public ::testing::Test {
 protected:
    json read(std::string_view utf8, std::vector<std::string> more = {}) {
        more.insert(more.begin(), {"tabellen", folder.file("ve.dat", from_utf8(utf8))});
        const ProgramRun result = testing_support::run_veldra(folder, more);
        EXPECT_EQ(result.exit_code, 0) << result.err;
        return json::parse(result.out);
    }
    /// Whether the object has these values, whatever else it has.
    static void expect_values(const json& object, const json& values) {
        for (const auto& [name, value] : values.items()) {
            EXPECT_EQ(object[name], value) << name;
        }
    }

    TempFolder folder;
};

TEST_F(Tables, PlotSettingsOfTheFileAndOfItsParts) {
    // The layout 54 is 2 + 4 x 1 + 16 x 3: lying, margin above, legend 3.
    const json t = read(
        "MAßSTABVEKTOREN 1 2 4 5 8 10\nNETZTEIL Eins\nMAßSTABGRUNDRISS 500 10.5 20.25 54 1 3 4\n"
        "PUNKTSIGNATUR 1000 2000 0 0 1\nTITEL2 zwei\nTITEL3 drei\nTITEL4 vier\n"
        "NETZTEIL Zwei\nMAßSTABGRUNDRISS 250 7 8 73\n");
    expect_values(t["netz"][0], {{"netz_name", "Eins"},
                                 {"netz_massstab", 0.002},
                                 {"netz_ausrichtung", 2},
                                 {"netz_heftrand", 1},
                                 {"netz_legendenlage", 3},
                                 {"netz_blatt_auto", 0},
                                 {"netz_blatt_rechts", 3},
                                 {"netz_blatt_hoch", 4},
                                 {"netz_null_rechts", 10.5},
                                 {"netz_null_hoch", 20.25},
                                 {"netz_plotmarke", -1}});
    expect_values(t["plot"], {{"plot_massstab", 0.002},
                              {"plot_ausrichtung", 2},
                              {"plot_heftrand", 1},
                              {"plot_legendenlage", 3},
                              {"plot_blatt_auto", 0},
                              {"plot_blatt_rechts", 3},
                              {"plot_blatt_hoch", 4},
                              {"plot_null_rechts", 10.5},
                              {"plot_null_hoch", 20.25}});
    EXPECT_EQ(t["netz"][1]["netz_blatt_auto"], -1);
    EXPECT_EQ(t["vektor_massstab"], json({1.0, 0.5, 0.25, 0.2, 0.125, 0.1}));
    EXPECT_EQ(t["vektor_massstab_plot"], t["vektor_massstab"]);
    EXPECT_EQ(t["titel"][1], "zwei");
    EXPECT_EQ(t["titel"][2], "drei");
    EXPECT_EQ(t["titel"][3], "vier");
}

TEST_F(Tables, SelectionOfAPart) {
    const json t = read("OBJEKTE 1 0 7 1 2 1 5 3 0 2 3 5 2 12 1\nPUNKTSIGNATUR 1 2 0 0 1\n");
    expect_values(t["obj"], {{"obj_pube", 1},
                             {"obj_pusi", 0},
                             {"obj_puwe", 7},
                             {"obj_wert_lage", 3},
                             {"obj_wert_hoehe", 0},
                             {"obj_test_restkl", -1},
                             {"obj_nube", 2},
                             {"obj_nbez", 1},
                             {"obj_verw", 5},
                             {"obj_beob", 3},
                             {"obj_test_beob", 0},
                             {"obj_test", 2},
                             {"obj_bezu", 3},
                             {"obj_bezu_elli", 5},
                             {"obj_bezu_abbi", 2},
                             {"obj_nube_meridian", 12},
                             {"obj_epbe", -1}});
    expect_values(read("OBJEKTE 1 1 2 0 0 0 0 0 1 1 0 1 1\n")["obj"],
                  {{"obj_wert_lage", 0}, {"obj_wert_hoehe", 1}, {"obj_test_beob", -1}});
}

TEST_F(Tables, PointsWithTheirLabelsAndValues) {
    const std::string points =
        "PUNKTSIGNATUR 1000 2000 4 7 1 \"A\" 30 -20\n"
        "PUNKTSIGNATUR 1100 2200 5 8 0 \"B\"\n"
        "NUMBEZOFFSET L 4711 1.5 -2.5\n";
    const json residuals = read("OBJEKTE 1 1 4 0 0 0 0 0 0 1 0 1 1\n" + points +
                                "LAGERESTKLAFFUNGEN 1000 2000 1.5 2.5 1 51 3 52 4\n");
    expect_values(residuals["pu"][0], {{"pu_rechts", 1000.0},
                                       {"pu_hoch", 2000.0},
                                       {"pu_signatur", 1},
                                       {"pu_art_lage", 4},
                                       {"pu_art_hoehe", 7},
                                       {"pu_bez", "A"},
                                       {"pu_bez_rechts", 30.0},
                                       {"pu_bez_hoch", -20.0},
                                       {"pu_wert_lage", 2},
                                       {"pu_wert_hoehe", 0},
                                       {"pu_wert_rechts", 1.5},
                                       {"pu_wert_hoch", 2.5},
                                       {"pu_wert_dh", 0.0},
                                       {"pu_ev_lage", 51.0},
                                       {"pu_nv_lage", 3.0},
                                       {"pu_ep_lage", -99.0},
                                       {"pu_ev_hoehe", 52.0},
                                       {"pu_nv_hoehe", 4.0},
                                       {"pu_eh_hoehe", -99.0}});
    expect_values(residuals["pu"][1],
                  {{"pu_signatur", -1}, {"pu_ev_lage", 1000.0}, {"pu_ev_hoehe", 1000.0}});
    expect_values(residuals["nuoff"][0],
                  {{"nuoff_bez", "L 4711"}, {"nuoff_rechts", 1.5}, {"nuoff_hoch", -2.5}});
    EXPECT_EQ(residuals["nuoff_anzahl"], 1);
    const json ellipses = read("OBJEKTE 1 1 7 0 0 0 0 0 0 1 0 1 1\n" + points +
                               "LAGEFEHLERELLIPSE 1100 2200 2 0.5 75\n");
    expect_values(ellipses["pu"][1], {{"pu_wert_lage", -3},
                                      {"pu_wert_rechts", 2.0},
                                      {"pu_wert_hoch", 0.5},
                                      {"pu_wert_dh", 75.0}});
    // A change and its next epoch have rows of their own, which are no signatures.
    const json changes = read("OBJEKTE 1 1 2 0 0 0 0 0 0 1 0 1 1\n" + points +
                              "HÖHENÄNDERUNG 1100 2200 3 1 \"2001\" 40 -10\nNÄCHSTEEPOCHE 2\n");
    EXPECT_EQ(changes["pu_anzahl"], 4);
    EXPECT_EQ(changes["pu_anzahl_signatur"], 2);
    expect_values(changes["pu"][2], {{"pu_wert_lage", 0},
                                     {"pu_wert_hoehe", 4},
                                     {"pu_epoche", 0},
                                     {"pu_wert_dh", 3.0},
                                     {"pu_bez", "2001"},
                                     {"pu_bez_rechts", 40.0},
                                     {"pu_bez_hoch", -10.0}});
    expect_values(changes["pu"][3], {{"pu_epoche", 1}, {"pu_wert_dh", 5.0}});
}

TEST_F(Tables, LinesWithTheThirdsOfTheirObservations) {
    const std::string points =
        "PUNKTSIGNATUR 1000 2000 0 0 1 \"A\"\nPUNKTSIGNATUR 1100 2200 0 0 0 \"B\"\n";
    const json horizontal =
        read("OBJEKTE 1 1 0 0 0 0 0 1 0 1 0 1 1\n" + points +
             "RICHTUNG 1000 2000 1100 2200 51 1 2\nDISTANZ 1000 2000 1100 2200 52 3 4\n"
             "GPS-RICHTUNG 1100 2200 1000 2000 53 5 6\n"
             "ORIENTIERUNGSRICHTUNG 1000 2000 1500 2600 \"Turm\"\n");
    EXPECT_EQ(horizontal["lin_anzahl"], 2);
    EXPECT_EQ(horizontal["fernziel_anzahl"], 1);
    expect_values(horizontal["lin"][0],
                  {{"lin_schluessel", " 0001000.00 0002000.00 0001100.00 0002200.00"},
                   {"lin_typ_hin", 11},
                   {"lin_ev_hin", 51.0},
                   {"lin_nv_hin", 1.0},
                   {"lin_ep_hin", 2.0},
                   {"lin_typ_seite", 1},
                   {"lin_ev_seite", 52.0},
                   {"lin_nv_seite", 3.0},
                   {"lin_ep_seite", 4.0},
                   {"lin_typ_rueck", 12},
                   {"lin_ev_rueck", 53.0},
                   {"lin_nv_rueck", 5.0},
                   {"lin_ep_rueck", 6.0},
                   {"lin_fernziel", ""}});
    expect_values(horizontal["lin"][1],
                  {{"lin_typ_hin", 0}, {"lin_typ_seite", 10}, {"lin_fernziel", "Turm"}});
    // No point is at the far end, whose class stays 3.
    EXPECT_NE(horizontal["lin"][1]["lin_klasse_von"], 3);
    EXPECT_EQ(horizontal["lin"][1]["lin_klasse_nach"], 3);
}

TEST_F(Tables, LargestValuesWithTheirPoints) {
    const json t = read(
        "PUNKTSIGNATUR 1000 2000 0 0 1 \"A\"\nPUNKTSIGNATUR 1100 2200 0 0 0 \"B\"\n"
        "LAGEÄNDERUNG 1000 2000 3 4 1 \"2001\"\nLAGEÄNDERUNG 1100 2200 6 8 0 \"2002\"\n"
        "HÖHENÄNDERUNG 1100 2200 -7 1 \"2003\"\n");
    EXPECT_EQ(t["max_ap"][0], json({{"wert", 5.0},
                                    {"rechts", 1000.0},
                                    {"hoch", 2000.0},
                                    {"bez", "A"},
                                    {"epoche", "2001"}}));
    EXPECT_EQ(t["max_np"][0], json({{"wert", 10.0},
                                    {"rechts", 1100.0},
                                    {"hoch", 2200.0},
                                    {"bez", "B"},
                                    {"epoche", "2002"}}));
    EXPECT_EQ(t["max_ap"][3], json({{"wert", -7.0},
                                    {"rechts", 1100.0},
                                    {"hoch", 2200.0},
                                    {"bez", "B"},
                                    {"epoche", "2003"}}));
    EXPECT_EQ(t["max_np"][3]["wert"], 0.0);
}

TEST_F(Tables, ProtocolsAreUtf8AsTheTablesAre) {
    const std::string input =
        folder.file("ve.dat", from_utf8("PUNKTSIGNATUR 1 2 0 0 1\nHÖHENÄNDERUNG 1 2 3 1\n"));
    EXPECT_EQ(testing_support::run_veldra(folder, {"plot", input, "-o", folder.path("p.pdf"),
                                                   "--protokoll", folder.path("p.json")})
                  .exit_code,
              0);
    EXPECT_THAT(file_bytes(folder.path("p.json")), HasSubstr("\"HÖHENÄNDERUNG\""));
}

}  // namespace
}  // namespace veldra
