#include <algorithm>
#include <cmath>

#include <GeographicLib/TransverseMercatorExact.hpp>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "program_run.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using nlohmann::json;
using ::testing::AllOf;
using ::testing::HasSubstr;
using testing_support::file_bytes;
using testing_support::ProgramRun;
using testing_support::TempFolder;

constexpr const char* dhdn_network =
    "NETZTEIL A\n"
    "OBJEKTE 1 1 0 0 0 1 1 0 0 1 1 0 0\n"
    "PUNKTSIGNATUR 2570000 5618000 0 0 1 \"A\"\n"
    "PUNKTSIGNATUR 2572000 5620000 0 0 0 \"B\"\n";

class GroundCommands : public ::testing::Test {
 protected:
    std::string network() { return folder.file("ve.dat", dhdn_network); }
    ProgramRun run(const std::vector<std::string>& arguments, const std::string& input = "") {
        return testing_support::run_veldra(folder, arguments, input);
    }
    json district(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"bezirk", network()});
        const ProgramRun result = run(arguments);
        EXPECT_EQ(result.exit_code, 0) << result.err;
        return json::parse(result.out);
    }
    /// A profile that names a boundary file.
    std::string profile(const std::string& boundaries) {
        return folder.file("veldra.ini", "[VERWGR]\r\nDatei=" + boundaries + "\r\n");
    }

    TempFolder folder;
};

TEST_F(GroundCommands, BezirkGivesTheGridOfTheView) {
    const json grid =
        district({"--obj", "obj_nube=2", "--ausschnitt", "2570200,5618200,2571800,5619200",
                  "--breite", "1600", "--hoehe", "1000"});
    EXPECT_EQ(grid["obj_bezu"], 1);
    EXPECT_EQ(grid["obj_bezu_elli"], 1);
    EXPECT_EQ(grid["obj_bezu_abbi"], 1);
    EXPECT_EQ(grid["obj_nube_meridian"], 2);
    EXPECT_EQ(grid["grid_spalten"], 3);
    EXPECT_EQ(grid["grid_zeilen"], 3);
    EXPECT_EQ(grid["grid_zu_gross"], 0);
    ASSERT_EQ(grid["grid"].size(), 9U);
    EXPECT_NEAR(grid["grid"][4]["grid_rechts"].get<double>(), 2571000, 1e-5);
    EXPECT_NEAR(grid["grid"][4]["grid_hoch"].get<double>(), 5619000, 1e-5);
    EXPECT_EQ(grid["grid"][4]["grid_bez"], "25715619");
    EXPECT_EQ(grid["grid"][4]["grid_bez_ecke"], " 25705619 | 25715619 \r\n  25705618 | 25715618 ");
}

TEST_F(GroundCommands, BezirkWithoutDistrictsIsEmpty) {
    for (const char* selection : {"obj_nube=0", "obj_bezu=0"}) {
        const json grid = district({"--obj", selection});
        EXPECT_EQ(grid["grid_spalten"], 0);
        EXPECT_EQ(grid["grid_zeilen"], 0);
        EXPECT_EQ(grid["grid"], json::array());
    }
}

TEST_F(GroundCommands, BezirkOfALargeGridHasNodesWithoutNumbers) {
    const json grid =
        district({"--obj", "obj_nube=3", "--ausschnitt", "2400000,5500000,2720000,5700000"});
    EXPECT_EQ(grid["grid_zu_gross"], -1);
    EXPECT_EQ(grid["grid"].size(),
              grid["grid_spalten"].get<std::size_t>() * grid["grid_zeilen"].get<std::size_t>());
    EXPECT_EQ(grid["grid"][0]["grid_bez"], "");
}

TEST_F(GroundCommands, KoordinatenAgreesWithAnIndependentImplementation) {
    const GeographicLib::TransverseMercatorExact bessel(6377397.155, 1 / 299.1528128, 1);
    const GeographicLib::TransverseMercatorExact grs80(6378137, 1 / 298.257222101, 0.9996);
    std::string input;
    std::string expected;
    for (int i = 0; i < 20; ++i) {
        const double latitude = 47.3 + i * 0.37;
        const double longitude = 6.2 + i * 0.11;
        double x = 0;
        double y = 0;
        bessel.Forward(6, latitude, longitude, x, y);
        input += fmt::format("{:.4f}   {:.4f}\r\n", 2500000 + x, y);
        grs80.Forward(9, latitude, longitude, x, y);
        expected += fmt::format("{:.4f} {:.4f}\n", 32500000 + x, y);
    }
    const ProgramRun result =
        run({"koordinaten", "--von", "1,1", "--nach", "4,2", "--meridian", "32"}, input);
    EXPECT_EQ(result.exit_code, 0) << result.err;
    std::istringstream found(result.out);
    std::istringstream wanted(expected);
    double rechts = 0;
    double hoch = 0;
    double wanted_rechts = 0;
    double wanted_hoch = 0;
    int points = 0;
    while (wanted >> wanted_rechts >> wanted_hoch && found >> rechts >> hoch) {
        // Input and output are rounded to a tenth of a millimetre.
        EXPECT_NEAR(rechts, wanted_rechts, 0.00021);
        EXPECT_NEAR(hoch, wanted_hoch, 0.00021);
        ++points;
    }
    EXPECT_EQ(points, 20);
}

TEST_F(GroundCommands, KoordinatenTakesADatumRowAsItStands) {
    const std::vector<std::string> command{"koordinaten", "--von", "1,1",     "--nach",    "1,1",
                                           "--meridian",  "2",     "--datum", "-1 0 0 0 0"};
    const ProgramRun south = run(command, "2500000 5600000\n");
    EXPECT_EQ(south.exit_code, 0) << south.err;
    double rechts = 0;
    double hoch = 0;
    std::istringstream(south.out) >> rechts >> hoch;
    EXPECT_EQ(rechts, 2500000);
    // A second of arc of the meridian at 50.5 degrees: 6376.0 km of curvature, 30.91 m.
    EXPECT_NEAR(hoch, 5600000 - 30.9, 0.05);
}

TEST_F(GroundCommands, KoordinatenKeepsItsLinesInStep) {
    const ProgramRun result =
        run({"koordinaten", "--von", "1,1", "--nach", "1,1", "--meridian", "2"},
            "2500000 5600000\n\n2500000 99999999\n2500000 0\n");
    EXPECT_EQ(result.out, "2500000.0000 5600000.0000\n\n* *\n2500000.0000 0.0000\n");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, AllOf(HasSubstr("1 Punkte"), HasSubstr("Zeile 3")));
}

TEST_F(GroundCommands, KoordinatenRefusesWhatItCannotRead) {
    const std::vector<std::string> command{"koordinaten", "--von",      "1,1", "--nach",
                                           "1,1",         "--meridian", "2"};
    for (const char* input : {"1\n", "a b\n", "1 2 3\n", "1.5x 2\n", "nan 2\n", "1,2,3 4\n"}) {
        const ProgramRun result = run(command, input);
        EXPECT_EQ(result.exit_code, 1) << input;
        EXPECT_THAT(result.err, HasSubstr("Zeile 1"));
    }
    for (const char* system : {"1", "6,1", "1,3", "0,1", "1,1,1", "x,1"}) {
        const ProgramRun result =
            run({"koordinaten", "--von", system, "--nach", "1,1", "--meridian", "2"});
        EXPECT_EQ(result.exit_code, 2) << system;
    }
    EXPECT_EQ(run({"koordinaten", "--von", "1,1", "--nach", "1,1"}).exit_code, 2);
    for (const char* numbers : {"1 2 3 4", "1 2 3 4 5 1", "1 2 3 4 x", "nan 2 3 4 5", " "}) {
        std::vector<std::string> datum = command;
        datum.insert(datum.end(), {"--datum", numbers});
        EXPECT_EQ(run(datum, "2500000 5600000\n").exit_code, 2) << numbers;
    }
}

TEST_F(GroundCommands, KoordinatenReadsCommasAsPointsAndExponentsInFull) {
    const ProgramRun result = run({"koordinaten", "--von", "1,1", "--nach", "1,1", "--meridian",
                                   "2", "--datum", "0 0 0 0 0,0"},
                                  "2500000,25 56e5\n");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.out, "2500000.2500 5600000.0000\n");
    // Ten seconds of arc whichever way they are written.
    const auto shifted = [this](const char* datum) {
        return run({"koordinaten", "--von", "1,1", "--nach", "1,1", "--meridian", "2", "--datum",
                    datum},
                   "2500000 5600000\n")
            .out;
    };
    EXPECT_EQ(shifted("1e1 0 0 0 0"), shifted("10 0 0 0 0"));
    EXPECT_NE(shifted("1e1 0 0 0 0"), shifted("1 0 0 0 0"));
}

TEST_F(GroundCommands, KoordinatenSaysWhenItsInputCannotBeRead) {
    const ProgramRun result = testing_support::run_veldra_on(
        folder, {"koordinaten", "--von", "1,1", "--nach", "1,1", "--meridian", "2"}, folder.path());
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("Standardeingabe: kann nicht gelesen werden: "));
}

TEST_F(GroundCommands, GrenzenWritesTheReducedFileBesideTheInput) {
    const std::string input = folder.file("grenzen.dat", "@ a b c LND\n2 0 0\n1 1 0\n1 0 0\n");
    const ProgramRun result = run({"grenzen", input});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(file_bytes(input + "_neu"), "@ a b c LND\r\n2 0 0\r\n1 1 0\r\n");
    EXPECT_THAT(result.out, HasSubstr("1 von 2"));
    EXPECT_EQ(run({"grenzen", input, "-o", folder.path("andere.dat")}).exit_code, 0);
    EXPECT_EQ(file_bytes(folder.path("andere.dat")), file_bytes(input + "_neu"));
}

TEST_F(GroundCommands, GrenzenNamesWhatItCannotReadOrWrite) {
    const ProgramRun missing = run({"grenzen", folder.path("fehlt.dat")});
    EXPECT_EQ(missing.exit_code, 1);
    EXPECT_THAT(missing.err, HasSubstr("fehlt.dat"));
    const std::string input = folder.file("grenzen.dat", "2 0 0\n");
    EXPECT_EQ(run({"grenzen", input, "-o", input}).exit_code, 2);
    EXPECT_EQ(run({"grenzen", input, "-o", folder.path("nirgends/neu.dat")}).exit_code, 1);
    EXPECT_EQ(file_bytes(input), "2 0 0\n");
}

TEST_F(GroundCommands, OperationenShowsTheBoundariesOfTheProfileUnderTheGrid) {
    const std::string boundaries =
        folder.file("grenzen.dat", "@ a b c LND\n2 2570000 5618000\n1 2570500 5618000\n");
    const ProgramRun result =
        run({"operationen", network(), "--profil", profile(boundaries), "--obj", "obj_nube=1",
             "--obj", "obj_verw=1", "--ausschnitt", "2570000,5618000,2572000,5619250"});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.err, "");
    std::istringstream lines(result.out);
    std::vector<json> ops;
    for (std::string line; std::getline(lines, line);) {
        ops.push_back(json::parse(line));
    }
    ASSERT_GE(ops.size(), 6U);
    EXPECT_EQ(ops[0], (json{"DrawWidth", 6}));
    EXPECT_EQ(ops[1], (json{"ForeColor", 255 + 201 * 256 + 255 * 65536}));
    EXPECT_EQ(ops[2][0], "Line");
    EXPECT_NEAR(ops[2][3].get<double>() - ops[2][1].get<double>(), 500, 0.001);
    EXPECT_EQ(ops[3], (json{"DrawStyle", 0}));
    EXPECT_EQ(ops[4], (json{"DrawWidth", 1}));
    EXPECT_EQ(ops[5], (json{"ForeColor", 128}));
}

TEST_F(GroundCommands, UnreadableBoundaryFileEndsTheCommandWithItsName) {
    for (const char* command : {"operationen", "bild"}) {
        std::vector<std::string> arguments{command, network(),   "--profil", profile(folder.path()),
                                           "--obj", "obj_verw=1"};
        if (command == std::string("bild")) {
            arguments.insert(arguments.end(), {"-o", folder.path("bild.png")});
        }
        const ProgramRun result = run(arguments);
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_THAT(result.err, HasSubstr(folder.path()));
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
    }
}

TEST_F(GroundCommands, MissingBoundaryFileIsNoFailure) {
    const ProgramRun result = run({"operationen", network(), "--profil",
                                   profile(folder.path("fehlt.dat")), "--obj", "obj_verw=7"});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
}

TEST_F(GroundCommands, PointsOutsideTheMappingAreCounted) {
    const std::string boundaries =
        folder.file("grenzen.dat", "2 2570000 5618000\n1 2570500 99999999\n1 2570500 5618000\n");
    const ProgramRun result = run({"operationen", network(), "--profil", profile(boundaries),
                                   "--obj", "obj_verw=1", "--obj", "obj_nube=0"});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.err, AllOf(HasSubstr("grenzen.dat"), HasSubstr("1 Punkte")));
}

}  // namespace
}  // namespace veldra
