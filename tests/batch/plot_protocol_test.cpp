#include <map>
#include <vector>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "program_run.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing_support::file_bytes;
using testing_support::ProgramRun;
using testing_support::TempFolder;

constexpr int everything_used = 0;
constexpr int records_refused = 3;

/// Read, drawn, hidden, outside, refused.
using Counts = std::vector<int>;

class PlotProtocol : public ::testing::Test {
 protected:
    /// Plots on one upright A4 sheet at 1:1000 with a binding margin on the left, so on the ground
    /// from (1000, 2000) to (1184.5, 2274.5), and gives the protocol of the file.
    json protocol(const std::string& utf8, int exit_code, std::vector<std::string> more = {}) {
        const std::string file = folder.file("ve.dat", from_utf8(utf8));
        std::vector<std::string> arguments{"plot",
                                           file,
                                           "-o",
                                           folder.path("p.pdf"),
                                           "--massstab",
                                           "1000",
                                           "--null",
                                           "1000,2000",
                                           "--papier",
                                           "A4",
                                           "--ausrichtung",
                                           "hoch",
                                           "--heftrand",
                                           "links",
                                           "--protokoll",
                                           folder.path("p.json")};
        more.insert(more.end(), {"--blaetter", sheets});
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ProgramRun run = testing_support::run_veldra(folder, arguments);
        EXPECT_EQ(run.exit_code, exit_code) << run.err;
        return json::parse(file_bytes(folder.path("p.json")))["dateien"][0];
    }

    static std::map<std::string, Counts> counts(const json& part) {
        std::map<std::string, Counts> all;
        for (const auto& [kind, count] : part["arten"].items()) {
            all[kind] = {count["gelesen"], count["gezeichnet"], count["ausgeblendet"],
                         count["ausserhalb"], count["abgewiesen"]};
        }
        return all;
    }

    TempFolder folder;
    std::string sheets = "1x1";
};

constexpr const char* horizontal_network =
    "VERFAHRENLEGENDE Test\n"                               // line 1
    "NETZTEIL Eins\n"                                       //
    "OBJEKTE 1 1 7 0 0 0 0 1 0 1 0 1 1\n"                   // horizontal, ellipses
    "PUNKTSIGNATUR 1050 2050 0 0 1 \"A\"\n"                 //
    "PUNKTSIGNATUR 1100 2050 0 0 0 \"B\"\n"                 // 5
    "PUNKTSIGNATUR 1500 2500 0 0 0 \"C\"\n"                 // outside
    "PUNKTSIGNATUR 1050 2100 0 0\n"                         // no flag
    "PUNKTSIGNATUR 1050 2150 0 0 2\n"                       // unknown flag
    "PUNKTSIGNATUR 1050 2050 0 0 1\n"                       // A again
    "RICHTUNG 1050 2050 1100 2050 50 1 2\n"                 // 10
    "RICHTUNG 1100 2050 1050 2050 50 1 2\n"                 // the way back
    "RICHTUNG 1500 2500 1600 2500\n"                        // outside
    "RICHTUNG 1050 2050 1050.001 2050\n"                    // one point
    "DISTANZ 1100 2050 1500 2500\n"                         // leaves the sheet
    "ORIENTIERUNGSRICHTUNG 1050 2050 1050 2200 \"Turm\"\n"  // 15
    "DISTANZ 1050 2050 1050 2200\n"                         // the line is a stub
    "ORIENTIERUNGSRICHTUNG 1050 2050 1100 2050\n"           // the line has directions
    "ZENITWINKEL 1050 2050 1100 2050\n"                     // not selected
    "HÖHENUNTERSCHIED 1050 2050 1050 2050\n"                // one point
    "GPS-RAUMVEKTOR 1050 2050 1100 2050\n"                  // 20, not selected
    "LAGEFEHLERELLIPSE 1050 2050 1 0.5 100\n"               //
    "LAGEFEHLERELLIPSE 1050 2050 1 0.5\n"                   // no bearing
    "LAGEFEHLERELLIPSE 1500 2500 1 1 0\n"                   // outside
    "HÖHENFEHLER 1050 2050 1\n"                             // not selected
    "HÖHENFEHLER 1050 2050\n"                               // 25, no value
    "LAGERESTKLAFFUNGEN 1050 2050 1 1 1\n"                  // not selected
    "LAGERESTKLAFFUNGEN 1050 2050 1 1 5\n"                  // unknown flag
    "HÖHENRESTKLAFFUNGEN 1050 2050 1 0\n"                   // not selected
    "NÄCHSTEEPOCHE 1 1\n"                                   // no change before it
    "LAGEÄNDERUNG 1050 2050 1 1 0 \"2001\"\n"               // 30, not selected
    "NÄCHSTEEPOCHE 1 1 \"2002\"\n"                          //
    "NÄCHSTEEPOCHE 1 1\n"                                   //
    "NETZTEIL Zwei\n"                                       //
    "PUNKTSIGNATUR 1050 2050 0 0 1\n";

TEST_F(PlotProtocol, EachRecordIsCountedByWhatBecameOfIt) {
    const json file = protocol(horizontal_network, records_refused);
    ASSERT_EQ(file["netzteile"].size(), 1U);
    const json& part = file["netzteile"][0];
    EXPECT_EQ(part["netzteil"], "Eins");
    EXPECT_EQ(part["massstab"], 1000.0);
    EXPECT_EQ(counts(part), (std::map<std::string, Counts>{
                                {"PUNKTSIGNATUR", {6, 2, 0, 1, 2}},
                                {"Punktbezeichnung", {3, 2, 0, 1, 0}},
                                {"RICHTUNG", {4, 2, 0, 1, 1}},
                                {"DISTANZ", {2, 1, 0, 0, 1}},
                                {"ORIENTIERUNGSRICHTUNG", {2, 1, 0, 0, 1}},
                                {"ZENITWINKEL", {1, 0, 1, 0, 0}},
                                {"HÖHENUNTERSCHIED", {1, 0, 0, 0, 1}},
                                {"GPS-RAUMVEKTOR", {1, 0, 1, 0, 0}},
                                {"LAGEFEHLERELLIPSE", {3, 1, 0, 1, 1}},
                                {"HÖHENFEHLER", {2, 0, 1, 0, 1}},
                                {"LAGERESTKLAFFUNGEN", {2, 0, 1, 0, 1}},
                                {"HÖHENRESTKLAFFUNGEN", {1, 0, 1, 0, 0}},
                                {"NÄCHSTEEPOCHE", {3, 0, 2, 0, 1}},
                                {"LAGEÄNDERUNG", {1, 0, 1, 0, 0}},
                                {"Epochenbezeichnung", {2, 0, 2, 0, 0}},
                            }));
}

using Replaced = std::vector<std::pair<int, std::string>>;

Replaced replaced_of(const json& part) {
    Replaced all;
    for (const json& record : part["ersetzt"]) {
        all.emplace_back(record["zeile"], record["art"]);
    }
    return all;
}

TEST_F(PlotProtocol, RecordsThatOthersReplacedAreNotDrawn) {
    const std::string points =
        "NETZTEIL a\nOBJEKTE 1 1 7 0 0 0 0 1 0 1 0 1 1\n"
        "PUNKTSIGNATUR 1050 2050 0 0 1 \"alt\"\n"     // line 3: signature and label
        "PUNKTSIGNATUR 1060 2050 0 0 1 \"bleibt\"\n"  // the signature only
        "PUNKTSIGNATUR 1050 2050 0 0 0 \"neu\"\n"     //
        "PUNKTSIGNATUR 1060 2050 0 0 0\n"             //
        "PUNKTSIGNATUR 9000 2050 0 0 0\n"             // 7: outside
        "PUNKTSIGNATUR 9000 2050 0 0 0\n"             //
        "LAGEFEHLERELLIPSE 1050 2050 1 0.5 100\n"     // 9
        "LAGEFEHLERELLIPSE 1050 2050 2 0.5 100\n"     // 10
        "LAGEFEHLERELLIPSE 1050 2050 3 0.5 100\n"     //
        "ORIENTIERUNGSRICHTUNG 1050 2050 1050 2200 \"Turm\"\n"
        "ORIENTIERUNGSRICHTUNG 1050 2050 1050 2200 \"Dom\"\n";  // 13: the first name stays
    const json part = protocol(points, everything_used)["netzteile"][0];
    EXPECT_EQ(replaced_of(part), (Replaced{{3, "PUNKTSIGNATUR"},
                                           {3, "Punktbezeichnung"},
                                           {4, "PUNKTSIGNATUR"},
                                           {7, "PUNKTSIGNATUR"},
                                           {9, "LAGEFEHLERELLIPSE"},
                                           {10, "LAGEFEHLERELLIPSE"},
                                           {13, "ORIENTIERUNGSRICHTUNG"}}));
    EXPECT_EQ(counts(part), (std::map<std::string, Counts>{
                                {"PUNKTSIGNATUR", {6, 2, 0, 1, 0}},
                                {"Punktbezeichnung", {3, 2, 0, 0, 0}},
                                {"LAGEFEHLERELLIPSE", {3, 1, 0, 0, 0}},
                                {"ORIENTIERUNGSRICHTUNG", {2, 1, 0, 0, 0}},
                            }));
    EXPECT_EQ(part["arten"]["PUNKTSIGNATUR"]["ersetzt"], 3);
    EXPECT_EQ(part["arten"]["LAGEFEHLERELLIPSE"]["ersetzt"], 2);
}

TEST_F(PlotProtocol, ResidualsAndHeightErrorsAreReplacedToo) {
    const std::string head = "PUNKTSIGNATUR 1050 2050 0 0 1\n";
    const json residuals = protocol("OBJEKTE 1 1 6 0 0 0 0 1 0 1 0 1 1\n" + head +
                                        "LAGERESTKLAFFUNGEN 1050 2050 1 1 1\n"
                                        "LAGERESTKLAFFUNGEN 1050 2050 2 1 1\n"
                                        "HÖHENRESTKLAFFUNGEN 1050 2050 1 1\n"
                                        "HÖHENRESTKLAFFUNGEN 1050 2050 2 1\n",
                                    everything_used)["netzteile"][0];
    EXPECT_EQ(replaced_of(residuals),
              (Replaced{{3, "LAGERESTKLAFFUNGEN"}, {5, "HÖHENRESTKLAFFUNGEN"}}));
    const json errors = protocol("OBJEKTE 1 1 8 0 0 0 0 1 0 1 0 1 1\n" + head +
                                     "HÖHENFEHLER 1050 2050 1\nHÖHENFEHLER 1050 2050 2\n",
                                 everything_used)["netzteile"][0];
    EXPECT_EQ(replaced_of(errors), (Replaced{{3, "HÖHENFEHLER"}}));
}

TEST_F(PlotProtocol, HeightValuesCountByWhetherTheyAreOnASheet) {
    const std::string points =
        "PUNKTSIGNATUR 1050 2050 0 0 1\n"
        "PUNKTSIGNATUR 1500 2500 0 0 1\n";  // outside
    const auto heights = [&](const std::string& mode, const std::string& kind,
                             const std::string& values) {
        return counts(protocol("OBJEKTE 1 1 " + mode + " 0 0 0 0 0 0 1 0 1 1\n" + points + values,
                               everything_used)["netzteile"][0])[kind];
    };
    EXPECT_EQ(heights("6", "HÖHENRESTKLAFFUNGEN",
                      "HÖHENRESTKLAFFUNGEN 1050 2050 3 1\nHÖHENRESTKLAFFUNGEN 1500 2500 3 1\n"),
              (Counts{2, 1, 0, 1, 0}));
    EXPECT_EQ(heights("8", "HÖHENFEHLER", "HÖHENFEHLER 1050 2050 3\nHÖHENFEHLER 1500 2500 3\n"),
              (Counts{2, 1, 0, 1, 0}));
    EXPECT_EQ(
        heights("2", "HÖHENÄNDERUNG", "HÖHENÄNDERUNG 1050 2050 3 0\nHÖHENÄNDERUNG 1500 2500 3 0\n"),
        (Counts{2, 1, 0, 1, 0}));
}

TEST_F(PlotProtocol, EachLineOfTheFileHasOneKind) {
    const std::string lines =
        "VERFAHRENLEGENDE Test\n"                // 1
        "PUNKTSIGNATUR 1050 2050 0 0 1\n"        // before the first part
        "NETZTEIL a\n"                           //
        "\n"                                     //
        "   \n"                                  // 5
        "PUNKTSIGNATUR 1050 2050 0 0 1\n"        //
        "\tPUNKTSIGNATUR 1060 2050 0 0 1\n"      // a tab is no blank
        "FESTPUNKT 1050 2050\n"                  //
        "PUNKTSIGNATUR 1O50 2050 0 0 1\n"        // the letter O
        "RICHTUNG 1050 2050 1060,5 2.05e3 50\n"  // 10
        "RICHTUNG 1050 20.50.1 +1060 x 50\n"     //
        "NETZTEIL b\n"                           //
        "LAGEFEHLERELLIPSE 1050 - 1 0.5 100\n"   //
        "NETZTEIL c";                            // no line end
    const json file = protocol(lines, everything_used);
    EXPECT_EQ(file["zeilen"]["anzahl"], 14);
    EXPECT_EQ(file["zeilen"]["arten"], (json{{"VERFAHRENLEGENDE", 1},
                                             {"NETZTEIL", 3},
                                             {"PUNKTSIGNATUR", 2},
                                             {"RICHTUNG", 2},
                                             {"LAGEFEHLERELLIPSE", 1},
                                             {"leer", 2},
                                             {"unbekannt", 3}}));
    EXPECT_EQ(file["unbekannt"], json::parse(R"([{"zeile": 2, "wort": "PUNKTSIGNATUR"},
        {"zeile": 7, "wort": "\tPUNKTSIGNATUR"}, {"zeile": 8, "wort": "FESTPUNKT"}])"));
    EXPECT_EQ(file["koordinaten"], json::parse(R"([
        {"zeile": 9, "art": "PUNKTSIGNATUR", "angabe": 2, "text": "1O50"},
        {"zeile": 11, "art": "RICHTUNG", "angabe": 3, "text": "20.50.1"},
        {"zeile": 11, "art": "RICHTUNG", "angabe": 5, "text": "x"},
        {"zeile": 13, "art": "LAGEFEHLERELLIPSE", "angabe": 3, "text": "-"}])"));
}

TEST_F(PlotProtocol, FileWithoutPartsTakesItsRecordsFromTheFirstLineOn) {
    const json file = protocol("PUNKTSIGNATUR 1050 2050 0 0 1\n", everything_used);
    EXPECT_EQ(file["zeilen"]["arten"], (json{{"PUNKTSIGNATUR", 1}}));
    EXPECT_THAT(file["unbekannt"], IsEmpty());
}

TEST_F(PlotProtocol, RefusedRecordsAreNamedWithLineAndReason) {
    const json file = protocol(horizontal_network, records_refused);
    std::vector<std::string> refused;
    for (const json& record : file["netzteile"][0]["abgewiesen"]) {
        refused.push_back(std::to_string(record["zeile"].get<int>()) + " " +
                          record["art"].get<std::string>() + ": " +
                          record["grund"].get<std::string>());
    }
    EXPECT_THAT(
        refused,
        ElementsAre("7 PUNKTSIGNATUR: Angabe 6 fehlt",
                    "8 PUNKTSIGNATUR: Angabe 6 ist weder 0 noch 1",
                    "13 RICHTUNG: Anfang und Ende fallen zusammen",
                    "16 DISTANZ: auf der Linie liegt schon eine Orientierungsrichtung",
                    "17 ORIENTIERUNGSRICHTUNG: auf der Linie liegt schon eine andere Beobachtung",
                    "19 HÖHENUNTERSCHIED: Anfang und Ende fallen zusammen",
                    "22 LAGEFEHLERELLIPSE: Angabe 6 fehlt", "25 HÖHENFEHLER: Angabe 4 fehlt",
                    "27 LAGERESTKLAFFUNGEN: Angabe 6 ist weder 0 noch 1",
                    "29 NÄCHSTEEPOCHE: davor steht keine Lage- oder Höhenänderung"));
}

TEST_F(PlotProtocol, PartsAreCountedApart) {
    const json file = protocol(horizontal_network, everything_used, {"--netzteil", "Zwei"});
    ASSERT_EQ(file["netzteile"].size(), 1U);
    EXPECT_EQ(counts(file["netzteile"][0]),
              (std::map<std::string, Counts>{{"PUNKTSIGNATUR", {1, 1, 0, 0, 0}}}));
}

constexpr const char* changes =
    "OBJEKTE 1 1 3 0 0 0 0 0 0 1 0 1 1 0 1\n"
    "PUNKTSIGNATUR 1050 2050 0 0 1 \"A\"\n"
    "LAGEÄNDERUNG 1050 2050 1 1 0 \"2001\"\n"
    "NÄCHSTEEPOCHE 1 1 \"2002\"\n"
    "HÖHENÄNDERUNG 1500 2500 1 0 \"2001\"\n"
    "NÄCHSTEEPOCHE 1 \"2002\"\n";

TEST_F(PlotProtocol, EpochsFareAsTheChangesBeforeThem) {
    const json both = protocol(changes, everything_used);
    EXPECT_EQ(counts(both["netzteile"][0]), (std::map<std::string, Counts>{
                                                {"PUNKTSIGNATUR", {1, 1, 0, 0, 0}},
                                                {"Punktbezeichnung", {1, 1, 0, 0, 0}},
                                                {"LAGEÄNDERUNG", {1, 1, 0, 0, 0}},
                                                {"HÖHENÄNDERUNG", {1, 0, 0, 1, 0}},
                                                {"NÄCHSTEEPOCHE", {2, 1, 0, 1, 0}},
                                                {"Epochenbezeichnung", {4, 2, 0, 2, 0}},
                                            }));
    const json heights = protocol(changes, everything_used, {"--obj", "obj_puwe=2"});
    EXPECT_EQ(counts(heights["netzteile"][0])["LAGEÄNDERUNG"], (Counts{1, 0, 1, 0, 0}));
    EXPECT_EQ(counts(heights["netzteile"][0])["NÄCHSTEEPOCHE"], (Counts{2, 0, 1, 1, 0}));
    EXPECT_EQ(counts(heights["netzteile"][0])["Epochenbezeichnung"], (Counts{4, 0, 2, 2, 0}));
    const json unlabelled = protocol(changes, everything_used, {"--obj", "obj_epbe=0"});
    EXPECT_EQ(counts(unlabelled["netzteile"][0])["Epochenbezeichnung"], (Counts{4, 0, 4, 0, 0}));
}

TEST_F(PlotProtocol, SelectionHidesLabelsAndLeavesDotsForSignatures) {
    const std::string points = "PUNKTSIGNATUR 1050 2050 0 0 1 \"A\"\n";
    const json file =
        protocol(points, everything_used, {"--obj", "obj_pube=0", "--obj", "obj_pusi=0"});
    EXPECT_EQ(counts(file["netzteile"][0]), (std::map<std::string, Counts>{
                                                {"PUNKTSIGNATUR", {1, 1, 0, 0, 0}},
                                                {"Punktbezeichnung", {1, 0, 1, 0, 0}},
                                            }));
}

TEST_F(PlotProtocol, PenOfNoWidthHidesItsGroup) {
    const std::string profile = folder.file("p.ini", "[VEKTOR]\r\nvektNdrw_2=0\r\n");
    const std::string residuals =
        "PUNKTSIGNATUR 1050 2050 0 0 1\n"
        "LAGERESTKLAFFUNGEN 1050 2050 1 1 0\n"   // at a new point
        "LAGERESTKLAFFUNGEN 1100 2050 1 1 1\n";  // at a control point
    const json file =
        protocol(residuals, everything_used, {"--profil", profile, "--obj", "obj_puwe=4"});
    EXPECT_EQ(counts(file["netzteile"][0])["LAGERESTKLAFFUNGEN"], (Counts{2, 1, 1, 0, 0}));
}

TEST_F(PlotProtocol, AnyOfSeveralSheetsWillDo) {
    const std::string points =
        "PUNKTSIGNATUR 1050 2050 0 0 1\n"
        "PUNKTSIGNATUR 1200 2050 0 0 1\n"   // second column
        "PUNKTSIGNATUR 1050 2300 0 0 1\n"   // second row
        "PUNKTSIGNATUR 1400 2050 0 0 1\n";  // third column
    EXPECT_EQ(counts(protocol(points, 0)["netzteile"][0])["PUNKTSIGNATUR"],
              (Counts{4, 1, 0, 3, 0}));
    sheets = "2x1";
    EXPECT_EQ(counts(protocol(points, 0)["netzteile"][0])["PUNKTSIGNATUR"],
              (Counts{4, 2, 0, 2, 0}));
    sheets = "3x2";
    const json file = protocol(points, 0);
    EXPECT_EQ(counts(file["netzteile"][0])["PUNKTSIGNATUR"], (Counts{4, 4, 0, 0, 0}));
    EXPECT_EQ(file["netzteile"][0]["blaetter"], json({{"rechts", 3}, {"hoch", 2}}));
}

TEST_F(PlotProtocol, SumsHoldForEverySample) {
    for (const char* sample :
         {"ve_dhdn.dat", "ve_etrs89.dat", "ve_lokal.dat", "ve_ohne_netzteil.dat"}) {
        const ProgramRun run = testing_support::run_veldra(
            folder, {"plot", std::string(SAMPLES_DIR "/") + sample, "--alle", "-o",
                     folder.path("s.pdf"), "--protokoll", folder.path("s.json")});
        EXPECT_EQ(run.exit_code, 0) << sample << run.err;
        const json file = json::parse(file_bytes(folder.path("s.json")))["dateien"][0];
        int drawn = 0;
        for (const json& part : file["netzteile"]) {
            EXPECT_THAT(part["abgewiesen"], IsEmpty());
            for (const auto& [kind, count] : counts(part)) {
                EXPECT_EQ(count[0], count[1] + count[2] + count[3] + count[4]) << sample << kind;
                drawn += count[1];
            }
        }
        EXPECT_GT(drawn, 50) << sample;
    }
}

}  // namespace
}  // namespace veldra
