#include "batch/plot_command.h"

#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>

#include "page_content.h"
#include "queue_fixture.h"
#include "temp_file.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using test::PageLine;
using test::service;
using test::wait_for_jobs;
using ::testing::HasSubstr;

class PlotOnQueueTest : public test::QueueTest {
 protected:
    batch::PlotArguments arguments() const {
        batch::PlotArguments plot;
        plot.files = {folder.file("ve.dat",
                                  "VERFAHRENLEGENDE Netz am Plotter\n"
                                  "PUNKTSIGNATUR 1000 2000 0 0 1 \"A\"\n"
                                  "PUNKTSIGNATUR 1100 2000 0 0 0 \"B\"\n"
                                  "RICHTUNG 1000 2000 1100 2000 50 1 2\n")};
        plot.printer = "Plotter";
        plot.scale = "1000";
        return plot;
    }

    testing_support::TempFolder folder;
};

TEST_F(PlotOnQueueTest, SheetReachesTheQueueAtItsTrueSize) {
    const int before = service().jobs_received();
    EXPECT_EQ(batch::command_plot(arguments()), 0);
    wait_for_jobs(before + 1);
    EXPECT_EQ(service().jobs_received(), before + 1);
    EXPECT_THAT(service().attributes(before + 1), HasSubstr("Netz am Plotter"));
    int marks = 0;
    for (const std::string& stream : test::unpacked_streams(service().document(before + 1))) {
        for (const PageLine& line : test::lines_of(stream)) {
            const double length = std::hypot(line.x2 - line.x1, line.y2 - line.y1) * 25.4 / 72;
            marks += std::abs(length - 5) < 0.02 ? 1 : 0;
        }
    }
    EXPECT_EQ(marks, 8);  // two at each corner of the net area, 5 mm long
}

TEST_F(PlotOnQueueTest, CopiesShareAJobAndFilesDoNot) {
    const int before = service().jobs_received();
    batch::PlotArguments plot = arguments();
    plot.copies = 2;
    plot.files.push_back(folder.file("b.dat", "PUNKTSIGNATUR 1 2 0 0 1\n"));
    EXPECT_EQ(batch::command_plot(plot), 0);
    wait_for_jobs(before + 2);
    EXPECT_EQ(service().jobs_received(), before + 2);
}

TEST_F(PlotOnQueueTest, PaperThatTheQueueLacksIsAFailure) {
    const int before = service().jobs_received();
    batch::PlotArguments plot = arguments();
    plot.paper = "300x700";
    EXPECT_EQ(batch::command_plot(plot), 1);
    EXPECT_EQ(service().jobs_received(), before);
}

TEST_F(PlotOnQueueTest, UnknownQueueAndTheBuiltInDeviceAreRefused) {
    batch::PlotArguments plot = arguments();
    for (const char* name : {"Kein Plotter", "PDF-Datei"}) {
        plot.printer = name;
        EXPECT_THROW((void)batch::command_plot(plot), FatalError) << name;
    }
}

}  // namespace
}  // namespace veldra
