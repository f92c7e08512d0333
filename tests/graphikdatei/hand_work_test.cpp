// What users put into a graphic file by hand, read out of one file and carried into another.
#include <gmock/gmock.h>

#include "graphikdatei/hand_work_transfer.h"
#include "graphikdatei/take_over.h"
#include "os/files.h"
#include "session_fixture.h"

namespace veldra {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing_support::file_bytes;

class HandWorkTransfer : public ::testing::Test {
 protected:
    HandWork read(std::string_view utf8) {
        return read_hand_work(folder.file("alt.dat", from_utf8(utf8)));
    }

    /// The new file with the hand's work of the old one, in UTF-8 with line feeds.
    std::string carry(std::string_view old_file, std::string_view new_file) {
        const HandWork hand_work = read(old_file);
        const std::string source = folder.file("neu.dat", from_utf8(new_file));
        ReplacedFile out(folder.path("ziel.dat"));
        report = transfer_hand_work(hand_work, source, out);
        out.commit();
        std::string text = to_utf8(file_bytes(folder.path("ziel.dat")));
        std::erase(text, '\r');
        return text;
    }

    testing_support::TempFolder folder;
    TransferReport report;
};

TEST_F(HandWorkTransfer, LabelsOfPointsGoByNumberThoughThePointHasMoved) {
    EXPECT_EQ(carry("NETZTEIL A\n"
                    "PUNKTSIGNATUR 10 20 0 0 1 \"1\" 70.0 -30.0\n"
                    "PUNKTSIGNATUR 40 60 0 0 1 \"2\" 0.0 0.0\n"
                    "PUNKTSIGNATUR 50 60 0 0 1 \"3\" 0.0 25.0\n",
                    "NETZTEIL A\n"
                    "PUNKTSIGNATUR 10.5 20.25 1 2 1 \"1\" 0.0 0.0 mehr\n"
                    "PUNKTSIGNATUR 40 60 0 0 1 \"2\"\n"),
              "NETZTEIL A\n"
              "PUNKTSIGNATUR 10.5 20.25 1 2 1 \"1\" 70.0 -30.0 mehr\n"
              "PUNKTSIGNATUR 40 60 0 0 1 \"2\"\n");
    EXPECT_EQ(report.points, 1);
    EXPECT_EQ(report.by_place, 0);
    EXPECT_EQ(report.not_taken, 0);  // 3 stands at its standard place
}

TEST_F(HandWorkTransfer, LabelsGoByPlaceWhereTheNumberIsGone) {
    EXPECT_EQ(carry("NETZTEIL A\nPUNKTSIGNATUR 10 20 0 0 1 \"1\" 70 -30\n"
                    "PUNKTSIGNATUR 40 60 0 0 1 \"2\" 15 5\n",
                    "NETZTEIL A\nPUNKTSIGNATUR 10.006 20.007 0 0 1 \"101\"\n"
                    "PUNKTSIGNATUR 40.008 60.007 0 0 1 \"102\"\n"),
              "NETZTEIL A\nPUNKTSIGNATUR 10.006 20.007 0 0 1 \"101\" 70.0 -30.0\n"
              "PUNKTSIGNATUR 40.008 60.007 0 0 1 \"102\"\n");  // 1.06 cm away
    EXPECT_EQ(report.points, 1);
    EXPECT_EQ(report.by_place, 1);
    EXPECT_EQ(report.not_taken, 1);
    EXPECT_THAT(report.lost, ElementsAre("Netzteil \"A\": Beschriftung des Punktes \"2\""));
}

TEST_F(HandWorkTransfer, OfSeveralPointsOfANumberTheNearestTakesTheLabel) {
    EXPECT_THAT(carry("NETZTEIL A\nPUNKTSIGNATUR 10 20 0 0 1 \"1\" 70 -30\n",
                      "NETZTEIL A\nPUNKTSIGNATUR 500 20 0 0 1 \"1\"\n"
                      "PUNKTSIGNATUR 10 21 0 0 1 \"1\"\nPUNKTSIGNATUR 10 20 0 0 1 \"7\"\n"),
                HasSubstr("PUNKTSIGNATUR 500 20 0 0 1 \"1\"\n"
                          "PUNKTSIGNATUR 10 21 0 0 1 \"1\" 70.0 -30.0\n"
                          "PUNKTSIGNATUR 10 20 0 0 1 \"7\"\n"));
    EXPECT_EQ(report.points, 1);
}

TEST_F(HandWorkTransfer, LabelsOfEpochsGoIntoTheirOwnRecords) {
    EXPECT_EQ(carry("NETZTEIL A\n"
                    "LAGEÄNDERUNG 10 20 1 1 1 \"2018\" 11 12\n"
                    "NÄCHSTEEPOCHE 1 1 \"2019\" 21 22\n"
                    "HÖHENÄNDERUNG 10 20 1 1 \"2018\"\n"
                    "NÄCHSTEEPOCHE 2 \"2019\" 31 0\n"
                    "NÄCHSTEEPOCHE 2 \"2020\" 41 42\n"
                    "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\n",
                    "NETZTEIL A\n"
                    "PUNKTSIGNATUR 10.1 20.2 0 0 1 \"1\"\n"
                    "PUNKTSIGNATUR 10 20 0 0 1 \"2\"\n"
                    "LAGEÄNDERUNG 10 20 1 1 1 \"2018\"\n"
                    "LAGEÄNDERUNG 10.1 20.2 3 3 1 \"2018\"\n"
                    "NÄCHSTEEPOCHE 5 5 \"2018b\"\n"
                    "NÄCHSTEEPOCHE 4 4 \"2019\"\n"
                    "HÖHENÄNDERUNG 10.1 20.2 1 1 \"2018\"\n"
                    "NÄCHSTEEPOCHE 2 \"2019\"\n"),
              "NETZTEIL A\n"
              "PUNKTSIGNATUR 10.1 20.2 0 0 1 \"1\"\n"
              "PUNKTSIGNATUR 10 20 0 0 1 \"2\"\n"
              "LAGEÄNDERUNG 10 20 1 1 1 \"2018\"\n"
              "LAGEÄNDERUNG 10.1 20.2 3 3 1 \"2018\" 11.0 12.0\n"
              "NÄCHSTEEPOCHE 5 5 \"2018b\"\n"
              "NÄCHSTEEPOCHE 4 4 \"2019\" 21.0 22.0\n"
              "HÖHENÄNDERUNG 10.1 20.2 1 1 \"2018\"\n"
              "NÄCHSTEEPOCHE 2 \"2019\" 31.0 0.1\n");
    EXPECT_EQ(report.epochs, 3);
    EXPECT_EQ(report.not_taken, 1);
    EXPECT_THAT(report.lost, ElementsAre("Netzteil \"A\": Beschriftung des Punktes \"1\", "
                                         "Epoche \"2020\""));
}

TEST_F(HandWorkTransfer, EpochWithoutATextGoesByItsNumber) {
    EXPECT_THAT(carry("NETZTEIL A\nHÖHENÄNDERUNG 10 20 1 1\nNÄCHSTEEPOCHE 2\n"
                      "NÄCHSTEEPOCHE 3 \"\" 41 42\n",
                      "NETZTEIL A\nHÖHENÄNDERUNG 10 20 1 1\nNÄCHSTEEPOCHE 2\n"
                      "NÄCHSTEEPOCHE 3\nNÄCHSTEEPOCHE 4\n"),
                HasSubstr("NÄCHSTEEPOCHE 2\nNÄCHSTEEPOCHE 3 \"\" 41.0 42.0\nNÄCHSTEEPOCHE 4\n"));
    EXPECT_EQ(report.epochs, 1);
    EXPECT_EQ(report.by_place, 0);  // there was no number that could be gone
}

TEST_F(HandWorkTransfer, SelectionTitlesPlotSettingsAndDistrictsGoByTheNameOfThePart) {
    EXPECT_EQ(carry("VERFAHRENLEGENDE Netz Übung\n"
                    "MAßSTABVEKTOREN 1 2 3 4 5 6\n"
                    "NETZTEIL B\nMAßSTABGRUNDRISS 500 7 8 9\nTITEL2 zwei\nTITEL4 vier\n"
                    "OBJEKTE 1 0 3 0 1 1 3 1 0 1 0 1 1\n"
                    "NUMBEZOFFSET L 4711 3500.5 5600.25\nNUMBEZOFFSET 51 1 2\n",
                    "MAßSTABVEKTOREN 9 9 9 9 9 9\nNETZTEIL A\nTITEL2 bleibt\n"
                    "NETZTEIL B\nANDERES  bleibt\nMAßSTABGRUNDRISS 1000\nTITEL2 fort\n"
                    "TITEL3 bleibt\nOBJEKTE 1 1 1 1 1 1 1 1 1 1 1 1 1\n"
                    "NUMBEZOFFSET L 4711 1 1\nNUMBEZOFFSET L 4712 1 1\n"
                    "VERFAHRENLEGENDE fort\n"),
              "VerfahrenLegende Netz Übung\nMaßstabVektoren 1 2 3 4 5 6\n"
              "NETZTEIL A\nTITEL2 bleibt\n"
              "NETZTEIL B\nMaßstabGrundriss 500 7 8 9\nTitel2 zwei\nTitel4 vier\n"
              "Objekte 1 0 3 0 1 1 3 1 0 1 0 1 1\n"
              "NumbezOffset L 4711     3500.500     5600.250\n"
              "NumbezOffset 51        1.000        2.000\n"
              "ANDERES  bleibt\nTITEL3 bleibt\nNUMBEZOFFSET L 4712 1 1\n");
    EXPECT_EQ(report.titles, 3);
    EXPECT_EQ(report.selections, 1);
    EXPECT_EQ(report.plots, 1);
    EXPECT_EQ(report.districts, 2);
    EXPECT_EQ(report.vector_scales, 1);
    EXPECT_THAT(report.lost, IsEmpty());
}

TEST_F(HandWorkTransfer, PartThatIsGoneIsCountedAndNamed) {
    EXPECT_EQ(carry("NETZTEIL A\nTITEL2 eins\nTITEL3 zwei\nOBJEKTE 1 0 3 0 1 1 3 1 0 1 0 1 1\n"
                    "PUNKTSIGNATUR 10 20 0 0 1 \"1\" 70 -30\nNUMBEZOFFSET 51 1 2\n"
                    "MAßSTABGRUNDRISS 500\nNETZTEIL leer\nPUNKTSIGNATUR 10 20 0 0 1 \"1\"\n",
                    "NETZTEIL a\nPUNKTSIGNATUR 10 20 0 0 1 \"1\"\n"),
              "NETZTEIL a\nPUNKTSIGNATUR 10 20 0 0 1 \"1\"\n");
    EXPECT_EQ(report.not_taken, 6);
    EXPECT_THAT(report.lost,
                ElementsAre("Netzteil \"A\" gibt es nicht mehr (Beschriftungen: 2, Auswahl: 1, "
                            "Titelzeilen: 2, Ploteinstellungen: 1)"));
    EXPECT_EQ(transfer_text(report, 0),
              "Übernommen: nichts\nNicht übernommen: 6\nund 1 weitere Zeilen\n");
}

TEST_F(HandWorkTransfer, FileWithoutPartsMeetsOnlyAFileWithoutParts) {
    constexpr const char* old_file = "TITEL2 eins\nPUNKTSIGNATUR 10 20 0 0 1 \"1\" 70 -30\n";
    EXPECT_EQ(carry(old_file, "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\n"),
              "Titel2 eins\nPUNKTSIGNATUR 10 20 0 0 1 \"1\" 70.0 -30.0\n");
    EXPECT_EQ(report.not_taken, 0);
    EXPECT_EQ(carry(old_file, "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nNETZTEIL A\n"),
              "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nNETZTEIL A\n");
    EXPECT_EQ(report.not_taken, 2);
    EXPECT_THAT(report.lost, ElementsAre("Netzteil ohne Namen gibt es nicht mehr "
                                         "(Beschriftungen: 1, Titelzeilen: 1)"));
}

TEST_F(HandWorkTransfer, PartsOfOneNameKeepTheirOwnPlotSettings) {
    EXPECT_EQ(carry("NETZTEIL A\nMAßSTABGRUNDRISS 500\nNETZTEIL A\nMAßSTABGRUNDRISS 1000\n",
                    "NETZTEIL A\nNETZTEIL A\n"),
              "NETZTEIL A\nMaßstabGrundriss 500\nNETZTEIL A\nMaßstabGrundriss 1000\n");
    carry("NETZTEIL A\nMAßSTABGRUNDRISS 500\nNETZTEIL A\nMAßSTABGRUNDRISS 1000\n", "NETZTEIL A\n");
    EXPECT_EQ(report.plots, 1);
    EXPECT_EQ(report.not_taken, 1);
}

TEST_F(HandWorkTransfer, PlotSettingsThatNoReaderTakesAreNotCarried) {
    // T5 is beyond 16 bits, which ends a reading; T2 is below 1.
    EXPECT_EQ(
        carry("NETZTEIL A\nMAßSTABGRUNDRISS 500 1 1 70000\nMAßSTABGRUNDRISS 0.5\n", "NETZTEIL A\n"),
        "NETZTEIL A\n");
}

TEST_F(HandWorkTransfer, TitleThatIsThePathOfAFileIsNone) {
    HandWork hand_work = read("VERFAHRENLEGENDE /netze/ä.dat\n");
    forget_title_of_path(hand_work, {"/netze/b.dat"});
    EXPECT_EQ(to_utf8(hand_work.title), "/netze/ä.dat");
    forget_title_of_path(hand_work, {"/netze/b.dat", "/netze/ä.dat"});
    EXPECT_EQ(hand_work.title, "");
}

TEST_F(HandWorkTransfer, LaterRecordOfAPointMovesItsLabelBack) {
    EXPECT_THAT(read("NETZTEIL A\nPUNKTSIGNATUR 10 20 0 0 1 \"1\" 70 -30\n"
                     "PUNKTSIGNATUR 10 20 0 0 1 \"1\" 0 0\nPUNKTSIGNATUR 1 2 0 0 1 \"2\" 5 5\n"
                     "PUNKTSIGNATUR 1 2 0 0 1 \"2\"\n")
                    .parts.at(0)
                    .labels,
                ::testing::SizeIs(1));
}

}  // namespace
}  // namespace veldra
