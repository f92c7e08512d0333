#include "windows/qt/qt_printers.h"

#include <chrono>
#include <cmath>
#include <filesystem>
#include <thread>

#include <gmock/gmock.h>

#include "page_content.h"
#include "plot/application_printer.h"
#include "queue_fixture.h"

namespace veldra {
namespace {

using test::file_device;
using test::PageLine;
using test::service;
using test::wait_for_jobs;
using ::testing::HasSubstr;

constexpr double millimetres_per_point = 25.4 / 72;

using QtPrintersTest = test::QueueTest;

TEST_F(QtPrintersTest, QueuesComeFirstAndTheBuiltInDeviceLast) {
    QtPrinters printers(file_device(), measurer);
    ASSERT_EQ(printers.Count(), 2);
    EXPECT_EQ(printers.DeviceName(0), "Plotter");
    EXPECT_EQ(printers.DeviceName(1), "PDF-Datei");
    EXPECT_TRUE(printers.is_queue(0));
    EXPECT_FALSE(printers.is_queue(1));
    EXPECT_THROW((void)printers.DeviceName(2), PrinterError);
    EXPECT_THROW(printers.assign(-1), PrinterError);
}

TEST_F(QtPrintersTest, DefaultQueueIsTheApplicationPrinterAtTheStart) {
    QtPrinters printers(file_device(), measurer);
    EXPECT_EQ(printers.DeviceName(), "Plotter");
    QtPrinters without(nullptr, measurer);
    EXPECT_EQ(without.Count(), 1);
    EXPECT_EQ(without.DeviceName(), "Plotter");
}

TEST_F(QtPrintersTest, QueuePassesTheCheckAndHasColour) {
    QtPrinters printers(file_device(), measurer);
    Session session;
    take_printer(session, &printers);
    EXPECT_EQ(session.printer.drucker_ok, -1);
    EXPECT_EQ(session.printer.drucker_farbe, 2);
    EXPECT_EQ(session.printer.drucker_start, "Plotter");
    EXPECT_EQ(session.window[MenuItem::m_optionen_drucker].caption, "&Anwendungsdrucker: Plotter");
}

TEST_F(QtPrintersTest, PrintableAreaIsThePaperWithoutTheQueuesMargins) {
    QtPrinters printers(file_device(), measurer);
    printers.set_Orientation(1);
    EXPECT_NEAR(printers.ScaleWidth(6), 210 - 24 * millimetres_per_point, 1e-3);
    EXPECT_NEAR(printers.ScaleHeight(6), 297 - 36 * millimetres_per_point, 1e-3);
    EXPECT_NEAR(printers.ScaleWidth(1), 210 / 25.4 * 1440 - 24 * 20, 1e-2);
    EXPECT_NEAR(printers.Width(), 210 / 25.4 * 1440, 1e-2);
    printers.set_Orientation(2);
    EXPECT_NEAR(printers.ScaleWidth(6), 297 - 36 * millimetres_per_point, 1e-3);
    EXPECT_NEAR(printers.ScaleHeight(6), 210 - 24 * millimetres_per_point, 1e-3);
    EXPECT_NEAR(printers.Width(), 297 / 25.4 * 1440, 1e-2);
}

TEST_F(QtPrintersTest, QueueTakesItsOwnPapersOnly) {
    QtPrinters printers(file_device(), measurer);
    EXPECT_EQ(printers.PaperSize(), 9);
    printers.set_PaperSize(8);
    EXPECT_EQ(printers.PaperSize(), 8);
    for (const std::int16_t refused : {std::int16_t{1}, std::int16_t{300}, std::int16_t{272},
                                       std::int16_t{256}, std::int16_t{0}, std::int16_t{-1}}) {
        printers.set_PaperSize(refused);
        EXPECT_EQ(printers.PaperSize(), 8) << refused;
    }
    printers.set_PaperSize(268);  // A4 by another code
    EXPECT_EQ(printers.PaperSize(), 9);
    printers.set_Width(1000);
    EXPECT_NEAR(printers.Width(), 210 / 25.4 * 1440, 1e-2);
}

TEST_F(QtPrintersTest, EndOfTheDocumentForgetsPaperAndBin) {
    QtPrinters printers(file_device(), measurer);
    printers.set_PaperSize(8);
    printers.set_PaperBin(2);
    EXPECT_EQ(printers.PaperBin(), 2);
    printers.set_PaperBin(12);
    EXPECT_EQ(printers.PaperBin(), 2);
    printers.EndDoc();
    EXPECT_EQ(printers.PaperSize(), 9);
    EXPECT_EQ(printers.PaperBin(), 7);
}

TEST_F(QtPrintersTest, EachPrinterKeepsItsPaperWhileAnotherIsTheCurrentOne) {
    QtPrinters printers(file_device(), measurer);
    printers.set_PaperSize(8);
    printers.assign(1);
    EXPECT_EQ(printers.DeviceName(), "PDF-Datei");
    EXPECT_EQ(printers.PaperSize(), 9);
    printers.assign(0);
    EXPECT_EQ(printers.PaperSize(), 8);
}

TEST_F(QtPrintersTest, TrackingFollowsTheDefaultPrinter) {
    QtPrinters printers(file_device(), measurer);
    printers.assign(1);
    printers.set_TrackDefault(true);
    EXPECT_EQ(printers.DeviceName(), "Plotter");
    printers.choose_default(1);
    EXPECT_EQ(printers.DeviceName(), "PDF-Datei");
    printers.set_TrackDefault(false);
    printers.choose_default(0);
    EXPECT_EQ(printers.DeviceName(), "PDF-Datei");
}

TEST_F(QtPrintersTest, PageReachesTheQueueAtItsTrueScale) {
    QtPrinters printers(file_device(), measurer);
    const int before = service().jobs_received();
    printers.set_Orientation(2);
    printers.set_PaperBin(1);
    ASSERT_TRUE(printers.begin_job({"Netz"}));
    printers.begin_sheet({"A", "1.1"});
    PageTarget& page = printers.page();
    EXPECT_NEAR(page.pixel_size(), 25.4 / 300, 1e-9);
    page.ForeColor(0);
    page.Line(10, 20, 210, 20);
    // The ground at 1:500 with its origin at the lower left corner of the printable area.
    const double width = printers.ScaleWidth(6) * 0.5;
    const double height = printers.ScaleHeight(6) * 0.5;
    page.Scale(0, height, width, 0);
    page.Line(10, 10, 40, 50);
    printers.NewPage();
    printers.end_job();
    wait_for_jobs(before + 1);

    const std::string document = service().document(before + 1);
    std::vector<PageLine> lines;
    for (const std::string& stream : test::unpacked_streams(document)) {
        for (const PageLine& line : test::lines_of(stream)) {
            lines.push_back(line);
        }
    }
    ASSERT_EQ(lines.size(), 2U);
    constexpr double tolerance = 0.02;  // mm
    const auto millimetres = [](double points) { return points * millimetres_per_point; };
    const double left = 18 * millimetres_per_point;
    const double top = 842 * millimetres_per_point * 595 / 842;  // the page is 595 points high
    EXPECT_NEAR(millimetres(lines[0].x1), left + 10, tolerance);
    EXPECT_NEAR(millimetres(lines[0].x2), left + 210, tolerance);
    EXPECT_NEAR(millimetres(lines[0].y1), top - 12 * millimetres_per_point - 20, tolerance);
    // 30 m and 40 m of ground are 60 mm and 80 mm.
    EXPECT_NEAR(millimetres(lines[1].x2 - lines[1].x1), 60, tolerance);
    EXPECT_NEAR(millimetres(lines[1].y2 - lines[1].y1), 80, tolerance);
    EXPECT_NEAR(millimetres(lines[1].x1), left + 20, tolerance);

    const std::string attributes = service().attributes(before + 1);
    EXPECT_THAT(attributes, HasSubstr("print-scaling"));
    EXPECT_THAT(attributes, HasSubstr("none"));
    EXPECT_THAT(attributes, HasSubstr("media-source"));
    EXPECT_THAT(attributes, HasSubstr("top"));
    EXPECT_THAT(attributes, HasSubstr("Netz"));
}

TEST_F(QtPrintersTest, JobWithoutPagesSendsNothing) {
    QtPrinters printers(file_device(), measurer);
    const int before = service().jobs_received();
    ASSERT_TRUE(printers.begin_job({"Netz"}));
    printers.end_job();
    printers.EndDoc();
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(service().jobs_received(), before);
}

TEST_F(QtPrintersTest, DroppedJobSendsNothing) {
    QtPrinters printers(file_device(), measurer);
    const int before = service().jobs_received();
    ASSERT_TRUE(printers.begin_job({"Netz"}));
    printers.begin_sheet({"A", "1.1"});
    printers.page().Line(10, 20, 110, 20);
    printers.abort_job();
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(service().jobs_received(), before);
}

TEST_F(QtPrintersTest, CancelledJobDoesNotBegin) {
    QtPrinters printers(file_device(), measurer);
    printers.cancel_next_job();
    EXPECT_FALSE(printers.begin_job({"Netz"}));
    EXPECT_TRUE(printers.begin_job({"Netz"}));
}

TEST_F(QtPrintersTest, OutputGoesToAFileOnceIfOneIsNamed) {
    QtPrinters printers(file_device(), measurer);
    const testing_support::TempFolder folder;
    const int before = service().jobs_received();
    printers.set_output_file(folder.path("plot.pdf"));
    ASSERT_TRUE(printers.begin_job({"Netz"}));
    printers.begin_sheet({"A", "1.1"});
    printers.NewPage();
    printers.begin_sheet({"A", "1.2"});
    printers.end_job();
    const std::string document = testing_support::file_bytes(folder.path("plot.pdf"));
    EXPECT_EQ(document.substr(0, 5), "%PDF-");
    EXPECT_THAT(document, HasSubstr("/Count 2"));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(service().jobs_received(), before);
    ASSERT_TRUE(printers.begin_job({"Netz"}));
    printers.begin_sheet({"A", "1.1"});
    printers.end_job();
    wait_for_jobs(before + 1);
    EXPECT_EQ(service().jobs_received(), before + 1);
}

TEST_F(QtPrintersTest, FileThatCannotBeWrittenIsAnError) {
    QtPrinters printers(file_device(), measurer);
    const testing_support::TempFolder folder;
    printers.set_output_file(folder.path("no folder/plot.pdf"));
    EXPECT_THROW(printers.begin_job({"Netz"}), PrinterError);
    printers.abort_job();
    std::filesystem::create_symlink("fehlt", folder.path("link.pdf"));
    printers.set_output_file(folder.path("link.pdf"));
    EXPECT_THROW(printers.begin_job({"Netz"}), PrinterError);
    printers.abort_job();
    EXPECT_FALSE(std::filesystem::exists(folder.path("fehlt")));
}

TEST_F(QtPrintersTest, FileOfADroppedJobStaysAsItWas) {
    QtPrinters printers(file_device(), measurer);
    const testing_support::TempFolder folder;
    const std::string path = folder.file("plot.pdf", "alt");
    printers.set_output_file(path);
    ASSERT_TRUE(printers.begin_job({"Netz"}));
    printers.begin_sheet({"A", "1.1"});
    printers.abort_job();
    EXPECT_EQ(testing_support::file_bytes(path), "alt");
}

TEST_F(QtPrintersTest, LargeFormatsGoByTheirOwnCodes) {
    // Nothing is known of this queue, so it takes any paper.
    QtQueue queue(QStringLiteral("Nowhere"), measurer);
    struct Paper {
        std::int16_t code;
        double width;
        double height;
    };
    for (const Paper& paper : {Paper{272, 841, 1189}, Paper{271, 594, 841}, Paper{276, 707, 1000},
                               Paper{66, 420, 594}, Paper{8, 297, 420}}) {
        queue.set_PaperSize(paper.code);
        EXPECT_EQ(queue.PaperSize(), paper.code);
        EXPECT_NEAR(queue.Width() / 1440 * 25.4, paper.width, 0.01);
        EXPECT_NEAR(queue.Height() / 1440 * 25.4, paper.height, 0.01);
    }
}

TEST_F(QtPrintersTest, UnknownQueueIsAnError) {
    QtQueue queue(QStringLiteral("Nowhere"), measurer);
    EXPECT_THROW(queue.set_Orientation(1), PrinterError);
    EXPECT_THROW(queue.begin_job({"Netz"}), PrinterError);
}

/// The service is stopped while this lives.
class ServiceStopped {
 public:
    ServiceStopped() { service().stop(); }
    ~ServiceStopped() { service().start(); }
    ServiceStopped(const ServiceStopped&) = delete;
    ServiceStopped& operator=(const ServiceStopped&) = delete;
};

TEST_F(QtPrintersTest, ServiceThatIsGoneIsAnErrorAtTheBeginningAndAtTheEndOfAJob) {
    QtPrinters printers(file_device(), measurer);
    ASSERT_TRUE(printers.begin_job({"Netz"}));
    printers.begin_sheet({"A", "1.1"});
    {
        const ServiceStopped stopped;
        EXPECT_THROW(printers.end_job(), PrinterError);
        EXPECT_THROW(printers.begin_job({"Netz"}), PrinterError);
        Session session;
        CheckPrinter(session, &printers);
        EXPECT_EQ(session.printer.drucker_ok, 0);
    }
    ASSERT_EQ(service().trouble(), "");
    EXPECT_TRUE(printers.begin_job({"Netz"}));
}

TEST_F(QtPrintersTest, BuiltInDeviceIsTheApplicationPrinterWithoutQueues) {
    const ServiceStopped stopped;
    QtPrinters printers(file_device(), measurer);
    EXPECT_EQ(printers.Count(), 1);
    EXPECT_EQ(printers.DeviceName(), "PDF-Datei");
    QtPrinters none(nullptr, measurer);
    EXPECT_EQ(none.Count(), 0);
    EXPECT_THROW((void)none.DeviceName(), PrinterError);
    Session session;
    take_printer(session, &none);
    EXPECT_EQ(session.printer.drucker_ok, 0);
    EXPECT_EQ(session.printer.drucker_start, "");
}

}  // namespace
}  // namespace veldra
