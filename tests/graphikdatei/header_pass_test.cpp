#include "graphikdatei/header_pass.h"

#include <gmock/gmock.h>

#include "session_fixture.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using ::testing::HasSubstr;

class HeaderPass : public testing_support::SessionOnFile {
 protected:
    void read(std::string_view utf8) {
        use_file(utf8);
        kopf_lesen(session);
    }

    std::string failure(std::string_view utf8) {
        try {
            read(utf8);
        } catch (const FatalError& error) {
            return error.what();
        }
        return "";
    }
};

TEST_F(HeaderPass, AllSpellingsOpenThePart) {
    read("netzteil Nord 1\nN Nord 1\nNetz    Nord 1   \n");
    ASSERT_EQ(session.netz.count(), 3);
    for (std::int32_t i = 1; i <= 3; ++i) {
        EXPECT_EQ(session.netz[i].netz_name, "Nord 1");
    }
}

TEST_F(HeaderPass, TenPartsMakePartOneCurrentAndShowTheDialog) {
    std::string text;
    for (int i = 1; i <= 10; ++i) {
        text += "NETZTEIL Teil " + std::to_string(i) + "\r\n";
    }
    read(text);
    EXPECT_EQ(session.netz.count(), 10);
    EXPECT_EQ(session.netz_aktuell, 1);
    EXPECT_TRUE(session.window.frm_netzteile_shown);
    EXPECT_TRUE(session.window[MenuItem::m_ansicht_netzteile].enabled);
    EXPECT_TRUE(session.window[MenuItem::m_ansicht_netzteile].checked);
    EXPECT_FALSE(session.window[ToolButton::netzteile].enabled);
}

TEST_F(HeaderPass, EmptyFileLeavesEverythingAtDefault) {
    session.window.frm_netzteile_shown = true;
    read("");
    EXPECT_EQ(session.netz.count(), 0);
    EXPECT_EQ(session.netz_aktuell, 0);
    EXPECT_EQ(session.plot.plot_massstab, -99.0);
    EXPECT_FALSE(session.window.frm_netzteile_shown);
    EXPECT_FALSE(session.window[MenuItem::m_ansicht_netzteile].enabled);
}

TEST_F(HeaderPass, PartWithoutScaleKeepsTheDefaults) {
    read("NETZTEIL A\n");
    const NetworkPartRow& row = session.netz[1];
    EXPECT_EQ(row.netz_massstab, -99.0);
    EXPECT_EQ(row.netz_ausrichtung, -99);
    EXPECT_EQ(row.netz_heftrand, 2);
    EXPECT_EQ(row.netz_legendenlage, 4);
    EXPECT_EQ(row.netz_blatt_auto, table_true);
    EXPECT_EQ(row.netz_blatt_rechts, 1);
    EXPECT_EQ(row.netz_plotmarke, table_true);
}

TEST_F(HeaderPass, ScaleBelowOneIsDroppedWhole) {
    read("NETZTEIL A\nMAßSTABGRUNDRISS 500 10 20 73\nMAßSTABGRUNDRISS 0.5\n");
    EXPECT_EQ(session.netz[1].netz_massstab, 1.0 / 500);
    EXPECT_EQ(session.netz[1].netz_null_rechts, 10.0);
    read("NETZTEIL A\nMAßSTABGRUNDRISS 0.5\n");
    EXPECT_EQ(session.netz[1].netz_massstab, -99.0);
}

TEST_F(HeaderPass, InvalidOrientationLeavesTheZeroPoint) {
    read("NETZTEIL A\nMAßSTABGRUNDRISS 500 10.0 20.0 3\n");
    EXPECT_EQ(session.netz[1].netz_massstab, 1.0 / 500);
    EXPECT_EQ(session.netz[1].netz_null_rechts, 0.0);
    EXPECT_EQ(session.netz[1].netz_null_hoch, 0.0);
    EXPECT_EQ(session.netz[1].netz_ausrichtung, -99);
}

TEST_F(HeaderPass, LayoutCodeHoldsOrientationMarginAndLegend) {
    // 54 = 2 + 4 * 1 + 16 * 3
    read("NETZTEIL A\nMAßSTABGRUNDRISS 1000 1 2 54 1 3 4\n");
    const NetworkPartRow& row = session.netz[1];
    EXPECT_EQ(row.netz_ausrichtung, 2);
    EXPECT_EQ(row.netz_heftrand, 1);
    EXPECT_EQ(row.netz_legendenlage, 3);
    EXPECT_EQ(row.netz_blatt_auto, table_false);
    EXPECT_EQ(row.netz_blatt_rechts, 3);
    EXPECT_EQ(row.netz_blatt_hoch, 4);
}

TEST_F(HeaderPass, MarginZeroAndLegendBeyondFourKeepTheDefaults) {
    // 81 = 1 + 4 * 0 + 16 * 5
    read("NETZTEIL A\nMAßSTABGRUNDRISS 1000 1 2 81\n");
    EXPECT_EQ(session.netz[1].netz_ausrichtung, 1);
    EXPECT_EQ(session.netz[1].netz_heftrand, 2);
    EXPECT_EQ(session.netz[1].netz_legendenlage, 4);
}

TEST_F(HeaderPass, NegativeLayoutCodeHasNoOrientation) {
    read("NETZTEIL A\nMAßSTABGRUNDRISS 1000 1 2 -3\n");
    EXPECT_EQ(session.netz[1].netz_ausrichtung, -99);
    EXPECT_EQ(session.netz[1].netz_null_rechts, 0.0);
}

TEST_F(HeaderPass, ScaleAboveTheFirstPartSetsTheCurrentSettingsOnly) {
    read("MAßSTABGRUNDRISS 2000 1 2 22\nNETZTEIL A\n");
    EXPECT_EQ(session.netz[1].netz_massstab, -99.0);
    read("MAßSTABGRUNDRISS 2000 1 2 22\nPUNKTSIGNATUR 1 2 0 0 1\n");
    EXPECT_EQ(session.plot.plot_massstab, 1.0 / 2000);
    EXPECT_EQ(session.plot.plot_null_hoch, 2.0);
}

TEST_F(HeaderPass, LaterScaleOfAPartReplacesTheEarlier) {
    read("NETZTEIL A\nMAßSTABGRUNDRISS 1000 5 6 54 1 3 4\nM 500\n");
    EXPECT_EQ(session.netz[1].netz_massstab, 1.0 / 500);
    EXPECT_EQ(session.netz[1].netz_ausrichtung, -99);
    EXPECT_EQ(session.netz[1].netz_blatt_auto, table_true);
    EXPECT_EQ(session.netz[1].netz_blatt_rechts, 0);
}

TEST_F(HeaderPass, VectorScalesNeedAllSixAndZeroLeavesASlot) {
    read("MAßSTABVEKTOREN 2 4 0 -8 0.5 10\n");
    EXPECT_EQ(session.vektor_massstab[1], 0.5);
    EXPECT_EQ(session.vektor_massstab[2], 0.25);
    EXPECT_EQ(session.vektor_massstab[3], 0.5);
    EXPECT_EQ(session.vektor_massstab[4], -0.125);
    EXPECT_EQ(session.vektor_massstab[5], 2.0);
    EXPECT_EQ(session.vektor_massstab_plot[6], 0.1);
    Session other;
    other.graphikdatei = folder.file("short.dat", from_utf8("MAßSTABVEKTOREN 2 4 8 16 32\n"));
    kopf_lesen(other);
    EXPECT_EQ(other.vektor_massstab[1], 0.5);
    EXPECT_EQ(other.vektor_massstab[2], 0.5);
}

TEST_F(HeaderPass, TitleIsTakenWhereverItStandsAndTheLastWins) {
    session.titel[0].setTitelText("/pfad");
    read("VERFAHRENLEGENDE\n");
    EXPECT_EQ(session.titel[0].getTitelText(), "/pfad");
    read("VERFAHRENLEGENDE  eins \nNETZTEIL A\nVerf zwei Wörter\n");
    EXPECT_EQ(to_utf8(session.titel[0].getTitelText()), "zwei Wörter");
    read("VERFAHRENLEGENDE  \n");
    EXPECT_EQ(session.titel[0].getTitelText(), "");
}

TEST_F(HeaderPass, PartLineThatEndsWithItsKeywordIsFatal) {
    const std::string message = failure("PUNKTSIGNATUR 1 2 0 0 1\nNETZTEIL\n");
    EXPECT_THAT(message, HasSubstr("Laufzeitfehler '5'"));
    EXPECT_THAT(message, HasSubstr(session.graphikdatei));
    EXPECT_THAT(message, HasSubstr("Zeile: 2"));
    EXPECT_THAT(message, HasSubstr("NETZTEIL"));
    EXPECT_EQ(failure("NETZTEIL \n"), "");
    EXPECT_EQ(session.netz[1].netz_name, "");
}

TEST_F(HeaderPass, SheetCountBeyond16BitsIsFatal) {
    const std::string message = failure("NETZTEIL A\nMAßSTABGRUNDRISS 500 0 0 22 1 40000 1\n");
    EXPECT_THAT(message, HasSubstr("Laufzeitfehler '6': Überlauf"));
    EXPECT_THAT(message, HasSubstr("Zeile: 2"));
    EXPECT_THAT(message, HasSubstr("plot_blatt_rechts"));
}

TEST_F(HeaderPass, FileThatCannotBeOpenedIsFatalAndNamed) {
    session.graphikdatei = folder.path("fehlt.dat");
    try {
        kopf_lesen(session);
        FAIL() << "no error";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), HasSubstr(session.graphikdatei));
        EXPECT_THAT(error.what(), HasSubstr("nicht vorhanden"));
    }
}

TEST_F(HeaderPass, OverlongLineCountsAsBlank) {
    read("NETZTEIL " + std::string(32768, 'x') + "\nNETZTEIL B\n");
    ASSERT_EQ(session.netz.count(), 1);
    EXPECT_EQ(session.netz[1].netz_name, "B");
}

TEST_F(HeaderPass, LineEndsAreLfWithOneCarriageReturnBeforeIt) {
    read("NETZTEIL A\r\nNETZTEIL B\r\r\nNETZTEIL C\rD\nNETZTEIL E");
    ASSERT_EQ(session.netz.count(), 4);
    EXPECT_EQ(session.netz[1].netz_name, "A");
    EXPECT_EQ(session.netz[2].netz_name, "B\r");
    EXPECT_EQ(session.netz[3].netz_name, "C\rD");
    EXPECT_EQ(session.netz[4].netz_name, "E");
}

TEST_F(HeaderPass, ReadingAgainGivesTheSame) {
    use_file("NETZTEIL A\nMAßSTABGRUNDRISS 1000 1 2 54\nNETZTEIL B\n");
    kopf_lesen(session);
    kopf_lesen(session);
    EXPECT_EQ(session.netz.count(), 2);
    EXPECT_EQ(session.plot.plot_massstab, 1.0 / 1000);
}

}  // namespace
}  // namespace veldra
