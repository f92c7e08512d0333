#include "shell/long_work.h"

#include <gtest/gtest.h>

#include "fake_measurer.h"
#include "graphikdatei/writer.h"
#include "session_fixture.h"
#include "shell/lifecycle.h"

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
    EXPECT_EQ(work.calls, 0);
    EXPECT_NE(file_text().find("Objekte"), std::string::npos);
}

TEST_F(LongWorkOnFile, AForgottenFileLeavesNothing) {
    read_points(one_point);
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
}

}  // namespace
}  // namespace veldra
