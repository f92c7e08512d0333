// Texts from boxes, folder names and files never become records of their own.
#include <gmock/gmock.h>

#include "graphikdatei/memory_writer.h"
#include "graphikdatei/writer.h"
#include "graphikdatei/written_records.h"
#include "os/files.h"
#include "session_fixture.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(OneLine, ControlCharactersBecomeBlanks) {
    EXPECT_EQ(one_line(std::string("a\r\nb\tc\0d\x1F\x7F"
                                   "e",
                                   11)),
              "a  b c d  e");
    EXPECT_EQ(one_line("\x80\x81\x9F\xA0\xFF ~"), "\x80\x81\x9F\xA0\xFF ~");
}

class OneLineFile : public testing_support::SessionOnFile {
 protected:
    void open(std::string_view utf8) {
        read_points(utf8);
        session.datei_geladen = 1;
    }
    std::string written() {
        arbeitskopie_schreiben(session);
        endfassung_schreiben(session);
        return file_text();
    }
};

TEST_F(OneLineFile, TitleWithLineEndsStaysATitle) {
    open("NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0 1 \"P\"\n");
    session.titel[0].setTitelText("eins\nNETZTEIL B");
    session.titel[1].setTitelText("zwei\r\nNETZTEIL C");
    const std::string text = written();
    EXPECT_THAT(text, HasSubstr("VerfahrenLegende eins NETZTEIL B\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nTitel2 zwei  NETZTEIL C\r\n"));
    kopf_lesen(session);
    EXPECT_EQ(session.netz.count(), 1);
}

TEST_F(OneLineFile, TitleOfAFileLosesItsControlCharactersOnce) {
    open("VERFAHRENLEGENDE \tDeck\tblatt \nNETZTEIL A\nTITEL2 \t zwei\rdrei\t\nx\n");
    const std::string once = written();
    EXPECT_THAT(once, HasSubstr("VerfahrenLegende Deck blatt\r\n"));
    EXPECT_THAT(once, HasSubstr("Titel2 zwei drei\r\n"));
    open(once);
    EXPECT_EQ(written(), once);
}

TEST_F(OneLineFile, LabelLosesItsControlCharactersOnce) {
    open("NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0 1 \"\tA\t17\" 5 6\nx\n");
    session.pu[1].pu_bez += "\nNETZTEIL B";
    const std::string once = written();
    EXPECT_THAT(once, HasSubstr("0 0 1 \"A 17 NETZTEIL B\"       5.0       6.0\r\n"));
    open(once);
    EXPECT_EQ(written(), once);
}

TEST_F(OneLineFile, TitleThatNoLineHoldsIsCut) {
    open("V " + std::string(32765, 'x') + "\nNETZTEIL A\nx\n");
    EXPECT_EQ(session.titel[0].getTitelText().size(), 32750U);  // 17 characters stand before it
    (void)written();
    kopf_lesen(session);
    EXPECT_EQ(session.titel[0].getTitelText(), std::string(32750, 'x'));
}

TEST_F(OneLineFile, LabelThatNoLineHoldsIsCutAndThePointStays) {
    open("NETZTEIL A\nP 1 2 0 0 1 \"" + std::string(32740, 'x') + "\" 5 6\nx\n");
    (void)written();
    punkt_lesen(session);
    ASSERT_EQ(session.pu.count(), 1);
    EXPECT_EQ(session.pu[1].pu_bez_rechts, 5);
    // "Punktsignatur ", two coordinates of 13, " 0 0 1 ", two quotes, two offsets of 10.
    EXPECT_EQ(session.pu[1].pu_bez.size(), 32767U - 14 - 26 - 7 - 2 - 20);
}

TEST_F(OneLineFile, WhatWouldNotBeOneLineIsRefusedAndTheFileStays) {
    open("NETZTEIL A\nx\n");
    session.nuoff[session.nuoff.append()].nuoff_bez = "5208\nNETZTEIL B";
    try {
        arbeitskopie_schreiben(session);
        ADD_FAILURE() << "written all the same";
    } catch (const FatalError& error) {
        EXPECT_EQ(std::string(error.what()),
                  session.graphikdatei +
                      ": Der Satz \"NumbezOffset 5208 NETZTEIL B        0.000        0.000\" ließe "
                      "sich nicht als eine Zeile zurücklesen.");
    }
    EXPECT_FALSE(datei_vorhanden(session.graphikdatei + "_1"));
    session.nuoff[1].nuoff_bez = std::string(32740, '5');
    EXPECT_THROW(arbeitskopie_schreiben(session), FatalError);
    session.nuoff[1].nuoff_bez = "5208";
    EXPECT_NO_THROW(arbeitskopie_schreiben(session));
}

TEST_F(OneLineFile, FieldsThatFillTheirMaskDoNotTouch) {
    open(
        "NETZTEIL A\nMAßSTABVEKTOREN 1000000 25 999999 12345678 0.5 2\n"
        "PUNKTSIGNATUR 100000000 123456789.5 0 0 1\n"
        "PUNKTSIGNATUR -10000000 -20000000 0 0 1 \"P\" 12345678 -1234567\n"
        "MAßSTABGRUNDRISS 500 12345678901 -12345678901 9 1 32767 1\n"
        "NUMBEZOFFSET 5208 123456789 -12345678\nx\n");
    const std::string once = written();
    EXPECT_THAT(
        once, HasSubstr("MaßstabVektoren 1000000.     25. 999999. 12345678.     0.5      2.\r\n"));
    EXPECT_THAT(once, HasSubstr("Punktsignatur 100000000.000 123456789.500 0 0 1 \r\n"));
    EXPECT_THAT(once, HasSubstr("Punktsignatur -10000000.000 -20000000.000 0 0 1 \"P\" 12345678.0 "
                                "-1234567.0\r\n"));
    // Legend place 4 is the usual one: 1 + 4 * 2 + 16 * 4.
    EXPECT_THAT(once, HasSubstr("MaßstabGrundriss 500 12345678901.000 -12345678901.000    73 1"
                                " 32767     1\r\n"));
    EXPECT_THAT(once, HasSubstr("NumbezOffset 5208 123456789.000 -12345678.000\r\n"));
    EXPECT_THAT(once, HasSubstr("Objekte 1 1 0 0 1 1 3 1 0 1 -99 0 0 -99 0\r\n"));
    open(once);
    EXPECT_DOUBLE_EQ(1 / session.vektor_massstab[1], 1000000);
    EXPECT_DOUBLE_EQ(1 / session.vektor_massstab[4], 12345678);
    EXPECT_EQ(session.pu[1].pu_hoch, 123456789.5);
    EXPECT_EQ(session.pu[2].pu_bez_rechts, 12345678);
    EXPECT_EQ(session.obj.obj_nube_meridian, -99);
    EXPECT_EQ(written(), once);
}

}  // namespace
}  // namespace veldra
