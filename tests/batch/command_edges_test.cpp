// Bounds of options, names that lead to the input, and exit codes of mixed jobs.

#include <array>
#include <cstdint>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "program_run.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;
using testing_support::file_bytes;
using testing_support::ProgramRun;
using testing_support::TempFolder;

constexpr const char* two_points =
    "NETZTEIL A\nPUNKTSIGNATUR 1000 2000 0 0 1 \"1\"\nPUNKTSIGNATUR 1100 2100 0 0 1 \"2\"\n";
/// A height error without its value is refused.
constexpr const char* refused_record = "PUNKTSIGNATUR 1 2 0 0 1\nHÖHENFEHLER 1 2\n";
constexpr const char* broken_file = "PUNKTSIGNATUR 1 2 99999 0 1\n";
/// The sheets of the second part cannot be counted.
constexpr const char* broken_part =
    "NETZTEIL gut\nMAßSTABGRUNDRISS 500 0 0 73\nPUNKTSIGNATUR 1 2 0 0 1 \"1\"\n"
    "NETZTEIL wild\nMAßSTABGRUNDRISS 500 0 0 73\nPUNKTSIGNATUR 1 2 0 0 1 \"1\"\n"
    "PUNKTSIGNATUR 99000000 2 0 0 1 \"2\"\n";

class CommandEdges : public ::testing::Test {
 protected:
    std::string file(const std::string& name, std::string_view utf8 = two_points) {
        return folder.file(name, from_utf8(utf8));
    }
    ProgramRun run(const std::vector<std::string>& arguments, const std::string& input = "") {
        return testing_support::run_veldra(folder, arguments, input);
    }
    int code(const std::vector<std::string>& arguments) { return run(arguments).exit_code; }
    /// Exit code of a plot of these files into a folder, with a protocol.
    int plot_code(std::vector<std::string> files, const std::string& jobs = "1") {
        std::filesystem::create_directory(folder.path("plots"));
        files.insert(files.begin(), "plot");
        files.insert(files.end(), {"--alle", "-o", folder.path("plots"), "--jobs", jobs,
                                   "--protokoll", folder.path("p.json")});
        return code(files);
    }

    TempFolder folder;
};

TEST_F(CommandEdges, InputIsRefusedAsOutputByWhateverNameItIsCalled) {
    namespace fs = std::filesystem;
    const std::string input = file("ve.dat");
    const std::string other = file("andere.dat");
    fs::create_directory(folder.path("unter"));
    fs::create_directory_symlink(folder.path(), folder.path("ordner"));
    fs::create_symlink(input, folder.path("link.png"));
    fs::create_symlink("link.png", folder.path("link.svg"));
    fs::create_hard_link(input, folder.path("zweiter"));
    const std::vector<std::string> names{
        folder.path("./ve.dat"), folder.path("unter/../ve.dat"), folder.path("ordner/ve.dat"),
        folder.path("link.png"), folder.path("link.svg"),        folder.path("zweiter")};
    const auto expect_refused = [&](std::vector<std::string> command, const std::string& name) {
        command.push_back(name);
        const ProgramRun result = run(command);
        EXPECT_EQ(result.exit_code, 2) << command[0] << " " << name;
        EXPECT_THAT(result.err, HasSubstr(name + ": Ausgabe und Eingabe sind dieselbe Datei"));
    };
    for (const std::string& name : names) {
        expect_refused({"normalform", input, "-o"}, name);
        expect_refused({"grenzen", input, "-o"}, name);
        expect_refused({"uebernehmen", input, other, "-o"}, name);
        expect_refused({"uebernehmen", other, input, "-o"}, name);
        expect_refused({"plot", input, "-o"}, name);
        expect_refused({"plot", input, "-o", folder.path("p.pdf"), "--protokoll"}, name);
    }
    expect_refused({"bild", input, "-o"}, folder.path("link.png"));
    expect_refused({"bild", input, "-o"}, folder.path("link.svg"));
    // The name of an input may be the link, and the output the file itself.
    expect_refused({"normalform", folder.path("link.svg"), "-o"}, input);
    EXPECT_EQ(file_bytes(input), two_points);
    EXPECT_TRUE(fs::is_symlink(folder.path("link.png")));
    EXPECT_FALSE(fs::exists(folder.path("p.pdf")));
    EXPECT_EQ(code({"normalform", input, "-o", folder.path("unter/ve.dat")}), 0);
}

TEST_F(CommandEdges, NamesThatGrenzenMakesAreNotTheInput) {
    const std::string input = file("grenzen.dat", "2 0 0\n1 1 0\n");
    std::filesystem::create_symlink(input, input + "_neu");
    EXPECT_EQ(code({"grenzen", input}), 2);
    EXPECT_EQ(file_bytes(input), "2 0 0\n1 1 0\n");
}

TEST_F(CommandEdges, OutputOfOneFileIsNotAnotherInput) {
    const std::string first = file("a.dat");
    const std::string second = file("b.dat");
    std::filesystem::create_directory(folder.path("aus"));
    std::filesystem::create_symlink(second, folder.path("aus/a.pdf"));
    for (const auto& files : {std::pair(first, second), std::pair(second, first)}) {
        const ProgramRun result =
            run({"plot", files.first, files.second, "-o", folder.path("aus")});
        EXPECT_EQ(result.exit_code, 2);
        EXPECT_THAT(result.err, HasSubstr("dieselbe Datei"));
    }
    EXPECT_EQ(file_bytes(second), two_points);
    EXPECT_FALSE(std::filesystem::exists(folder.path("aus/b.pdf")));
}

TEST_F(CommandEdges, ProtocolIsNotWrittenOverThePlot) {
    const std::string input = file("ve.dat");
    const std::string plot = folder.path("p.pdf");
    EXPECT_EQ(code({"plot", input, "-o", plot, "--protokoll", folder.path("./p.pdf")}), 2);
    EXPECT_FALSE(std::filesystem::exists(plot));
    (void)folder.file("p.pdf", "of an earlier run");
    std::filesystem::create_symlink(plot, folder.path("p.json"));
    const ProgramRun linked =
        run({"plot", input, "-o", plot, "--protokoll", folder.path("p.json")});
    EXPECT_EQ(linked.exit_code, 2);
    EXPECT_THAT(linked.err, HasSubstr("Protokoll und Plot sind dieselbe Datei"));
    EXPECT_EQ(file_bytes(plot), "of an earlier run");
}

TEST_F(CommandEdges, FailuresPrevailOverRefusedRecordsInAnyOrder) {
    const std::string good = file("gut.dat");
    const std::string refused = file("abgewiesen.dat", refused_record);
    const std::string broken = file("defekt.dat", broken_file);
    const std::string part = file("netzteil.dat", broken_part);
    EXPECT_EQ(plot_code({good}), 0);
    EXPECT_EQ(plot_code({refused}), 3);
    EXPECT_EQ(plot_code({good, refused}), 3);
    EXPECT_EQ(plot_code({refused, good}), 3);
    EXPECT_EQ(plot_code({broken, refused}), 1);
    EXPECT_EQ(plot_code({refused, broken}), 1);
    EXPECT_EQ(plot_code({part, refused}), 1);
    EXPECT_EQ(plot_code({refused, part}), 1);
    EXPECT_EQ(plot_code({refused, broken, good, part}), 1);
    EXPECT_EQ(plot_code({part, good, broken, refused}, "3"), 1);
    EXPECT_EQ(plot_code({good, refused, good}), 2) << "two plots of one name";
    // Without a protocol nobody counts.
    EXPECT_EQ(code({"plot", refused, "-o", folder.path("p.pdf")}), 0);
}

TEST_F(CommandEdges, DatumNumbersStandInTheOrderOfTheProfile) {
    // At 6 degrees east the Hochwert 5 600 000 m of the Bessel ellipsoid is at 50.53695 degrees
    // north. A second of arc is 30.8964 m of the meridian there and 19.690 m of the parallel.
    struct Shift {
        const char* numbers;
        double east;
        double north;
    };
    const double north_of_pivot = 0.53695;
    const double radian_of_second = 4.84814e-6;
    const double turned = 3600 * radian_of_second;              // seconds for each degree
    for (const Shift& shift : {Shift{"1 0 0 0 0", 0, 30.8964},  // latitude
                               Shift{"0 1 0 0 0", 19.690, 0},   // longitude
                               Shift{"0 0 1 0 0", 0, north_of_pivot * 30.8964},  // its scale
                               Shift{"0 0 0 1 0", 6 * 19.690, 0},                // its scale
                               Shift{"0 0 0 0 1", north_of_pivot * turned * 19.690,
                                     -6 * turned * 30.8964}}) {  // rotation
        const ProgramRun result = run({"koordinaten", "--von", "1,1", "--nach", "1,1", "--meridian",
                                       "2", "--datum", shift.numbers},
                                      "2500000 5600000\n");
        double rechts = 0;
        double hoch = 0;
        std::istringstream(result.out) >> rechts >> hoch;
        EXPECT_NEAR(rechts - 2500000, shift.east, 0.01) << shift.numbers;
        EXPECT_NEAR(hoch - 5600000, shift.north, 0.01) << shift.numbers;
    }
}

TEST_F(CommandEdges, LongListsOfPointsComeOnceAndInOrder) {
    std::string input;
    std::string expected;
    for (int i = 0; i < 6000; ++i) {
        input += fmt::format("{} 5600000\n", 2500000 + i);
        expected += fmt::format("{}.0000 5600000.0000\n", 2500000 + i);
    }
    const ProgramRun whole =
        run({"koordinaten", "--von", "1,1", "--nach", "1,1", "--meridian", "2"}, input);
    EXPECT_EQ(whole.exit_code, 0);
    EXPECT_TRUE(whole.out == expected);
    const ProgramRun outside =
        run({"koordinaten", "--von", "1,1", "--nach", "1,1", "--meridian", "2"},
            "2500000 5600000\n2500000 99999999\n2500000 5600000\n2500000 99999999\n");
    EXPECT_THAT(outside.err, HasSubstr("2 Punkte liegen außerhalb der Abbildung, der erste in "
                                       "Zeile 2"));
    for (const char* system : {"1,1", "5,1", "1,2", "5,2"}) {
        EXPECT_EQ(code({"koordinaten", "--von", system, "--nach", system, "--meridian", "32"}), 0)
            << system;
    }
    EXPECT_EQ(code({"koordinaten", "--von", "1,0", "--nach", "1,1", "--meridian", "2"}), 2);
    EXPECT_EQ(code({"koordinaten", "--von", "1,1", "--nach", "6,1", "--meridian", "2"}), 2);
}

TEST_F(CommandEdges, BoundariesAboveTwentyMegabytesShowTheirProgress) {
    // Two million blank lines of ten bytes, and one byte more.
    std::string bytes;
    for (int i = 0; i < 2'000'000; ++i) {
        bytes += "        \r\n";
    }
    const ProgramRun silent = run({"grenzen", folder.file("grenzen.dat", bytes)});
    EXPECT_EQ(silent.exit_code, 0);
    EXPECT_EQ(silent.err, "");
    const ProgramRun told = run({"grenzen", folder.file("grenzen.dat", bytes + "\n")});
    EXPECT_EQ(told.exit_code, 0);
    // It looks every 3.28 %, for the last time at 98.3 %.
    std::string expected;
    for (int percent = 10; percent <= 90; percent += 10) {
        expected += fmt::format("veldra-cli: {} %\n", percent);
    }
    EXPECT_EQ(told.err, expected);
}

TEST_F(CommandEdges, SelectionsTakeTheirWholeRangeAndNothingBeyond) {
    struct Range {
        const char* name;
        int least;
        int greatest;
        int below;
    };
    // What is kept of a boolean is 0 or -1, and either is understood.
    const std::vector<Range> ranges{
        {"obj_pube", 0, 1, -1},     {"obj_pusi", 0, 1, -1},        {"obj_puwe", 0, 8, -1},
        {"obj_epbe", 0, 1, -2},     {"obj_test_restkl", 0, 1, -2}, {"obj_nube", 0, 5, -1},
        {"obj_nbez", 0, 2, -1},     {"obj_beob", 0, 3, -1},        {"obj_test_beob", 0, 1, -2},
        {"obj_test", 1, 3, 0},      {"obj_verw", 0, 7, -1},        {"obj_bezu", -99, 3, -100},
        {"obj_bezu_elli", 1, 5, 0}, {"obj_bezu_abbi", 1, 2, 0}};
    const std::string input = file("ve.dat");
    std::vector<std::string> least{"tabellen", input};
    std::vector<std::string> greatest{"tabellen", input};
    const auto assignment = [](const char* name, int value) {
        return fmt::format("{}={}", name, value);
    };
    for (const Range& range : ranges) {
        least.insert(least.end(), {"--obj", assignment(range.name, range.least)});
        greatest.insert(greatest.end(), {"--obj", assignment(range.name, range.greatest)});
        for (const int value : {range.below, range.greatest + 1}) {
            // A call of a plot is judged before anything is read.
            const ProgramRun result = run({"plot", "fehlt", "-o", folder.path("p.pdf"), "--obj",
                                           assignment(range.name, value)});
            EXPECT_EQ(result.exit_code, 2) << range.name << value;
            EXPECT_THAT(result.err, HasSubstr("Wert nicht zulässig"));
        }
    }
    for (const char* gap : {"obj_bezu=-98", "obj_bezu=-1"}) {
        EXPECT_EQ(code({"plot", "fehlt", "-o", folder.path("p.pdf"), "--obj", gap}), 2);
    }
    const json low = json::parse(run(least).out)["obj"];
    const json high = json::parse(run(greatest).out)["obj"];
    for (const Range& range : ranges) {
        const bool boolean = range.below == -2;
        EXPECT_EQ(low[range.name], range.least) << range.name;
        EXPECT_EQ(high[range.name], boolean ? -1 : range.greatest) << range.name;
    }
    for (const char* value : {"-2147483648", "2147483647"}) {
        EXPECT_EQ(
            json::parse(run({"tabellen", input, "--obj", std::string("obj_nube_meridian=") + value})
                            .out)["obj"]["obj_nube_meridian"],
            std::stoi(value));
    }
    EXPECT_EQ(code({"tabellen", input, "--obj", "obj_nube_meridian=2147483648"}), 2);
    EXPECT_EQ(json::parse(run({"tabellen", input, "--obj", "obj_epbe=-1"}).out)["obj"]["obj_epbe"],
              -1);
}

/// Width and height in the head of a PNG file.
std::pair<std::uint32_t, std::uint32_t> png_size(const std::string& bytes) {
    const auto number = [&](std::size_t at) {
        std::uint32_t value = 0;
        for (std::size_t i = at; i < at + 4; ++i) {
            value = value << 8U | static_cast<unsigned char>(bytes.at(i));
        }
        return value;
    };
    return {number(16), number(20)};
}

TEST_F(CommandEdges, PicturesHaveTheSizeAskedFor) {
    const std::string input = file("ve.dat");
    const std::string output = folder.path("p.png");
    const auto size = [&](std::vector<std::string> options) {
        options.insert(options.begin(), {"bild", input, "-o", output});
        EXPECT_EQ(code(options), 0);
        return png_size(file_bytes(output));
    };
    EXPECT_EQ(size({}), std::pair(1600U, 1000U));
    EXPECT_EQ(size({"--breite", "16", "--hoehe", "40"}), std::pair(16U, 40U));
    EXPECT_EQ(size({"--breite", "40", "--hoehe", "16"}), std::pair(40U, 16U));
    EXPECT_EQ(size({"--breite", "16384", "--hoehe", "16"}), std::pair(16384U, 16U));
    for (const char* option : {"--breite", "--hoehe"}) {
        EXPECT_EQ(code({"bild", input, "-o", output, option, "15"}), 2);
        EXPECT_EQ(code({"bild", input, "-o", output, option, "16385"}), 2);
    }
    EXPECT_EQ(code({"bild", input, "-o", ".png"}), 2) << "an ending is no name";
}

TEST_F(CommandEdges, WindowsHaveFourNumbersAndAnArea) {
    const std::string input = file("ve.dat");
    for (const char* window : {"1,2,1,4", "1,2,3,2", "3,2,1,4", "1,4,3,2", "1,2,3,4,5", "1,2,3",
                               "1,2,3,", "1;2;3;4", "1,2,3,x", ""}) {
        const int expected = *window == '\0' ? 0 : 2;  // nothing said is the whole part
        EXPECT_EQ(code({"operationen", input, "--ausschnitt", window}), expected) << window;
    }
}

TEST_F(CommandEdges, NumbersOfAPlotTakeTheirWholeRange) {
    const std::string input = file("ve.dat");
    const auto exit_code = [&](const char* option, const char* value) {
        return code({"plot", input, "-o", folder.path("p.pdf"), option, value});
    };
    for (const auto& [option, value] :
         std::vector<std::pair<const char*, const char*>>{{"--exemplare", "1"},
                                                          {"--exemplare", "100"},
                                                          {"--jobs", "1"},
                                                          {"--jobs", "256"},
                                                          {"--hoechstens", "1"},
                                                          {"--hoechstens", "1000000000000"},
                                                          {"--legende", "1"},
                                                          {"--legende", "4"},
                                                          {"--blaetter", "1X1"},
                                                          {"--papier", "5000x100"},
                                                          {"--massstab", "1000"},
                                                          {"--null", "1000,2000"}}) {
        EXPECT_EQ(exit_code(option, value), 0) << option << " " << value;
    }
    for (const auto& [option, value] :
         std::vector<std::pair<const char*, const char*>>{{"--exemplare", "101"},
                                                          {"--jobs", "257"},
                                                          {"--hoechstens", "1000000000001"},
                                                          {"--legende", "0"},
                                                          {"--legende", "5"},
                                                          {"--blaetter", "1x0"},
                                                          {"--blaetter", "0x1"},
                                                          {"--blaetter", "1,1"},
                                                          {"--papier", "5000.1x100"},
                                                          {"--papier", "100x5000.1"},
                                                          {"--null", "1x2"},
                                                          {"--blaetter", "32768x1"}}) {
        EXPECT_EQ(exit_code(option, value), 2) << option << " " << value;
    }
    // On a printer the sides count, since nobody knows its edges: 1 is for the printer.
    const auto on_printer = [&](std::vector<std::string> options) {
        options.insert(options.begin(), {"plot", input, "--drucker", "gibt es nicht"});
        return code(options);
    };
    EXPECT_EQ(on_printer({"--papier", "15x15"}), 1);
    EXPECT_EQ(on_printer({"--papier", "14.9x100"}), 2);
    EXPECT_EQ(on_printer({"--papier", "100x14.9"}), 2);
    EXPECT_EQ(on_printer({"--jobs", "1"}), 1);
    EXPECT_EQ(on_printer({"--jobs", "2"}), 2);
}

TEST_F(CommandEdges, PlotsAreNamedByTheirInputs) {
    const std::vector<std::string> names{"x.dat", "a.b.dat", "ohne", ".ve"};
    std::vector<std::string> arguments{"plot", "-o", folder.path("aus")};
    for (const std::string& name : names) {
        arguments.push_back(file(name));
    }
    ASSERT_EQ(code(arguments), 0);
    for (const char* plot : {"x.pdf", "a.b.pdf", "ohne.pdf", ".ve.pdf"}) {
        EXPECT_TRUE(std::filesystem::exists(folder.path("aus/") + plot)) << plot;
    }
    // A folder that exists takes a single plot too.
    EXPECT_EQ(code({"plot", file("y.dat"), "-o", folder.path("aus")}), 0);
    EXPECT_TRUE(std::filesystem::exists(folder.path("aus/y.pdf")));
}

TEST_F(CommandEdges, NearestCommandIsWithinAThirdOfItsLetters) {
    const auto answer = [this](const char* word) { return run({word}).err; };
    EXPECT_THAT(answer("kxxxdinaten"), HasSubstr("gemeint ist wohl koordinaten;"));
    EXPECT_THAT(answer("kxxxxinaten"), Not(HasSubstr("gemeint")));
    EXPECT_THAT(answer("no"), HasSubstr("gemeint ist wohl normalform;"));
    EXPECT_THAT(answer("n"), Not(HasSubstr("gemeint")));
    // Letters count as exchanged only if both stand in the other's place.
    EXPECT_THAT(answer("bidx"), Not(HasSubstr("gemeint")));
    EXPECT_THAT(answer("bixl"), Not(HasSubstr("gemeint")));
}

}  // namespace
}  // namespace veldra
