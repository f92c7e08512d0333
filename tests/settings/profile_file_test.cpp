#include "settings/profile_file.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "temp_file.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using testing_support::file_bytes;

std::string value_of(const std::string& bytes) {
    return ProfileFile(bytes).get("S", "k");
}

std::string after_set(const std::string& bytes, const std::string& value) {
    ProfileFile file(bytes);
    file.set("S", "k", value);
    return file.bytes();
}

TEST(ProfileFileGet, GivesTheValueOfAKey) {
    EXPECT_EQ(value_of("[S]\r\nk=Arial\r\n"), "Arial");
}

TEST(ProfileFileGet, MissingKeySectionAndEmptyValueAreAllEmpty) {
    EXPECT_EQ(value_of(""), "");
    EXPECT_EQ(value_of("[T]\nk=1\n"), "");
    EXPECT_EQ(value_of("[S]\nj=1\n"), "");
    EXPECT_EQ(value_of("[S]\nk=\n"), "");
    EXPECT_EQ(value_of("[S]\nk=   \t\n"), "");
    EXPECT_EQ(value_of("[S]\nk=\"\"\n"), "");
}

TEST(ProfileFileGet, IgnoresTheCaseOfSectionsAndKeys) {
    EXPECT_EQ(value_of("[s]\nK=1\n"), "1");
    // Ä and ä in Windows-1252.
    const ProfileFile file("[L\xC4NDER]\n\xE4nderung=1\n");
    EXPECT_EQ(file.get("l\xE4nder", "\xC4NDERUNG"), "1");
}

TEST(ProfileFileGet, TakesTheFirstSectionAndTheFirstKey) {
    EXPECT_EQ(value_of("[S]\nk=1\nk=2\n"), "1");
    EXPECT_EQ(value_of("[S]\nk=1\n[S]\nk=2\n"), "1");
    EXPECT_EQ(value_of("[S]\nj=1\n[S]\nk=2\n"), "") << "only the first section of a name counts";
}

TEST(ProfileFileGet, DropsBlanksRoundNamesAndValues) {
    EXPECT_EQ(value_of(" [ S ] \n\t k =  a b \t\n"), "a b");
}

TEST(ProfileFileGet, DropsOnePairOfQuotes) {
    EXPECT_EQ(value_of("[S]\nk=\" a \"\n"), " a ");
    EXPECT_EQ(value_of("[S]\nk='a'\n"), "a");
    EXPECT_EQ(value_of("[S]\nk=\"\"a\"\"\n"), "\"a\"");
    EXPECT_EQ(value_of("[S]\nk=\"a'\n"), "\"a'") << "quotes of two kinds are no pair";
    EXPECT_EQ(value_of("[S]\nk=\"\n"), "\"") << "one quote is no pair";
}

TEST(ProfileFileGet, CutsAValueAt255Characters) {
    EXPECT_EQ(value_of("[S]\nk=" + std::string(255, 'x')), std::string(255, 'x'));
    EXPECT_EQ(value_of("[S]\nk=" + std::string(256, 'x')), std::string(255, 'x'));
    EXPECT_EQ(value_of("[S]\nk=\"" + std::string(256, 'x') + "\""), std::string(255, 'x'));
}

TEST(ProfileFileGet, SkipsCommentsAndLinesWithoutEqualsSign) {
    EXPECT_EQ(value_of("[S]\n;k=1\n ;k=2\nk\nk=3;4\n"), "3;4");
    EXPECT_EQ(value_of(";[S]\nk=1\n"), "");
    EXPECT_EQ(ProfileFile("[S]\n;k=1\n").get("S", ";k"), "");
    EXPECT_EQ(value_of("k=1\n[S]\n"), "") << "a key above the first section";
}

TEST(ProfileFileGet, ReadsAllLineEnds) {
    EXPECT_EQ(value_of("[S]\nk=1"), "1");
    EXPECT_EQ(value_of("[S]\r\nk=1\r\n"), "1");
    EXPECT_EQ(value_of("[S]\rk=1\n"), "") << "a CR alone ends no line";
    EXPECT_EQ(value_of("[S]\nk=1\r\r\n"), "1\r") << "only one CR belongs to the end";
}

TEST(ProfileFileGet, GivesTheNumberOfTheLine) {
    const ProfileFile file("; head\r\n[S]\r\n\r\nk=1\r\n");
    EXPECT_EQ(file.line_number("s", "K"), 4);
    EXPECT_EQ(file.line_number("S", "j"), 0);
}

TEST(ProfileFileGet, GivesUndefinedBytesAsTheyAre) {
    EXPECT_EQ(value_of("[S]\nk=\x81\x8D\x8F\x90\x9D\n"), "\x81\x8D\x8F\x90\x9D");
    EXPECT_EQ(value_of(std::string("[S]\nk=a\0b\n", 10)), std::string("a\0b", 3));
}

TEST(ProfileFileGet, ReadsWhatAnEditorHasSavedInUtf8) {
    EXPECT_EQ(value_of("\xEF\xBB\xBF[S]\nk=1\n"), "1");
    EXPECT_EQ(value_of("\xEF\xBB\xBF[S]\nk=K\xC3\xB6ln\n"), "K\xF6ln");
    EXPECT_EQ(value_of("[S]\nk=K\xC3\xB6ln \xE2\x82\xAC\n"), "K\xF6ln \x80");
    // What Windows-1252 lacks, here a musical sign.
    EXPECT_EQ(value_of("[S]\nk=a\xF0\x9D\x84\x9E\n"), "a?");
    EXPECT_EQ(ProfileFile("[\xC3\xBC]\n\xC3\xA4=1\n").get("\xDC", "\xC4"), "1");
    // 255 characters, not bytes.
    std::string umlauts;
    for (int i = 0; i < 255; ++i) {
        umlauts += "\xC3\xA4";
    }
    EXPECT_EQ(value_of("[S]\nk=" + umlauts + "x\n"), std::string(255, '\xE4'));
}

TEST(ProfileFileGet, TakesOtherBytesForWindows1252) {
    for (const std::string value :
         {"\xF6", "K\xF6ln", "\xC3", "\xC3\xB6 \xF6", "\xE2\x82", "\xC1\xA1", "\xF5\xA1\xA1\xA1"}) {
        EXPECT_EQ(value_of("[S]\nk=" + value + "\n"), value);
        EXPECT_EQ(value_of("[S]\nk=" + value), value);
    }
}

TEST(ProfileFileSet, StaysInUtf8WhereTheFileIs) {
    EXPECT_EQ(after_set("\xEF\xBB\xBF[S]\nk=1\n", "K\xF6ln"), "\xEF\xBB\xBF[S]\nk=K\xC3\xB6ln\n");
    EXPECT_EQ(after_set("[T]\nx=\xC3\xA4 \xF0\x9D\x84\x9E\n", "\xF6"),
              "[T]\nx=\xC3\xA4 \xF0\x9D\x84\x9E\n[S]\r\nk=\xC3\xB6\r\n");
    EXPECT_EQ(after_set("[S]\nk=\xC3\xA4\n", "\xE4"), "[S]\nk=\xC3\xA4\n");
    EXPECT_EQ(after_set("[S]\nk=1\n", "\xF6"), "[S]\nk=\xF6\n");
}

TEST(ProfileFileSet, ReplacesTheValueInPlace) {
    EXPECT_EQ(after_set("[S]\r\na=1\r\nk=2\r\nb=3\r\n", "9"), "[S]\r\na=1\r\nk=9\r\nb=3\r\n");
}

TEST(ProfileFileSet, KeepsTheSpellingOfNamesAndTheLineEnd) {
    EXPECT_EQ(after_set("[s]\n K = \"2\"  \n", "9"), "[s]\n K = 9\n");
    EXPECT_EQ(after_set("[S]\nk=2", "9"), "[S]\nk=9");
    EXPECT_EQ(after_set("[S]\nk=  \r\n", "9"), "[S]\nk=  9\r\n");
}

TEST(ProfileFileSet, LeavesALineThatGivesTheValueAlready) {
    EXPECT_EQ(after_set("[S]\nk= \" a\" \n", " a"), "[S]\nk= \" a\" \n");
}

TEST(ProfileFileSet, AppendsAKeyToItsSectionBeforeTrailingBlankLines) {
    EXPECT_EQ(after_set("[S]\na=1\n; note\n\n \n[T]\nb=2\n", "9"),
              "[S]\na=1\n; note\nk=9\r\n\n \n[T]\nb=2\n");
    EXPECT_EQ(after_set("[S]\n\n[T]\n", "9"), "[S]\nk=9\r\n\n[T]\n");
}

TEST(ProfileFileSet, AppendsToTheFirstSectionOfTheName) {
    EXPECT_EQ(after_set("[S]\na=1\n[S]\nk=2\n", "9"), "[S]\na=1\nk=9\r\n[S]\nk=2\n");
}

TEST(ProfileFileSet, EndsALastLineThatHasNoEnd) {
    EXPECT_EQ(after_set("[S]\na=1", "9"), "[S]\na=1\r\nk=9\r\n");
    EXPECT_EQ(after_set("[T]", "9"), "[T]\r\n[S]\r\nk=9\r\n");
}

TEST(ProfileFileSet, AppendsASectionAtTheEnd) {
    EXPECT_EQ(after_set("", "9"), "[S]\r\nk=9\r\n");
    EXPECT_EQ(after_set("[T]\nb=2\n\n", "9"), "[T]\nb=2\n\n[S]\r\nk=9\r\n");
}

TEST(ProfileFileSet, KeepsEveryOtherByte) {
    const std::string head =
        "\xEF;\x81 head\n\nno key\r\n[X Y]\r\nu = \x9D \t\n\r\n[s]\r\nj=\"1\"\n";
    const std::string tail = "\r\r\n;\n[]\n=\n[T\nlast";
    EXPECT_EQ(after_set(head + "k=1\n" + tail, "2"), head + "k=2\n" + tail);
}

TEST(ProfileFileSet, ControlCharactersOfAValueBecomeBlanks) {
    EXPECT_EQ(after_set("", "a\r\n[T]\nx=1"), "[S]\r\nk=a  [T] x=1\r\n");
    EXPECT_EQ(after_set("",
                        "a\tb\x7F"
                        "c"),
              "[S]\r\nk=a b c\r\n");
    EXPECT_EQ(after_set("[S]\nk=a\tb\n", "a\tb"), "[S]\nk=a\tb\n");
}

TEST(ProfileFileSet, WritesValuesThatTheFormatCannotHoldAsTheyAre) {
    EXPECT_EQ(after_set("", " a "), "[S]\r\nk= a \r\n");
    EXPECT_EQ(value_of(after_set("", " a ")), "a");
    EXPECT_EQ(after_set("", "'a'"), "[S]\r\nk='a'\r\n");
    EXPECT_EQ(value_of(after_set("", "'a'")), "a");
    EXPECT_EQ(after_set("", std::string(300, 'x')), "[S]\r\nk=" + std::string(300, 'x') + "\r\n");
}

TEST(ProfileFileSet, GivesBackWhatWasSet) {
    ProfileFile file;
    for (const char* key : {"a", "b", "ETRS 89", "a"}) {
        file.set("S", key, std::string("value ") + key);
    }
    EXPECT_EQ(file.bytes(), "[S]\r\na=value a\r\nb=value b\r\nETRS 89=value ETRS 89\r\n");
    EXPECT_EQ(file.get("S", "etrs 89"), "value ETRS 89");
}

TEST(ProfileGivesBack, WhatTheFormatCanHold) {
    EXPECT_TRUE(profile_gives_back(""));
    EXPECT_TRUE(profile_gives_back("/daten/gr\xFCn = 1; [x].dat"));
    EXPECT_TRUE(profile_gives_back(std::string(255, 'x')));
    for (const std::string& value :
         {std::string(256, 'x'), std::string(" x"), std::string("x "), std::string("'x'"),
          std::string("\"x\""), std::string("x\r\ny")}) {
        EXPECT_FALSE(profile_gives_back(value)) << value;
    }
}

TEST(ProfileFileLoad, AnyBytesComeBackAsTheyWere) {
    for (const std::string bytes :
         {"", "\n", "\r\n", "a", "\r", "[S]\nk=1", "[S]\rk\r\n\n\r\n=\n", "[\n]\n[S\n"}) {
        EXPECT_EQ(ProfileFile(bytes).bytes(), bytes);
    }
}

TEST(ProfileFileLoad, MissingFileAndFolderAreEmpty) {
    const testing_support::TempFolder folder;
    EXPECT_EQ(ProfileFile::load(folder.path("none.ini")).bytes(), "");
    EXPECT_EQ(ProfileFile::load(folder.path()).bytes(), "");
    EXPECT_EQ(ProfileFile::load("").bytes(), "");
}

TEST(ProfileFileLoad, ForUpdateRefusesWhatIsThereButCannotBeRead) {
    const testing_support::TempFolder folder;
    EXPECT_EQ(ProfileFile::load_for_update(folder.path("none.ini")).bytes(), "");
    EXPECT_THROW((void)ProfileFile::load_for_update(folder.path()), FatalError);
}

TEST(ProfileFileSave, WritesTheFileAndReadsItBack) {
    const testing_support::TempFolder folder;
    const std::string path = folder.file("a.ini", "[S]\nk=1\n");
    ProfileFile file = ProfileFile::load(path);
    file.set("S", "k", "2");
    file.save(path);
    EXPECT_EQ(file_bytes(path), "[S]\nk=2\n");
    EXPECT_EQ(ProfileFile::load(path).get("S", "k"), "2");
}

TEST(ProfileFileSave, AFailedSaveSaysSoAndLeavesNothingBehind) {
    const testing_support::TempFolder folder;
    const ProfileFile file("[S]\nk=1\n");
    EXPECT_THROW(file.save(folder.path("none/a.ini")), FatalError);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

}  // namespace
}  // namespace veldra
