#include "dialogs/boundary_options.h"

#include <gmock/gmock.h>

#include "temp_file.h"
#include "text/codepage.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using testing_support::file_bytes;
using testing_support::TempFolder;

DatumRow row(double a, double b, double c, double d, double e) {
    return {a, b, c, d, e};
}

TEST(DatumText, FiveNumbersWithPointOrComma) {
    EXPECT_EQ(parse_datum_row("1 2.5 -3 4 5"), row(1, 2.5, -3, 4, 5));
    EXPECT_EQ(parse_datum_row("  1,25   +2 .5 3. -0 "), row(1.25, 2, 0.5, 3, 0));
}

TEST(DatumText, AnythingElseIsRefused) {
    for (const char* text : {"", "1 2 3 4", "1 2 3 4 5 6", "1 2 3 4 x", "1 2 3 4 5x",
                             "1 2 3 4 1.2.3", "1 2 3 4 -", "1 2 3 4 .", "1 2 3 4 1e5",
                             "1 2 3 4 \"\"", "1 2 3 4 5 \"\"", "1;2;3;4;5", "1 2 3 4 --5"}) {
        EXPECT_FALSE(parse_datum_row(text)) << text;
    }
}

TEST(DatumText, RowThatTheProfileHasNoRoomForIsRefused) {
    // Four times "0.0 " are 16 of 255 characters; the fifth number has ".0" behind its digits.
    const auto with_digits = [](std::size_t digits) {
        return "0 0 0 0 " + std::string(digits, '1');
    };
    EXPECT_TRUE(parse_datum_row(with_digits(237)));
    EXPECT_FALSE(parse_datum_row(with_digits(238)));
    EXPECT_FALSE(parse_datum_row(with_digits(400)));
}

TEST(DatumText, IsWrittenWithOneToFourDecimals) {
    EXPECT_EQ(datum_row_text(row(1, -2.5, 0.12345, 123456789.25, -0.00001)),
              "1.0 -2.5 0.1235 123456789.25 0.0");
}

TEST(BoundaryOptionsTest, ShowsTheSettingsAndStoresThem) {
    Settings settings;
    settings.verw_datei =
        "/daten/gr\xFC"
        "n.dat";
    settings.verw_elli = 4;
    settings.verw_abbi = 2;
    settings.numbez_datum[2] = row(1, 2, 3, 4, 5);
    BoundaryOptions options = boundary_options(settings);
    EXPECT_EQ(options.datei, "/daten/grün.dat");
    EXPECT_EQ(options.ellipsoid, 4);
    EXPECT_EQ(options.abbildung, 2);
    EXPECT_EQ(options.numb_tr[2], "1.0 2.0 3.0 4.0 5.0");
    EXPECT_EQ(options.gren_tr[0], "0.0 0.0 0.0 0.0 0.0");
    options.gren_tr[0] = "9 8 7 6 5,5";
    options.ellipsoid = 5;
    ASSERT_TRUE(store_boundary_options(options, settings));
    EXPECT_EQ(settings.verw_datum[0], row(9, 8, 7, 6, 5.5));
    EXPECT_EQ(settings.verw_elli, 5);
    EXPECT_EQ(settings.verw_datei,
              "/daten/gr\xFC"
              "n.dat");
    EXPECT_EQ(settings.numbez_datum[2], row(1, 2, 3, 4, 5));
}

TEST(BoundaryOptionsTest, StoresNothingWithABadRow) {
    Settings settings;
    const Settings before = settings;
    BoundaryOptions options = boundary_options(settings);
    options.datei = "andere.dat";
    options.numb_tr[2] = "1 2 3";
    EXPECT_FALSE(store_boundary_options(options, settings));
    EXPECT_EQ(settings, before);
}

TEST(BoundaryOptionsTest, StandardIsThatOfTheProfile) {
    const BoundaryOptions standard = standard_boundary_options();
    EXPECT_EQ(standard.datei, "verwgrenz.dat");
    EXPECT_EQ(standard.ellipsoid, 1);
    EXPECT_EQ(standard.abbildung, 1);
    EXPECT_EQ(standard.gren_tr[0], "0.0 0.0 0.0 0.0 0.0");
    EXPECT_EQ(parse_datum_row(standard.gren_tr[1]), dhdn_to_etrs89_row);
}

class OptimiseBoundaries : public testing::Test {
 protected:
    static bool go_on(double) { return true; }

    TempFolder folder;
    Session session;
};

// A there and back, which is the same segment twice.
constexpr const char* there_and_back = "2 A\r\n1 B\r\n1 A\r\n";

TEST_F(OptimiseBoundaries, WritesTheReducedCopyBesideTheFile) {
    std::string datei = folder.file("grenzen.dat", there_and_back);
    const std::string path = datei;
    EXPECT_EQ(optimise_boundaries(session, datei, go_on), ReductionEnd::done);
    EXPECT_EQ(datei, path + "_neu");
    EXPECT_EQ(file_bytes(datei), "2 A\r\n1 B\r\n");
    EXPECT_EQ(file_bytes(path), there_and_back);
}

TEST_F(OptimiseBoundaries, FindsARelativeFileBesideTheGraphicFile) {
    static_cast<void>(folder.file("grenzen_7731.dat", there_and_back));
    session.graphikdatei = folder.path("ve.dat");
    std::string datei = "grenzen_7731.dat";
    EXPECT_EQ(optimise_boundaries(session, datei, go_on), ReductionEnd::done);
    EXPECT_EQ(datei, "grenzen_7731.dat_neu");
    EXPECT_EQ(file_bytes(folder.path("grenzen_7731.dat_neu")), "2 A\r\n1 B\r\n");
}

TEST_F(OptimiseBoundaries, MissingFileLeavesThePath) {
    std::string datei = folder.path("fehlt.dat");
    EXPECT_EQ(optimise_boundaries(session, datei, go_on), ReductionEnd::no_file);
    EXPECT_EQ(datei, folder.path("fehlt.dat"));
    datei.clear();
    EXPECT_EQ(optimise_boundaries(session, datei, go_on), ReductionEnd::no_file);
}

TEST_F(OptimiseBoundaries, PathThatTheProfileCannotKeepLeadsToNoFile) {
    const std::string long_name(100, 'x');
    std::filesystem::create_directories(folder.path(long_name + "/" + long_name));
    session.graphikdatei = folder.path("ve.dat");
    for (const std::string& name : {long_name + "/" + long_name + "/" + long_name + ".dat",
                                    std::string("\u0141.dat"), std::string("'grenzen_7732.dat'")}) {
        const std::string path = folder.file(name, there_and_back);
        ASSERT_EQ(file_bytes(path), there_and_back);
        EXPECT_EQ(find_boundary_file(session, name), "") << name;
    }
    const std::string path = folder.file("grenzen_7732.dat", there_and_back);
    EXPECT_EQ(find_boundary_file(session, "grenzen_7732.dat"), path);
}

TEST_F(OptimiseBoundaries, GivenUpLeavesTheFilesAlone) {
    std::string many;
    for (int i = 0; i < 100000; ++i) {
        many += "1 " + std::to_string(i) + "\r\n";
    }
    std::string datei = folder.file("grenzen.dat", many);
    const std::string old_copy = folder.file("grenzen.dat_neu", "alt");
    const std::string before = datei;
    std::vector<double> shares;
    const auto end = optimise_boundaries(session, datei, [&shares](double share) {
        shares.push_back(share);
        return false;
    });
    EXPECT_EQ(end, ReductionEnd::cancelled);
    ASSERT_EQ(shares.size(), 1U);
    EXPECT_NEAR(shares[0], 0.65, 0.02);
    EXPECT_EQ(datei, before);
    EXPECT_EQ(file_bytes(old_copy), "alt");
}

TEST_F(OptimiseBoundaries, FolderThatCannotBeWrittenIsAFailure) {
    std::string datei = folder.file("grenzen.dat", there_and_back);
    std::filesystem::create_directories(datei + "_neu");
    const std::string before = datei;
    EXPECT_THROW(static_cast<void>(optimise_boundaries(session, datei, go_on)), FatalError);
    EXPECT_EQ(datei, before);
}

}  // namespace
}  // namespace veldra
