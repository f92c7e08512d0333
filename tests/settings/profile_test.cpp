#include "settings/profile.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "default_profile.h"
#include "model/session.h"
#include "settings/defaults.h"
#include "settings/profile_file.h"
#include "temp_file.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using testing_support::default_profile;
using testing_support::file_bytes;

using testing::AllOf;
using testing::HasSubstr;

/// A session at the start, and a profile of its own.
class Profile : public testing::Test {
 protected:
    Profile() { standard_alle(session_); }

    void read(const std::string& bytes) { profil_lesen(session_, folder_.file("P.INI", bytes)); }
    std::string written() {
        profil_schreiben(session_, folder_.path("P.INI"));
        return file_bytes(folder_.path("P.INI"));
    }
    std::string written_value(const std::string& section, const std::string& key) {
        return ProfileFile(written()).get(section, key);
    }
    std::string error_of(const std::string& bytes) {
        try {
            read(bytes);
        } catch (const FatalError& error) {
            return error.what();
        }
        return "";
    }

    testing_support::TempFolder folder_;
    Session session_;
    Settings& settings_ = session_.settings;
};

TEST_F(Profile, AnEmptyProfileLeavesEveryDefaultInForce) {
    read("");
    EXPECT_EQ(settings_, Settings{});
    EXPECT_EQ(session_.titel[0].getTitelSize(), 3.5F);
    for (std::size_t line = 1; line < 4; ++line) {
        EXPECT_EQ(session_.titel[line].getTitelSize(), 3.0F);
        EXPECT_EQ(session_.titel[line].getTitelFont(), "Arial");
    }
}

TEST_F(Profile, AMissingOrUnreadableProfileIsNoError) {
    profil_lesen(session_, folder_.path("none.ini"));
    profil_lesen(session_, folder_.path());
    EXPECT_EQ(settings_, Settings{});
}

TEST_F(Profile, CommaAndPointBothReadAsTheDecimalSign) {
    read("[STATES]\nstnvwert_3=3,4\n");
    EXPECT_EQ(settings_.stnvwert[3], 3.4);
    read("[STATES]\nstnvwert_3=3,3\n");
    EXPECT_EQ(settings_.stnvwert[3], 3.3);
    read("[STATES]\nstnvwert_3=3.4\n");
    EXPECT_EQ(settings_.stnvwert[3], 3.4);
    read("[STATES]\nstnvwert_3=3.3\n");
    EXPECT_EQ(settings_.stnvwert[3], 3.3);
}

TEST_F(Profile, OnlyTheFileInUseIsRead) {
    const std::string plain = folder_.file("VELDRA.INI", "[BEOBAC]\nlenoriscr=1\nStquerscr=2\n");
    const std::string project = folder_.file("projekt.ini", "[BEOBAC]\nlenoriscr=3\n");
    profil_lesen(session_, project);
    EXPECT_EQ(settings_.lenoriscr, 3);
    EXPECT_EQ(settings_.Stquerscr, 200) << "the plain profile is not read";
    EXPECT_EQ(file_bytes(plain), "[BEOBAC]\nlenoriscr=1\nStquerscr=2\n");
}

TEST_F(Profile, ANewFileHoldsAllKeysInTheirOrder) {
    EXPECT_EQ(written(), default_profile());
}

TEST_F(Profile, WritingTwiceGivesTheSameBytes) {
    const std::string once = written();
    EXPECT_EQ(written(), once);
}

/// The default profile with its keys' values numbered from 101 in their order: a text "f101", a
/// number 101 or 101.5, a colour 0000000101, a datum row that begins with 101.0, or "True".
std::string numbered_profile() {
    std::string bytes;
    int number = 100;
    const std::string profile = default_profile();
    for (std::size_t from = 0; from < profile.size();) {
        const std::size_t end = profile.find("\r\n", from);
        const std::string line = profile.substr(from, end - from);
        from = end + 2;
        const std::size_t equals = line.find('=');
        bytes += line.substr(0, equals);
        if (equals != std::string::npos) {
            const std::string value = line.substr(equals + 1);
            const std::string digits = std::to_string(++number);
            const bool numeric = value[0] == '-' || (value[0] >= '0' && value[0] <= '9');
            const bool decimal = value.find('.') != std::string::npos;
            bytes += "=" + (value == "False"     ? "True"
                            : !numeric           ? "f" + digits
                            : value.size() > 10  ? digits + ".0 2.5 -3.25 4.125 5.0625"
                            : value.size() == 10 ? "0000000" + digits
                            : decimal            ? digits + ".5"
                                                 : digits);
        }
        bytes += "\r\n";
    }
    return bytes;
}

DatumRow numbered_datum(double first) {
    return {.dphi0 = first, .dlam0 = 2.5, .sphi = -3.25, .slam = 4.125, .rot = 5.0625};
}

/// What numbered_profile holds, by hand.
Settings numbered_settings() {
    Settings expected;
    expected.punsigscr = {101, 102, 103, 104};
    expected.pubgrascr = 105;
    expected.punsigplo = {106.5F, 107.5F, 108.5F, 109.5F};
    expected.pubsizplo = 110.5F;
    expected.pubfon = "f111";
    expected.pubbol = expected.pubita = expected.pubund = -1;
    expected.pubcolor = 115;
    expected.stanplt = 116.5;
    expected.stanptp = 117.5;
    expected.nubgrascr = 118;
    expected.nubsizplo = 119.5F;
    expected.nubfon = "f120";
    expected.nubbol = expected.nubita = expected.nubund = -1;
    expected.nubcolor = 124;
    expected.Stquerscr = 125;
    expected.Stkreuscr = 126;
    expected.lenoriscr = 127;
    expected.Stquerplo = 128.5;
    expected.Stkreuplo = 129.5;
    expected.lenoriplo = 130.5;
    expected.faktorStrich = 131;
    expected.stnddrw = 132;
    expected.stndrgb = 133;
    expected.stndwert = 134.5;
    expected.stevdrw = {0, 135, 138};
    expected.stevrgb = {0, 136, 139};
    expected.stevwert = {0, 137.5};
    expected.stnvdrw = {0, 140, 143, 146, 149};
    expected.stnvrgb = {0, 141, 144, 147, 150};
    expected.stnvwert = {0, 142.5, 145.5, 148.5};
    expected.stepdrw = {0, 151, 154, 157};
    expected.steprgb = {0, 152, 155, 158};
    expected.stepwert = {0, 153.5, 156.5};
    expected.vektAdrw = {0, 159, 163, 167, 171, 175, 179};
    expected.vektArgb = {0, 160, 164, 168, 172, 176, 180};
    expected.vektNdrw = {0, 161, 165, 169, 173, 177, 181};
    expected.vektNrgb = {0, 162, 166, 170, 174, 178, 182};
    expected.verw_datei = "f183";
    expected.verw_elli = 184;
    expected.verw_abbi = 185;
    expected.verw_datum = {numbered_datum(186), numbered_datum(187), numbered_datum(188)};
    expected.grenzdrw = {0, 189, 190, 191, 192, 193, 194, 195};
    expected.grenzrgb = {0, 196, 197, 198, 199, 200, 201, 202};
    expected.numbez_datum = {numbered_datum(203), numbered_datum(204), numbered_datum(205)};
    return expected;
}

TEST_F(Profile, EveryKeyIsReadIntoItsOwnPlace) {
    read(numbered_profile());
    EXPECT_EQ(settings_, numbered_settings());
    for (std::size_t line = 0; line < 4; ++line) {
        const int first = 206 + 5 * static_cast<int>(line);
        EXPECT_EQ(session_.titel[line].getTitelSize(), static_cast<float>(first) + 0.5F);
        EXPECT_EQ(session_.titel[line].getTitelFont(), "f" + std::to_string(first + 1));
    }
}

TEST_F(Profile, EveryKeyIsWrittenFromItsOwnPlace) {
    read(numbered_profile());
    std::filesystem::remove(folder_.path("P.INI"));
    EXPECT_EQ(written(), numbered_profile());
}

TEST_F(Profile, EveryStyleHasItsOwnKey) {
    const std::array<std::pair<std::string, std::int16_t Settings::*>, 6> styles{
        {{"pubbol", &Settings::pubbol},
         {"pubita", &Settings::pubita},
         {"pubund", &Settings::pubund},
         {"nubbol", &Settings::nubbol},
         {"nubita", &Settings::nubita},
         {"nubund", &Settings::nubund}}};
    for (const auto& [key, member] : styles) {
        Settings expected;
        expected.*member = -1;
        settings_ = Settings{};
        read("[BEZPUN]\n" + key + "=True\n");
        EXPECT_EQ(settings_, expected) << key;
    }
    read("[LEGENDE]\nTitelBold_2=True\nTitelItal_3=True\nTitelUndr_4=True\n");
    for (std::size_t line = 0; line < 4; ++line) {
        EXPECT_EQ(session_.titel[line].getTitelBold(), line == 1 ? -1 : 0);
        EXPECT_EQ(session_.titel[line].getTitelItal(), line == 2 ? -1 : 0);
        EXPECT_EQ(session_.titel[line].getTitelUndr(), line == 3 ? -1 : 0);
    }
}

TEST_F(Profile, AFileWithSomeKeysLeavesTheRestAlone) {
    settings_.lenoriscr = 1234;
    read("[BEOBAC]\nStquerscr=300\nlenoriscr=\n");
    EXPECT_EQ(settings_.Stquerscr, 300);
    EXPECT_EQ(settings_.lenoriscr, 1234) << "an empty key is a missing one";
    EXPECT_EQ(settings_.Stkreuscr, 200);
}

TEST_F(Profile, WritingKeepsWhatElseTheFileHolds) {
    const std::string start =
        "; mine\n[START]\nBestaetigung=N\n[beobac]\nSTQUERSCR = 300 \nown=1\n\n";
    read(start);
    const std::string bytes = written();
    const std::string rest =
        "Stkreuscr=200\r\nlenoriscr=2000\r\nStquerplo=5.0\r\nStkreuplo=5.0\r\n"
        "lenoriplo=35.0\r\nfaktorStrich=1\r\n";
    EXPECT_EQ(bytes.rfind("; mine\n[START]\nBestaetigung=N\n[beobac]\nSTQUERSCR = 300 \nown=1\n" +
                              rest + "\n[BEZPUN]\r\npunsigscr_0=60\r\n",
                          0),
              0U)
        << bytes;
}

TEST_F(Profile, WritesNeitherStartNorRecentFiles) {
    const std::string bytes = written();
    EXPECT_EQ(bytes.find("[START]"), std::string::npos);
    EXPECT_EQ(bytes.find("[GRAPHIKDATEIEN]"), std::string::npos);
}

TEST_F(Profile, NumbersTakeTheDecimalsOfTheirMask) {
    settings_.punsigscr[0] = 60.5F;   // "####0"
    settings_.punsigplo[0] = 0.35F;   // "####0.0": a tie of the decimal, away from zero
    settings_.Stquerscr = 123456.4;   // "#####0"
    settings_.Stquerplo = 1234567.0;  // "#####0.0", longer than its mask
    settings_.stnvwert[1] = 0.04;     // "####0.0"
    settings_.stanptp = -0.04;        // zero has no sign
    settings_.stanplt = -12.25;
    const ProfileFile file(written());
    EXPECT_EQ(file.get("BEZPUN", "punsigscr_0"), "61");
    EXPECT_EQ(file.get("BEZPUN", "punsigplo_0"), "0.4");
    EXPECT_EQ(file.get("BEOBAC", "Stquerscr"), "123456");
    EXPECT_EQ(file.get("BEOBAC", "Stquerplo"), "1234567.0");
    EXPECT_EQ(file.get("STATES", "stnvwert_1"), "0.0");
    EXPECT_EQ(file.get("BEZPUN", "stanptp"), "0.0");
    EXPECT_EQ(file.get("BEZPUN", "stanplt"), "-12.3");
}

TEST_F(Profile, ColoursHaveTenDigits) {
    settings_.pubcolor = rgb(255, 255, 255);
    EXPECT_EQ(written_value("BEZPUN", "pubcolor"), "0016777215");
    read("[BEZPUN]\npubcolor=255\nnubcolor=0000065280\n");
    EXPECT_EQ(settings_.pubcolor, rgb(255, 0, 0));
    EXPECT_EQ(settings_.nubcolor, rgb(0, 255, 0));
}

TEST_F(Profile, IntegersRoundHalfToEven) {
    read("[BEZPUN]\npubgrascr=12,5\nnubgrascr=13.5\n");
    EXPECT_EQ(settings_.pubgrascr, 12);
    EXPECT_EQ(settings_.nubgrascr, 14);
}

TEST_F(Profile, WhatIsNoNumberReadsAsZero) {
    read("[BEZPUN]\npubgrascr=abc\nstanplt=x\npunsigscr_0=-\n");
    EXPECT_EQ(settings_.pubgrascr, 0);
    EXPECT_EQ(settings_.stanplt, 0);
    EXPECT_EQ(settings_.punsigscr[0], 0);
}

TEST_F(Profile, A16BitOverflowIsFatalAndNamesItsPlace) {
    read("[BEZPUN]\npubgrascr=32767\nnubgrascr=-32768\n");
    EXPECT_EQ(settings_.pubgrascr, 32767);
    EXPECT_EQ(settings_.nubgrascr, -32768);
    const std::string bytes = "[BEZPUN]\n\npubgrascr=32768\n";
    EXPECT_THAT(error_of(bytes),
                AllOf(HasSubstr("Laufzeitfehler '6': Überlauf"), HasSubstr(folder_.path("P.INI")),
                      HasSubstr("Zeile: 3"), HasSubstr("BEZPUN/pubgrascr")));
    EXPECT_EQ(file_bytes(folder_.path("P.INI")), bytes) << "the file stays whole";
    EXPECT_THAT(error_of("[VEKTOR]\nvektNdrw_6=1e5\n"), HasSubstr("VEKTOR/vektNdrw_6"));
}

TEST_F(Profile, A32BitOverflowIsFatal) {
    read("[BEZPUN]\npubcolor=2147483647\n");
    EXPECT_EQ(settings_.pubcolor, 2147483647);
    EXPECT_THAT(error_of("[BEZPUN]\npubcolor=2147483648\n"), HasSubstr("BEZPUN/pubcolor"));
    EXPECT_THAT(error_of("[VERWGR]\nEllipsoid=3e9\n"), HasSubstr("VERWGR/Ellipsoid"));
    EXPECT_THAT(error_of("[LEGENDE]\nTitelSize_2=1e39\n"), HasSubstr("LEGENDE/TitelSize_2"));
}

TEST_F(Profile, TheLargest32BitFloatCanBeReadAgain) {
    constexpr float largest = std::numeric_limits<float>::max();
    settings_.punsigscr[0] = largest;
    settings_.punsigplo[3] = -largest;
    // Its shortest decimal, 3.4028235e38, lies above it.
    EXPECT_EQ(written_value("BEZPUN", "punsigscr_0"), "340282350000000000000000000000000000000");
    settings_.punsigscr[0] = settings_.punsigplo[3] = 0;
    profil_lesen(session_, folder_.path("P.INI"));
    EXPECT_EQ(settings_.punsigscr[0], largest);
    EXPECT_EQ(settings_.punsigplo[3], -largest);
    EXPECT_THAT(error_of("[BEZPUN]\npunsigscr_0=3.4028236e38\n"), HasSubstr("BEZPUN/punsigscr_0"));
}

TEST_F(Profile, ReadsEveryFormOfABoolean) {
    const auto boolean = [this](const std::string& text) {
        read("[BEZPUN]\npubbol=" + text + "\n");
        return settings_.pubbol;
    };
    for (const char* yes : {"True", "TRUE", "true", "Wahr", "-1", "1", "\"True\""}) {
        settings_.pubbol = 0;
        EXPECT_EQ(boolean(yes), -1) << yes;
    }
    for (const char* no : {"False", "FALSE", "false", "Falsch", "0", "-0", "0,0"}) {
        settings_.pubbol = -1;
        EXPECT_EQ(boolean(no), 0) << no;
    }
    for (const std::int16_t before : {std::int16_t{0}, std::int16_t{-1}}) {
        settings_.pubbol = before;
        EXPECT_EQ(boolean("vielleicht"), before);
    }
}

TEST_F(Profile, WritesBooleansAsWords) {
    settings_.pubita = -1;
    session_.titel[2].setTitelBold(-1);
    EXPECT_EQ(written_value("BEZPUN", "pubita"), "True");
    EXPECT_EQ(written_value("BEZPUN", "pubbol"), "False");
    EXPECT_EQ(written_value("LEGENDE", "TitelBold_3"), "True");
}

TEST_F(Profile, TextsKeepTheirBytes) {
    // "Ärger" in Windows-1252, and the five bytes that the code page leaves undefined.
    const std::string font = "\xC4rger \x81\x8D\x8F\x90\x9D";
    read("[BEZPUN]\npubfon=" + font + "\n");
    EXPECT_EQ(settings_.pubfon, font);
    EXPECT_EQ(written_value("BEZPUN", "pubfon"), font);
}

TEST_F(Profile, TextsLoseTheirQuotesAndEndAt255Characters) {
    read("[VERWGR]\nDatei=\" grenzen.dat\"\n[BEZPUN]\npubfon=" + std::string(300, 'f') + "\n");
    EXPECT_EQ(settings_.verw_datei, " grenzen.dat");
    EXPECT_EQ(settings_.pubfon, std::string(255, 'f'));
}

TEST_F(Profile, ReadsTheTitleLines) {
    read("[LEGENDE]\nTitelSize_1=4,5\nTitelFont_2=Courier\nTitelUndr_4=true\n");
    EXPECT_EQ(session_.titel[0].getTitelSize(), 4.5F);
    EXPECT_EQ(session_.titel[1].getTitelFont(), "Courier");
    EXPECT_EQ(session_.titel[3].getTitelUndr(), -1);
    EXPECT_EQ(session_.titel[1].getTitelSize(), 3.0F);
}

TEST_F(Profile, LeavesTheTextsOfTheTitleLines) {
    session_.titel[0].setTitelText("ve_netz.dat");
    read("[LEGENDE]\nTitelSize_1=4\n");
    EXPECT_EQ(session_.titel[0].getTitelText(), "ve_netz.dat");
}

TEST_F(Profile, DatumLineHoldsFiveNumbers) {
    read("[NUMBEZ]\nETRS 89=  1.5   -2,25 \"3.5\" 4e1 5\n");
    const DatumRow expected{.dphi0 = 1.5, .dlam0 = -2.25, .sphi = 3.5, .slam = 40, .rot = 5};
    EXPECT_EQ(settings_.numbez_datum[1], expected);
    EXPECT_EQ(settings_.verw_datum[1], dhdn_to_etrs89_row)
        << "the boundaries have rows of their own";
}

TEST_F(Profile, DatumLineOfTheOlderFormIsReordered) {
    read("[VERWGR]\nDHDN=1 2 3 4 5 1\nAndere=1 2 3 4 5 2\n");
    const DatumRow older{.dphi0 = 1, .dlam0 = 3, .sphi = 2, .slam = 4, .rot = 0};
    const DatumRow newer{.dphi0 = 1, .dlam0 = 2, .sphi = 3, .slam = 4, .rot = 5};
    EXPECT_EQ(settings_.verw_datum[0], older);
    EXPECT_EQ(settings_.verw_datum[2], newer);
    EXPECT_EQ(written_value("VERWGR", "DHDN"), "1.0 3.0 2.0 4.0 0.0");
}

TEST_F(Profile, DatumLineThatIsShortEndsInZeros) {
    settings_.numbez_datum[0] = {.dphi0 = 9, .dlam0 = 9, .sphi = 9, .slam = 9, .rot = 9};
    read("[NUMBEZ]\nDHDN=1 2\n");
    const DatumRow expected{.dphi0 = 1, .dlam0 = 2};
    EXPECT_EQ(settings_.numbez_datum[0], expected);
}

TEST_F(Profile, DatumLineIsWrittenWithOneToFourDecimals) {
    settings_.verw_datum[2] = {
        .dphi0 = -1.5, .dlam0 = 2.34565, .sphi = 1234567890.125, .slam = -0.00004, .rot = 0.1234};
    EXPECT_EQ(written_value("VERWGR", "Andere"), "-1.5 2.3457 1234567890.125 0.0 0.1234");
}

TEST_F(Profile, ReadingSavesTheValuesInTheTwins) {
    read(
        "[BEZPUN]\npunsigscr_1=70\npunsigplo_1=3\n[BEOBAC]\nStquerscr=1\nStquerplo=2\n"
        "[STATES]\nstndwert=3\n[VEKTOR]\nvektAdrw_1=7\nvektAdrw_6=8\n[VERWGR]\ngrenzdrw_7=9\n");
    EXPECT_EQ(session_.twins.settings.punsigscr[1], 70);
    EXPECT_EQ(session_.twins.settings.punsigplo[1], 3);
    EXPECT_EQ(session_.twins.settings.Stquerscr, 1);
    EXPECT_EQ(session_.twins.settings.Stquerplo, 2);
    EXPECT_EQ(session_.twins.settings.stndwert, 3);
    EXPECT_EQ(session_.twins.settings.vektAdrw[1], 7);
    EXPECT_EQ(session_.twins.settings.vektAdrw[6], 8);
    EXPECT_EQ(session_.twins.settings.grenzdrw[7], 9);
}

TEST_F(Profile, AFileThatCannotBeReadIsNotWrittenOver) {
    EXPECT_THROW(profil_schreiben(session_, folder_.path()), FatalError);
    EXPECT_THROW(profil_schreiben(session_, folder_.path("none/P.INI")), FatalError);
}

}  // namespace
}  // namespace veldra
