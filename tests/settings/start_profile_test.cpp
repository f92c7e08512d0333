#include "settings/start_profile.h"

#include <string>

#include <gtest/gtest.h>

#include "model/session.h"
#include "temp_file.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using testing_support::file_bytes;

class StartProfile : public testing::Test {
 protected:
    void read(const std::string& bytes) { start_lesen(session_, folder_.file("P.INI", bytes)); }
    std::string written() {
        start_schreiben(session_, folder_.path("P.INI"));
        return file_bytes(folder_.path("P.INI"));
    }

    testing_support::TempFolder folder_;
    Session session_;
};

TEST_F(StartProfile, MissingFileGivesEmptyValues) {
    session_.bestaetigung = "N";
    session_.zuletzt_datei[2] = "/a/ve.dat";
    start_lesen(session_, folder_.path("none.ini"));
    EXPECT_EQ(session_.bestaetigung, "");
    EXPECT_EQ(session_.zuletzt_datei[2], "");
}

TEST_F(StartProfile, ReadsConfirmationAndRecentFiles) {
    read(
        "[START]\nBestaetigung=\" N \"\n[GRAPHIKDATEIEN]\n"
        "Graphikdatei_1=/b/ve_1.dat\nGraphikdatei_4=/k\xF6ln/\x80.dat\nGraphikdatei_0=x\n");
    EXPECT_EQ(session_.bestaetigung, "N");
    EXPECT_EQ(session_.zuletzt_datei[0], "");
    EXPECT_EQ(session_.zuletzt_datei[1], "/b/ve_1.dat");
    EXPECT_EQ(session_.zuletzt_datei[2], "");
    EXPECT_EQ(session_.zuletzt_datei[4], "/köln/€.dat");
}

TEST_F(StartProfile, WritesAllKeys) {
    session_.bestaetigung = "N";
    session_.zuletzt_datei = {"", "/köln/ve.dat", "/b.dat", "", ""};
    EXPECT_EQ(written(),
              "[START]\r\nBestaetigung=N\r\n[GRAPHIKDATEIEN]\r\nGraphikdatei_1=/k\xF6ln/ve.dat\r\n"
              "Graphikdatei_2=/b.dat\r\nGraphikdatei_3=\r\nGraphikdatei_4=\r\n");
}

TEST_F(StartProfile, WritingEmptiesWhatIsGone) {
    read(
        "[START]\nBestaetigung=N\n[GRAPHIKDATEIEN]\nGraphikdatei_1=/a.dat\nGraphikdatei_2=/"
        "b.dat\n");
    session_.bestaetigung = "";
    session_.zuletzt_datei = {"", "/b.dat", "", "", ""};
    EXPECT_EQ(written(),
              "[START]\nBestaetigung=\n[GRAPHIKDATEIEN]\nGraphikdatei_1=/b.dat\nGraphikdatei_2=\n"
              "Graphikdatei_3=\r\nGraphikdatei_4=\r\n");
}

TEST_F(StartProfile, LeavesOutPathsThatTheFileCannotGiveBack) {
    const std::string good = "/" + std::string(254, 'g');
    for (const std::string& bad : {std::string("/Łódź.dat"), good + "g", std::string("/a\nb.dat"),
                                   std::string("'/a.dat'"), std::string("a.dat ")}) {
        session_.zuletzt_datei = {"", good, bad, "/b.dat", bad};
        written();
        Session other;
        start_lesen(other, folder_.path("P.INI"));
        EXPECT_EQ(other.zuletzt_datei[1], good) << bad;
        EXPECT_EQ(other.zuletzt_datei[2], "/b.dat") << bad;
        EXPECT_EQ(other.zuletzt_datei[3], "") << bad;
        EXPECT_EQ(other.zuletzt_datei[4], "") << bad;
    }
}

TEST_F(StartProfile, KeepsTheSettingsInTheFile) {
    read("[BEZPUN]\npubfon=Arial\n");
    EXPECT_EQ(written().rfind("[BEZPUN]\npubfon=Arial\n[START]\r\n", 0), 0U);
}

TEST_F(StartProfile, AFailedWriteSaysSo) {
    EXPECT_THROW(start_schreiben(session_, folder_.path("none/P.INI")), FatalError);
}

}  // namespace
}  // namespace veldra
