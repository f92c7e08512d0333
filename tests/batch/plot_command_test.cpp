#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <sstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <sys/stat.h>

#include "pdf/pdf_reader.h"
#include "program_run.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using nlohmann::json;
using pdf_test::ShownPage;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using testing_support::file_bytes;
using testing_support::ProgramRun;
using testing_support::TempFolder;

/// A part that has never been plotted, one that has its settings (1:500, upright, binding margin on
/// the left, legend 4, one sheet from (0, 0)), and an empty one.
constexpr const char* network =
    "VERFAHRENLEGENDE Übung\n"
    "NETZTEIL Neu\n"
    "OBJEKTE 1 1 0 0 0 0 0 1 0 1 0 1 1\n"
    "PUNKTSIGNATUR 1000 2000 0 0 1 \"A\"\n"
    "PUNKTSIGNATUR 1100 2000 0 0 0 \"B\"\n"
    "RICHTUNG 1000 2000 1100 2000 50 1 2\n"
    "NETZTEIL Fertig\n"
    "MAßSTABGRUNDRISS 500 0 0 73\n"
    "OBJEKTE 1 1 0 0 0 0 0 1 0 1 0 1 1\n"
    "PUNKTSIGNATUR 10 20 0 0 1 \"F\"\n"
    "NETZTEIL Leer\n";

class PlotCommand : public ::testing::Test {
 protected:
    std::string file(std::string_view utf8 = network, const std::string& name = "ve.dat") {
        return folder.file(name, from_utf8(utf8));
    }
    ProgramRun run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "plot");
        return testing_support::run_veldra(folder, arguments);
    }
    /// Plots the network with these options and reads the pages.
    std::vector<ShownPage> plot(const std::vector<std::string>& options) {
        std::vector<std::string> arguments{file(), "-o", folder.path("p.pdf")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ProgramRun result = run(arguments);
        EXPECT_EQ(result.exit_code, 0) << result.err;
        return pages(folder.path("p.pdf"));
    }
    static std::vector<ShownPage> pages(const std::string& path) {
        QPDF pdf;
        pdf.processFile(path.c_str());
        std::vector<ShownPage> all;
        for (const QPDFPageObjectHelper& page : QPDFPageDocumentHelper(pdf).getAllPages()) {
            all.emplace_back(page);
        }
        return all;
    }
    static std::vector<std::string> texts(const ShownPage& page) {
        std::vector<std::string> all;
        for (const pdf_test::Text& text : page.texts) {
            all.push_back(text.bytes);
        }
        return all;
    }
    static void expect_size(const ShownPage& page, double width, double height) {
        EXPECT_NEAR(page.width, width, 0.01);
        EXPECT_NEAR(page.height, height, 0.01);
    }
    /// Place of the first corner mark's angle: the upper left corner of the net area.
    static pdf_test::Point net_corner(const ShownPage& page) {
        return page.paths.at(0).pieces.at(0).from;
    }
    /// Upper left corner of the first text that begins so.
    static pdf_test::Point place_of(const ShownPage& page, const std::string& beginning) {
        for (const pdf_test::Text& text : page.texts) {
            if (text.bytes.rfind(beginning, 0) == 0) {
                return text.base;
            }
        }
        ADD_FAILURE() << beginning << " is not on the page";
        return {};
    }

    TempFolder folder;
};

TEST_F(PlotCommand, FirstPartIsPlottedOnTheFewestAndLargestSheet) {
    const std::vector<ShownPage> all = plot({});
    ASSERT_EQ(all.size(), 1U);
    EXPECT_THAT(texts(all[0]), AllOf(Contains("A"), Contains("B"), Not(Contains("F"))));
}

TEST_F(PlotCommand, PartsComeInTheOrderAskedForCopyByCopy) {
    const std::vector<ShownPage> all =
        plot({"--netzteil", "Fertig", "--netzteil", "Neu", "--exemplare", "2"});
    ASSERT_EQ(all.size(), 4U);
    EXPECT_THAT(texts(all[0]), Contains("F"));
    EXPECT_THAT(texts(all[1]), Contains("A"));
    EXPECT_THAT(texts(all[2]), Contains("F"));
    EXPECT_THAT(texts(all[3]), Contains("A"));
}

TEST_F(PlotCommand, AlleTakesAllPartsAndNamesEmptyOnes) {
    const ProgramRun result =
        run({file(), "--alle", "-o", folder.path("p.pdf"), "--protokoll", folder.path("p.json")});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.err, HasSubstr("\"Leer\" enthält keine darzustellenden Objekte"));
    EXPECT_EQ(pages(folder.path("p.pdf")).size(), 2U);
    const json parts = json::parse(file_bytes(folder.path("p.json")))["dateien"][0]["netzteile"];
    ASSERT_EQ(parts.size(), 3U);
    EXPECT_EQ(parts[0]["leer"], false);
    EXPECT_EQ(parts[1]["massstab"], 500.0);
    EXPECT_EQ(parts[2]["netzteil"], "Leer");
    EXPECT_EQ(parts[2]["leer"], true);
}

TEST_F(PlotCommand, TwoPartsWithoutSettingsShareADocument) {
    const std::string two =
        file("NETZTEIL a\nPUNKTSIGNATUR 1 2 0 0 1\nNETZTEIL b\nPUNKTSIGNATUR 3 4 0 0 1\n");
    EXPECT_EQ(run({two, "--alle", "-o", folder.path("p.pdf")}).exit_code, 0);
    EXPECT_EQ(pages(folder.path("p.pdf")).size(), 2U);
}

TEST_F(PlotCommand, MassstabSetsTheScale) {
    // 100 m are 50 mm at 1:2000 and 200 mm at 1:500.
    for (const auto& [scale, millimetres] : {std::pair("2000", 50.0), std::pair("500", 200.0)}) {
        const std::vector<ShownPage> all = plot({"--massstab", scale});
        ASSERT_EQ(all.size(), 1U);
        EXPECT_NEAR(place_of(all[0], "B").x - place_of(all[0], "A").x, millimetres, 0.02);
    }
}

TEST_F(PlotCommand, MassstabIsTakenAsPeopleWriteIt) {
    // 100 m at 1:2500.5 are 39.992 mm, at 1:2000 50 mm.
    for (const auto& [scale, millimetres] :
         {std::pair("2500,5", 39.992), std::pair("2500.5", 39.992), std::pair("2 000", 50.0)}) {
        const std::vector<ShownPage> all = plot({"--massstab", scale});
        ASSERT_EQ(all.size(), 1U);
        EXPECT_NEAR(place_of(all[0], "B").x - place_of(all[0], "A").x, millimetres, 0.003) << scale;
    }
    for (const char* wrong : {"2,5,0", "2000 ", "2  000", "2 x", ",", "0,9"}) {
        EXPECT_EQ(run({file(), "--massstab", wrong, "-o", folder.path("p.pdf")}).exit_code, 2)
            << wrong;
    }
    EXPECT_EQ(run({file(), "--netzteil", "Fertig", "--blaetter", "1x1", "--massstab", "1", "-o",
                   folder.path("p.pdf")})
                  .exit_code,
              0)
        << "the largest scale of all";
}

TEST_F(PlotCommand, PaperWithoutRoomIsRefused) {
    const auto exit_code = [this](const char* paper, std::vector<std::string> options) {
        options.insert(options.begin(), {file(), "--papier", paper, "-o", folder.path("p.pdf")});
        return run(options).exit_code;
    };
    // Across go off 10 mm of edges, 0.5 mm, and 15 mm to bind or 0.5 mm; up 10, 12, and 15 or 0.5.
    EXPECT_EQ(exit_code("75.5x72.5", {"--ausrichtung", "hoch", "--heftrand", "links"}), 0);
    EXPECT_EQ(exit_code("75.4x72.5", {"--ausrichtung", "hoch", "--heftrand", "links"}), 2);
    EXPECT_EQ(exit_code("75.5x72.4", {"--ausrichtung", "hoch", "--heftrand", "links"}), 2);
    EXPECT_EQ(exit_code("72.5x75.5", {"--ausrichtung", "hoch", "--heftrand", "links"}), 2);
    EXPECT_EQ(exit_code("87x61", {"--ausrichtung", "quer", "--heftrand", "oben"}), 0);
    EXPECT_EQ(exit_code("86.9x61", {"--ausrichtung", "quer", "--heftrand", "oben"}), 2);
    EXPECT_EQ(exit_code("61x72.4", {"--heftrand", "kein"}), 2);
    EXPECT_EQ(exit_code("15x100", {}), 2);
    // There might be room, but not with the margin that the part has (upright, on the left).
    EXPECT_EQ(exit_code("70x80", {"--netzteil", "Fertig"}), 1);
}

TEST_F(PlotCommand, PapersOfTheUserAreTheSameForNewPartsAndOthers) {
    const std::vector<ShownPage> all = plot({"--netzteil", "Neu", "--netzteil", "Fertig",
                                             "--papier", "300.01x500.51", "--ausrichtung", "hoch"});
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].width, all[1].width);
    EXPECT_EQ(all[0].height, all[1].height);
    const ShownPage alone =
        plot({"--netzteil", "Fertig", "--papier", "300.01x500.51", "--ausrichtung", "hoch"}).at(0);
    EXPECT_EQ(alone.width, all[0].width);
    EXPECT_EQ(alone.height, all[0].height);
    expect_size(alone, 300.01, 500.51);
}

TEST_F(PlotCommand, PaperAndOrientationGiveThePageSize) {
    expect_size(plot({"--papier", "A4", "--ausrichtung", "hoch"}).at(0), 210, 297);
    expect_size(plot({"--papier", "A4", "--ausrichtung", "quer"}).at(0), 297, 210);
    expect_size(plot({"--papier", "A3", "--ausrichtung", "hoch"}).at(0), 297, 420);
    expect_size(plot({"--papier", "A2", "--ausrichtung", "quer"}).at(0), 594, 420);
    expect_size(plot({"--papier", "A1", "--ausrichtung", "hoch"}).at(0), 594, 841);
    expect_size(plot({"--papier", "A0", "--ausrichtung", "quer"}).at(0), 1189, 841);
    expect_size(plot({"--papier", "300x500.5", "--ausrichtung", "hoch"}).at(0), 300, 500.5);
    expect_size(plot({"--papier", "914x5000", "--ausrichtung", "quer"}).at(0), 5000, 914);
}

TEST_F(PlotCommand, BindingMarginMovesTheNetArea) {
    // 5 mm cannot be printed on; the binding margin takes 15 mm, other sides 0.5 mm.
    const auto corner = [this](const char* margin) {
        return net_corner(plot({"--ausrichtung", "hoch", "--heftrand", margin}).at(0));
    };
    EXPECT_NEAR(corner("oben").x, 5.5, 0.01);
    EXPECT_NEAR(corner("oben").y, 20, 0.01);
    EXPECT_NEAR(corner("links").x, 20, 0.01);
    EXPECT_NEAR(corner("links").y, 5.5, 0.01);
    EXPECT_NEAR(corner("kein").x, 5.5, 0.01);
    EXPECT_NEAR(corner("kein").y, 5.5, 0.01);
}

TEST_F(PlotCommand, NewPartIsBoundOnTheLeftOrAboveWhenItLies) {
    const pdf_test::Point upright = net_corner(plot({"--ausrichtung", "hoch"}).at(0));
    EXPECT_NEAR(upright.x, 20, 0.01);
    EXPECT_NEAR(upright.y, 5.5, 0.01);
    const pdf_test::Point lying = net_corner(plot({"--ausrichtung", "quer"}).at(0));
    EXPECT_NEAR(lying.x, 5.5, 0.01);
    EXPECT_NEAR(lying.y, 20, 0.01);
}

TEST_F(PlotCommand, NewPartWithAnOrientationGetsItsLargestScale) {
    // Two points 100 m apart from west to east: across 286 mm there is room for a larger scale than
    // across 185 mm.
    const auto denominator = [this](const char* orientation) {
        plot({"--ausrichtung", orientation, "--protokoll", folder.path("p.json")});
        return json::parse(
                   file_bytes(folder.path("p.json")))["dateien"][0]["netzteile"][0]["massstab"]
            .get<double>();
    };
    const double upright = denominator("hoch");
    const double lying = denominator("quer");
    EXPECT_LT(lying, upright);
    EXPECT_GT(upright, 100 / 0.185);
    EXPECT_GT(lying, 100 / 0.286);
}

TEST_F(PlotCommand, SheetsAndZeroPointStandAsGiven) {
    // Columns of 92.25 m of ground (184.5 mm at 1:500) from 990 on: A is in the first, B in the
    // second.
    const std::vector<ShownPage> all =
        plot({"--massstab", "500", "--ausrichtung", "hoch", "--heftrand", "links", "--blaetter",
              "3x2", "--null", "990,1950"});
    ASSERT_EQ(all.size(), 6U);
    EXPECT_THAT(texts(all[0]), AllOf(Contains("A"), Not(Contains("B"))));
    EXPECT_THAT(texts(all[2]), AllOf(Contains("B"), Not(Contains("A"))));
    EXPECT_THAT(texts(all[1]), AllOf(Not(Contains("A")), Not(Contains("B"))));
    EXPECT_THAT(texts(all[5]), Contains("\xDC"
                                        "bung, Blatt 3.2 (3.2)"));
}

TEST_F(PlotCommand, LegendStandsOnTheSheetOfItsCorner) {
    // Of 2 x 2 sheets, column by column and from below.
    const std::map<std::string, std::size_t> sheet_of{{"1", 1}, {"2", 0}, {"3", 3}, {"4", 2}};
    for (const auto& [place, sheet] : sheet_of) {
        const std::vector<ShownPage> all =
            plot({"--legende", place, "--blaetter", "2x2", "--massstab", "500"});
        ASSERT_EQ(all.size(), 4U);
        for (std::size_t i = 0; i < all.size(); ++i) {
            const std::vector<std::string> shown = texts(all[i]);
            EXPECT_EQ(std::count(shown.begin(), shown.end(), "Grundriss 1: 500"), i == sheet)
                << place << " " << i;
        }
    }
}

TEST_F(PlotCommand, LegendOfANewPartMakesWayEverywhereAlike) {
    // At 1:1000 the part lies on one upright sheet, with a point in its lower right corner. The
    // record of the sheets holds 1 (upright) + 4 * 2 (bound on the left) + 16 * 3 (right above).
    const std::string path = file(
        "NETZTEIL Neu\n"
        "MAßSTABGRUNDRISS 1000\n"
        "OBJEKTE 0 0 0 0 0 0 0 0 0 0 0 0 0\n"
        "PUNKTSIGNATUR 0 0 0 0 0 \"A\"\n"
        "PUNKTSIGNATUR 100 200 0 0 0 \"B\"\n"
        "PUNKTSIGNATUR 160 8 0 0 0 \"C\"\n");
    const std::string stored = folder.path("stored.dat");
    ASSERT_EQ(testing_support::run_veldra(folder, {"normalform", path, "-o", stored}).exit_code, 0);
    std::istringstream record(
        file_bytes(stored).substr(file_bytes(stored).find(from_utf8("MaßstabGrundriss"))));
    std::string keyword;
    double scale = 0;
    double rechts = 0;
    double hoch = 0;
    int code = 0;
    record >> keyword >> scale >> rechts >> hoch >> code;
    EXPECT_EQ(code, 57);

    const auto legend_line = [this](const std::string& plotted) {
        EXPECT_EQ(run({plotted, "-o", folder.path("p.pdf")}).exit_code, 0);
        const std::vector<ShownPage> all = pages(folder.path("p.pdf"));
        EXPECT_EQ(all.size(), 1U);
        for (const auto& text : all.at(0).texts) {
            if (text.bytes == "Grundriss 1: 1000") {
                return std::pair(text.base.x, text.base.y);
            }
        }
        return std::pair(0.0, 0.0);
    };
    // Millimetres from the upper left corner of A4.
    EXPECT_GT(legend_line(path).first, 105);
    EXPECT_LT(legend_line(path).second, 50);
    EXPECT_EQ(legend_line(path), legend_line(stored));
}

/// "0.5" and "0.5 0.5 0.5" are greys.
bool is_grey(const std::string& colour) {
    std::istringstream parts(colour);
    const std::vector<double> components{std::istream_iterator<double>(parts), {}};
    return std::all_of(components.begin(), components.end(),
                       [&](double component) { return component == components.front(); });
}

TEST_F(PlotCommand, GrauMakesEverythingGrey) {
    // Observations with test values have colours of their own, which no layer makes grey.
    const std::string tested =
        "VERFAHRENLEGENDE x\nNETZTEIL a\nOBJEKTE 1 1 0 0 0 0 0 1 1 1 0 1 1\n"
        "PUNKTSIGNATUR 0 0 0 0 1 \"A\"\nPUNKTSIGNATUR 100 0 0 0 0 \"B\"\n"
        "RICHTUNG 0 0 100 0 1 1 1\nRICHTUNG 100 0 0 0 50 9 1\n";
    const std::string input = file(tested, "farben.dat");
    const auto coloured = [&](std::vector<std::string> options) {
        options.insert(options.begin(), {input, "-o", folder.path("g.pdf")});
        EXPECT_EQ(run(options).exit_code, 0);
        std::map<std::string, int> found;
        for (const ShownPage& page : pages(folder.path("g.pdf"))) {
            for (const pdf_test::Path& path : page.paths) {
                found[path.layer] += !is_grey(path.pen.colour) || !is_grey(path.pen.fill) ? 1 : 0;
            }
        }
        return found;
    };
    const std::map<std::string, int> usual = coloured({});
    EXPECT_GT(usual.at("Signaturen"), 0);
    EXPECT_GT(usual.at("Beobachtungen"), 0);
    for (const auto& [layer, count] : coloured({"--grau"})) {
        EXPECT_EQ(count, 0) << layer;
    }
}

TEST_F(PlotCommand, ObjChangesTheSelectionOfAllParts) {
    for (const ShownPage& page :
         plot({"--netzteil", "Neu", "--netzteil", "Fertig", "--obj", "obj_pube=0"})) {
        EXPECT_THAT(texts(page), AllOf(Not(Contains("A")), Not(Contains("F"))));
    }
}

TEST_F(PlotCommand, ProfilGivesTheLook) {
    const std::string profile = folder.file("p.ini", "[BEZPUN]\r\npubsizplo=9\r\n");
    const auto label_size = [](const ShownPage& page) {
        for (const pdf_test::Text& text : page.texts) {
            if (text.bytes == "A") {
                return text.size;
            }
        }
        return 0.0;
    };
    const double usual = label_size(plot({"--massstab", "5000"}).at(0));
    const double large = label_size(plot({"--massstab", "5000", "--profil", profile}).at(0));
    EXPECT_GT(usual, 0);
    EXPECT_GT(large, 2 * usual);
}

TEST_F(PlotCommand, InputStaysAsItIs) {
    const std::string path = file();
    const auto changed = std::filesystem::last_write_time(path);
    EXPECT_EQ(run({path, "--alle", "-o", folder.path("p.pdf"), "--exemplare", "2"}).exit_code, 0);
    EXPECT_EQ(file_bytes(path), from_utf8(network));
    EXPECT_EQ(std::filesystem::last_write_time(path), changed);
    std::vector<std::string> left;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        left.push_back(entry.path().filename());
    }
    EXPECT_THAT(left,
                ::testing::UnorderedElementsAre("ve.dat", "p.pdf", "stdin", "stdout", "stderr"));
}

TEST_F(PlotCommand, SameInputGivesTheSameBytes) {
    const std::string sample = SAMPLES_DIR "/ve_dhdn.dat";
    ASSERT_EQ(run({sample, "--alle", "-o", folder.path("a.pdf")}).exit_code, 0);
    ASSERT_EQ(
        run({sample, "--alle", "-o", folder.path("b.pdf"), "--protokoll", folder.path("b.json")})
            .exit_code,
        0);
    EXPECT_TRUE(file_bytes(folder.path("a.pdf")) == file_bytes(folder.path("b.pdf")));
}

TEST_F(PlotCommand, SeveralFilesGoIntoAFolder) {
    const std::vector<std::string> samples{SAMPLES_DIR "/ve_dhdn.dat", SAMPLES_DIR "/ve_etrs89.dat",
                                           SAMPLES_DIR "/ve_lokal.dat",
                                           SAMPLES_DIR "/ve_ohne_netzteil.dat"};
    std::vector<std::string> one_by_one{"-o", folder.path("einzeln")};
    one_by_one.insert(one_by_one.end(), samples.begin(), samples.end());
    std::vector<std::string> parallel{"-o", folder.path("neu/parallel"), "--jobs", "3"};
    parallel.insert(parallel.end(), samples.begin(), samples.end());
    ASSERT_EQ(run(one_by_one).exit_code, 0);
    ASSERT_EQ(run(parallel).exit_code, 0);
    for (const char* name :
         {"ve_dhdn.pdf", "ve_etrs89.pdf", "ve_lokal.pdf", "ve_ohne_netzteil.pdf"}) {
        const std::string bytes = file_bytes(folder.path("einzeln/") + name);
        EXPECT_EQ(bytes.substr(0, 5), "%PDF-") << name;
        EXPECT_TRUE(bytes == file_bytes(folder.path("neu/parallel/") + name)) << name;
    }
}

TEST_F(PlotCommand, BadFileDoesNotKeepTheOthers) {
    for (const char* jobs : {"1", "2"}) {
        const std::string good = file();
        const std::string bad = file("PUNKTSIGNATUR 1 2 99999 0 1\n", "schlecht.dat");
        const std::string also_good = file(network, "gut.dat");
        const ProgramRun result =
            run({good, bad, folder.path("fehlt.dat"), also_good, "-o", folder.path("aus"), "--jobs",
                 jobs, "--protokoll", folder.path("p.json")});
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_THAT(result.err, AllOf(HasSubstr("schlecht.dat"), HasSubstr("fehlt.dat")));
        EXPECT_EQ(pages(folder.path("aus/ve.pdf")).size(), 1U);
        EXPECT_EQ(pages(folder.path("aus/gut.pdf")).size(), 1U);
        EXPECT_FALSE(std::filesystem::exists(folder.path("aus/schlecht.pdf")));
        const json files = json::parse(file_bytes(folder.path("p.json")))["dateien"];
        ASSERT_EQ(files.size(), 4U);
        EXPECT_TRUE(files[0]["fehler"].is_null());
        EXPECT_THAT(files[1]["fehler"].get<std::string>(), HasSubstr("schlecht.dat"));
        EXPECT_THAT(files[1]["netzteile"], IsEmpty());
        EXPECT_THAT(files[2]["fehler"].get<std::string>(), HasSubstr("fehlt.dat"));
        EXPECT_EQ(files[3]["netzteile"].size(), 1U);
    }
}

TEST_F(PlotCommand, UnwritableOutputIsNamedWithItsReason) {
    const std::string input = file();
    const ProgramRun plot_run = run({input, "-o", folder.path("fehlt/p.pdf")});
    EXPECT_EQ(plot_run.exit_code, 1);
    EXPECT_THAT(plot_run.err, AllOf(HasSubstr("fehlt/p.pdf"), HasSubstr("nicht vorhanden")));
    EXPECT_EQ(std::count(plot_run.err.begin(), plot_run.err.end(), '\n'), 1);
    const ProgramRun protocol_run =
        run({input, "-o", folder.path("p.pdf"), "--protokoll", folder.path("fehlt/p.json")});
    EXPECT_EQ(protocol_run.exit_code, 1);
    EXPECT_THAT(protocol_run.err, HasSubstr("fehlt/p.json"));
    const std::string no_folder = folder.file("datei", "x");
    EXPECT_EQ(run({input, file(network, "b.dat"), "-o", no_folder}).exit_code, 1);
    EXPECT_EQ(file_bytes(no_folder), "x");
}

TEST_F(PlotCommand, DocumentThatDoesNotFitOnTheDiskIsAFailure) {
    // Files of the program end after one block; the signal for that is ignored, so that it sees the
    // error.
    const std::string command =
        "trap '' XFSZ; ulimit -f 1; " + testing_support::shell_quoted(VELDRA_CLI) + " plot " +
        testing_support::shell_quoted(SAMPLES_DIR "/ve_dhdn.dat") + " --alle -o " +
        testing_support::shell_quoted(folder.path("p.pdf")) + " 2>" +
        testing_support::shell_quoted(folder.path("err"));
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_THAT(file_bytes(folder.path("err")),
                AllOf(HasSubstr("ve_dhdn.dat"), HasSubstr("zu groß")));
    EXPECT_FALSE(std::filesystem::exists(folder.path("p.pdf")));
}

TEST_F(PlotCommand, PipeIsNotReplacedByAFile) {
    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(run({file(), "-o", pipe}).exit_code, 1);
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST_F(PlotCommand, FileWithoutAnythingToPlotIsAFailure) {
    const ProgramRun result = run({file(), "--netzteil", "Leer", "-o", folder.path("p.pdf")});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("ve.dat: es gibt nichts zu plotten"));
    EXPECT_FALSE(std::filesystem::exists(folder.path("p.pdf")));
}

TEST_F(PlotCommand, UnknownPartPrinterAndTooManySheetsAreFailures) {
    const std::string input = file();
    EXPECT_EQ(run({input, "--netzteil", "Fort", "-o", folder.path("p.pdf")}).exit_code, 1);
    const ProgramRun printer = run({input, "--drucker", "gibt es nicht"});
    EXPECT_EQ(printer.exit_code, 1);
    EXPECT_THAT(printer.err, HasSubstr("gibt es nicht: Drucker ist nicht vorhanden"));
    const std::string huge =
        file("PUNKTSIGNATUR 0 0 0 0 1\nPUNKTSIGNATUR 9000000 0 0 0 1\n", "huge.dat");
    const ProgramRun sheets = run({huge, "--massstab", "1", "-o", folder.path("p.pdf")});
    EXPECT_EQ(sheets.exit_code, 1);
    EXPECT_THAT(sheets.err, HasSubstr("huge.dat"));
}

TEST_F(PlotCommand, ManySheetsAreToldAndTooManyRefusedBeforeAnythingIsWritten) {
    const std::string input = file();
    const std::string output = folder.path("p.pdf");
    const auto sheets = [&](const char* counts, std::vector<std::string> options) {
        options.insert(options.begin(), {input, "--netzteil", "Neu", "--massstab", "2000",
                                         "--blaetter", counts, "-o", output});
        return run(options);
    };
    const ProgramRun unsaid = sheets("20x10", {});
    EXPECT_EQ(unsaid.exit_code, 0);
    EXPECT_THAT(unsaid.err, IsEmpty());
    const ProgramRun said = sheets("67x3", {});
    EXPECT_EQ(said.exit_code, 0);
    EXPECT_THAT(said.err, AllOf(HasSubstr("201 Blätter"), HasSubstr("Netzteil \"Neu\"")));
    EXPECT_EQ(pages(output).size(), 201U);
    std::filesystem::remove(output);
    EXPECT_EQ(sheets("67x3", {"--hoechstens", "200"}).exit_code, 1);
    EXPECT_EQ(sheets("67x3", {"--hoechstens", "401", "--exemplare", "2"}).exit_code, 1);
    const ProgramRun refused = sheets("32767x32767", {});
    EXPECT_EQ(refused.exit_code, 1);
    EXPECT_THAT(refused.err,
                AllOf(HasSubstr("1073676289 Blätter, höchstens 2000"), HasSubstr("Punkt \"")));
    EXPECT_EQ(sheets("3x667", {}).exit_code, 1);
    EXPECT_FALSE(std::filesystem::exists(output));
    EXPECT_EQ(sheets("67x3", {"--hoechstens", "201"}).exit_code, 0);
    EXPECT_EQ(sheets("1x1", {"--hoechstens", "0"}).exit_code, 2);
}

TEST_F(PlotCommand, EmptySheetsAreCountedAndLeftOutIfWished) {
    // Sheets of 92.25 x 137.25 m (184.5 x 274.5 mm at 1:500) from (990, 1950) on. The line from A
    // to B is on the sheets 1.1 and 2.1, the legend at the upper right on 4.3; nine are empty.
    const std::vector<std::string> division{
        "--netzteil",    "Neu",      "--massstab",  "500",
        "--ausrichtung", "hoch",     "--heftrand",  "links",
        "--legende",     "3",        "--blaetter",  "4x3",
        "--null",        "990,1950", "--protokoll", folder.path("p.json")};
    const auto empty_sheets = [this] {
        return json::parse(
            file_bytes(folder.path("p.json")))["dateien"][0]["netzteile"][0]["leere_blaetter"];
    };
    EXPECT_EQ(plot(division).size(), 12U);
    EXPECT_EQ(empty_sheets(), 9);
    std::vector<std::string> without = division;
    without.emplace_back("--ohne-leere");
    const std::vector<ShownPage> all = plot(without);
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(empty_sheets(), 9);
    EXPECT_THAT(texts(all[0]), AllOf(Contains("A"), Contains(HasSubstr("Blatt 1.1 (4.3)"))));
    EXPECT_THAT(texts(all[1]), AllOf(Contains("B"), Contains(HasSubstr("Blatt 2.1 (4.3)"))));
    EXPECT_THAT(texts(all[2]), Contains("Grundriss 1: 500"));
}

TEST_F(PlotCommand, PartWhoseSheetsCannotBeCountedDoesNotKeepTheOthers) {
    const std::string wild = file(
        "NETZTEIL gut\nMAßSTABGRUNDRISS 500 0 0 73\nPUNKTSIGNATUR 1 2 0 0 1 \"1\"\n"
        "NETZTEIL wild\nMAßSTABGRUNDRISS 500 0 0 73\nPUNKTSIGNATUR 1 2 0 0 1 \"1\"\n"
        "PUNKTSIGNATUR 3 2 0 0 1 \"2\"\nPUNKTSIGNATUR 99000000 2 0 0 1 \"Tippfehler\"\n",
        "wild.dat");
    const ProgramRun result =
        run({wild, "--alle", "-o", folder.path("p.pdf"), "--protokoll", folder.path("p.json")});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, AllOf(HasSubstr("wild.dat"), HasSubstr("Überlauf"),
                                  HasSubstr("Punkt \"Tippfehler\" (99000000.00, 2.00), Zeile 8 "
                                            "(PUNKTSIGNATUR), Netzteil \"wild\"")));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
    EXPECT_EQ(pages(folder.path("p.pdf")).size(), 1U);
    const json parts = json::parse(file_bytes(folder.path("p.json")))["dateien"][0]["netzteile"];
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0]["blaetter"]["rechts"], 1);
    EXPECT_THAT(parts[1]["fehler"].get<std::string>(), HasSubstr("Tippfehler"));
    const ProgramRun alone = run({wild, "--netzteil", "wild", "-o", folder.path("q.pdf")});
    EXPECT_EQ(alone.exit_code, 1);
    EXPECT_THAT(alone.err, HasSubstr("Tippfehler"));
    EXPECT_FALSE(std::filesystem::exists(folder.path("q.pdf")));
}

TEST_F(PlotCommand, WrongUsageIsTold) {
    const std::string input = file();
    const std::string output = folder.path("p.pdf");
    const auto refused = [&](const std::vector<std::string>& options) {
        std::vector<std::string> arguments{input, "-o", output};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ProgramRun result = run(arguments);
        return result.exit_code == 2 && !result.err.empty();
    };
    EXPECT_TRUE(refused({"--massstab", "0"}));
    EXPECT_TRUE(refused({"--massstab", "nan"}));
    EXPECT_TRUE(refused({"--ausrichtung", "schräg"}));
    EXPECT_TRUE(refused({"--heftrand", "rechts"}));
    EXPECT_TRUE(refused({"--legende", "5"}));
    EXPECT_TRUE(refused({"--blaetter", "0x1"}));
    EXPECT_TRUE(refused({"--blaetter", "2"}));
    EXPECT_TRUE(refused({"--null", "1"}));
    EXPECT_TRUE(refused({"--papier", "A5"}));
    EXPECT_TRUE(refused({"--papier", "10x100"}));
    EXPECT_TRUE(refused({"--exemplare", "0"}));
    EXPECT_TRUE(refused({"--exemplare", "101"}));
    EXPECT_TRUE(refused({"--jobs", "0"}));
    EXPECT_TRUE(refused({"--obj", "obj_pube=2"}));
    EXPECT_TRUE(refused({"--alle", "--netzteil", "Neu"}));
    EXPECT_TRUE(refused({"--drucker", "P"}));
    EXPECT_TRUE(refused({"--protokoll", input}));
    EXPECT_TRUE(refused({"--protokoll", output}));
    EXPECT_EQ(run({input}).exit_code, 2);
    EXPECT_EQ(run({input, "-o", input}).exit_code, 2);
    EXPECT_EQ(run({input, input, "-o", folder.path("aus")}).exit_code, 2);
    EXPECT_FALSE(std::filesystem::exists(output));
    EXPECT_EQ(file_bytes(input), from_utf8(network));
}

TEST_F(PlotCommand, HelpTellsOptionsAndExitCodesInGerman) {
    const ProgramRun help = run({"--help"});
    EXPECT_EQ(help.exit_code, 0);
    for (const char* option :
         {"--netzteil", "--alle", "--massstab", "--ausrichtung", "--heftrand", "--legende",
          "--blaetter", "--null", "--papier", "--exemplare", "--grau", "--profil", "--obj",
          "--drucker", "--jobs", "--protokoll", "Ende-Code: 0 geplottet"}) {
        EXPECT_THAT(help.out, HasSubstr(option));
    }
}

}  // namespace
}  // namespace veldra
