#include "graphikdatei/writer.h"

#include <gmock/gmock.h>

#include "os/files.h"
#include "session_fixture.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class Writer : public testing_support::SessionOnFile {
 protected:
    void open(std::string_view utf8) {
        use_file(utf8);
        reopen();
    }

    void reopen() {
        session.titel[0].setTitelText("Titel");
        vektor_standard(session);
        set_selection_defaults(session.obj);
        kopf_lesen(session);
        punkt_lesen(session);
        session.datei_geladen = 1;
    }

    void close() {
        arbeitskopie_schreiben(session);
        endfassung_schreiben(session);
    }

    [[nodiscard]] std::string copy_text(const std::string& suffix) const {
        return to_utf8(testing_support::file_bytes(session.graphikdatei + suffix));
    }
};

constexpr const char* head =
    "VerfahrenLegende Titel\r\n"
    "MaßstabVektoren      2.      2.      2.      2.      2.      2.\r\n";
constexpr const char* default_selection = "Objekte 1 1 0 0 1 1 3 1 0 1 -99 0 0 -99 0\r\n";

TEST_F(Writer, NothingHappensWithoutALoadedFile) {
    use_file("x\n");
    arbeitskopie_schreiben(session);
    endfassung_schreiben(session);
    EXPECT_EQ(file_text(), "x\n");
    EXPECT_FALSE(datei_vorhanden(session.graphikdatei + "_1"));
}

TEST_F(Writer, WritesTheNormalForm) {
    open(
        "# Kopf\r\n"
        "NETZTEIL A\n"
        "\n"
        "TITEL3 drei\n"
        "PUNKTSIGNATUR 2500000.5 5650000 1 2 1 \"A 17\" 12.34 -5\n"
        "PUNKTSIGNATUR 1 2 0 0 0\n"
        "PUNKTSIGNATUR 5 6 0 0 9 \"ohne\"\n"
        "DISTANZ 1 2 3 4\n"
        "MAßSTABGRUNDRISS 1000 100 200.5 54 1 2 3\n"
        "NUMBEZOFFSET 5208 10 20\n"
        "Unbekannt  bleibt \n"
        "NETZTEIL B\n"
        "OBJEKTE 1\n");
    close();
    EXPECT_EQ(file_text(),
              std::string(head) +
                  "# Kopf\r\n"
                  "NETZTEIL A\r\n"
                  "MaßstabGrundriss 1000        100.000        200.500    54 1     2     3\r\n"
                  "Titel3 drei\r\n" +
                  default_selection +
                  "Punktsignatur   2500000.500  5650000.000 1 2 1 \"A 17\"      12.3      -5.0\r\n"
                  "Punktsignatur         1.000        2.000 0 0 0 \r\n"
                  "NumbezOffset 5208       10.000       20.000\r\n"
                  "DISTANZ 1 2 3 4\r\n"
                  "Unbekannt  bleibt \r\n"
                  "NETZTEIL B\r\n"
                  "OBJEKTE 1\r\n");
}

TEST_F(Writer, UnknownRecordsAndUndefinedBytesKeepTheirPlaces) {
    session.graphikdatei = folder.file("bytes.dat",
                                       "erste\nNETZTEIL A\nzwei\x81\x8D\x8F\x90\x9D\xA0\n"
                                       "PUNKTSIGNATUR 1 2 0 0 1\nvier\nNETZTEIL B\nf\xFCnf\n");
    session.arbeitsdatei_basis = session.graphikdatei;
    reopen();
    close();
    const std::string bytes = testing_support::file_bytes(session.graphikdatei);
    EXPECT_THAT(bytes, HasSubstr("\r\nerste\r\nNETZTEIL A\r\n"));
    EXPECT_THAT(bytes,
                HasSubstr("zwei\x81\x8D\x8F\x90\x9D\xA0\r\nvier\r\nNETZTEIL B\r\nf\xFCnf\r\n"));
}

TEST_F(Writer, WritingTwiceGivesTheSameAsWritingOnce) {
    open(
        "NETZTEIL A\nOBJEKTE 1 1 7 1 0 0 0 2 1 2 0 1 1 -99 1\nPUNKTSIGNATUR 1 2 0 0 1 P 5 6\n"
        "NUMBEZOFFSET L 5308 1 2\nMAßSTABGRUNDRISS 1500\nNETZTEIL B\nX\n");
    close();
    const std::string once = file_text();
    reopen();
    close();
    EXPECT_EQ(file_text(), once);
}

TEST_F(Writer, CopiesAreGoneAfterTheFinalForm) {
    open("NETZTEIL A\nx\n");
    arbeitskopie_schreiben(session);
    EXPECT_EQ(session.arbeitsdatei_suffix, "_1");
    arbeitskopie_schreiben(session);
    EXPECT_EQ(session.arbeitsdatei_suffix, "_2");
    EXPECT_TRUE(datei_vorhanden(session.graphikdatei + "_1"));
    arbeitskopie_schreiben(session);
    EXPECT_EQ(session.arbeitsdatei_suffix, "_1");
    endfassung_schreiben(session);
    EXPECT_FALSE(datei_vorhanden(session.graphikdatei + "_1"));
    EXPECT_FALSE(datei_vorhanden(session.graphikdatei + "_2"));
    EXPECT_EQ(session.datei_geladen, 0);
    EXPECT_FALSE(session.window[MenuItem::m_torvel_objekte].enabled);
    EXPECT_FALSE(session.window[ToolButton::plot_aus].enabled);
}

TEST_F(Writer, ScaleFollowsItsPartAndUnplottedPartsHaveNone) {
    open(
        "NETZTEIL A\nx\nMAßSTABGRUNDRISS 500\nNETZTEIL B\nMAßSTABGRUNDRISS 0.5\nNETZTEIL C\nM "
        "250\n");
    endfassung_schreiben(session);
    EXPECT_EQ(file_text(), std::string(head) +
                               "NETZTEIL A\r\nMaßstabGrundriss 500\r\nx\r\nNETZTEIL B\r\n"
                               "NETZTEIL C\r\nMaßstabGrundriss 250\r\n");
}

TEST_F(Writer, PartInTheLastLineGetsNoBlock) {
    open("NETZTEIL B\nx\nNETZTEIL A\n");
    session.netz_aktuell = 2;
    punkt_lesen(session);
    arbeitskopie_schreiben(session);
    EXPECT_EQ(copy_text("_1"), "NETZTEIL B\r\nx\r\nNETZTEIL A\r\n");
}

TEST_F(Writer, FileWithoutPartBeginsWithItsBlock) {
    open("PUNKTSIGNATUR 1 2 0 0 1\nx\n");
    close();
    EXPECT_EQ(file_text(), std::string(head) + default_selection +
                               "Punktsignatur         1.000        2.000 0 0 1 \r\nx\r\n");
}

TEST_F(Writer, FileWithoutPartStatesItsScaleOnce) {
    open("MAßSTABGRUNDRISS 500\nPUNKTSIGNATUR 1 2 0 0 1\n");
    close();
    EXPECT_THAT(file_text(), HasSubstr("2.\r\nMaßstabGrundriss 500\r\nObjekte"));
}

TEST_F(Writer, ShortSignatureRecordStays) {
    open("NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0\nPUNKTSIGNATUR 1 2 0 0 1\n");
    arbeitskopie_schreiben(session);
    EXPECT_THAT(copy_text("_1"), HasSubstr("\r\nPUNKTSIGNATUR 1 2 0 0\r\n"));
    EXPECT_THAT(copy_text("_1"), Not(HasSubstr("PUNKTSIGNATUR 1 2 0 0 1")));
}

TEST_F(Writer, AbbreviatedTitleIsDroppedByBothWriters) {
    open("NETZTEIL A\nx\nNETZTEIL B\nT abc\nTITEL1 eins\n");
    close();
    EXPECT_THAT(file_text(), Not(HasSubstr("abc")));
    EXPECT_THAT(file_text(), Not(HasSubstr("eins")));
}

TEST_F(Writer, LabelWithAQuoteIsCutAtItWhenReadBack) {
    open("NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0 1 a\"b\nx\n");
    EXPECT_EQ(session.pu[1].pu_bez, "a\"b");
    close();
    reopen();
    EXPECT_EQ(session.pu[1].pu_bez, "a");
}

TEST_F(Writer, OffsetsOfAPointWithoutLabelDoNotSurvive) {
    open("NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0 1 \"\" 5 6\nx\n");
    EXPECT_EQ(session.pu[1].pu_bez_rechts, 5.0);
    close();
    reopen();
    EXPECT_EQ(session.pu[1].pu_bez_rechts, 0.0);
}

TEST_F(Writer, DistrictNameIsWrittenWithItsBlankAndReadBack) {
    open("NETZTEIL A\nNUMBEZOFFSET L 5308 100 200\nx\n");
    close();
    EXPECT_THAT(file_text(), HasSubstr("NumbezOffset L 5308      100.000      200.000\r\n"));
    reopen();
    EXPECT_EQ(session.nuoff[1].nuoff_bez, "L 5308");
}

TEST_F(Writer, OverlongLineVanishesLikeABlankOne) {
    open("NETZTEIL A\n" + std::string(32768, 'y') + "\nx\n");
    endfassung_schreiben(session);
    EXPECT_EQ(file_text(), std::string(head) + "NETZTEIL A\r\nx\r\n");
}

TEST_F(Writer, EmptyFileBecomesItsHead) {
    open("");
    close();
    EXPECT_EQ(file_text(), head);
}

TEST_F(Writer, PartsOfOneNameAreWrittenTogether) {
    open("NETZTEIL A\nPUNKTSIGNATUR 1 1 0 0 1\nNETZTEIL A\nPUNKTSIGNATUR 2 2 0 0 1\nx\n");
    EXPECT_EQ(session.pu.count(), 2);
    arbeitskopie_schreiben(session);
    const std::string block = std::string(default_selection) +
                              "Punktsignatur         1.000        1.000 0 0 1 \r\n"
                              "Punktsignatur         2.000        2.000 0 0 1 \r\n";
    EXPECT_EQ(copy_text("_1"), "NETZTEIL A\r\n" + block + "NETZTEIL A\r\n" + block + "x\r\n");
}

TEST_F(Writer, LinksAreFollowedAndModesKept) {
    open("NETZTEIL A\nx\n");
    const std::string target = session.graphikdatei;
    const std::string link = folder.path("link.dat");
    std::filesystem::create_symlink(target, link);
    std::filesystem::permissions(target, std::filesystem::perms(0640));
    session.graphikdatei = link;
    endfassung_schreiben(session);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_THAT(testing_support::file_bytes(target), HasSubstr("VerfahrenLegende"));
    EXPECT_EQ(std::filesystem::status(target).permissions(), std::filesystem::perms(0640));
}

}  // namespace
}  // namespace veldra
