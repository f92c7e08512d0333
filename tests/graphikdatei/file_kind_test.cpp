#include "graphikdatei/file_kind.h"

#include <string>

#include <gtest/gtest.h>

#include "temp_file.h"

namespace veldra {
namespace {

using std::string_literals::operator""s;

class KindOfFile : public testing::Test {
 protected:
    FileKind kind(const std::string& bytes) { return kind_of_file(folder.file("datei", bytes)); }
    testing_support::TempFolder folder;
};

TEST_F(KindOfFile, ARecordOfAnySpellingMakesAGraphicFile) {
    EXPECT_EQ(kind("PUNKTSIGNATUR 1 2 0 0 1\n"), FileKind::graphic);
    EXPECT_EQ(kind("Kopf\r\n\r\n  netz Nord\r\n"), FileKind::graphic);
    EXPECT_EQ(kind("d 1 2 3 4"), FileKind::graphic);
    EXPECT_EQ(kind("Ma\xDFstabVektoren 1 1 1 1 1 1\x1A"), FileKind::graphic);
    EXPECT_EQ(kind("N\0A\n"s), FileKind::graphic);
}

TEST_F(KindOfFile, TextWithoutARecordIsNone) {
    EXPECT_EQ(kind("KOMMENTAR ohne Satz\n"), FileKind::other_text);
    EXPECT_EQ(kind("PUNKTSIGNATUREN 1 2\n"), FileKind::other_text);
    EXPECT_EQ(kind("NETZTEIL\n"), FileKind::other_text);  // nothing behind the keyword
    EXPECT_EQ(kind("a\tb\n"), FileKind::other_text);
}

TEST_F(KindOfFile, ControlCharactersAreNotOfATextWhateverElseThereIs) {
    EXPECT_EQ(kind("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x01"s), FileKind::binary);
    EXPECT_EQ(kind("PUNKTSIGNATUR 1 2 0 0 1\n\x02"), FileKind::binary);
    EXPECT_EQ(kind("PK\x03\x04"), FileKind::binary);
}

TEST_F(KindOfFile, NothingToLoseIsNoReasonToAsk) {
    EXPECT_EQ(kind(""), FileKind::graphic);
    EXPECT_EQ(kind(" \r\n\r\n"), FileKind::graphic);
    EXPECT_EQ(kind_of_file(folder.path("fehlt")), FileKind::graphic);
    EXPECT_EQ(kind_of_file(folder.path()), FileKind::graphic);  // a folder cannot be read
}

TEST_F(KindOfFile, OnlyTheBeginningIsLookedAt) {
    const std::string text(std::string::size_type{64} * 1024, 'x');
    EXPECT_EQ(kind(text + "\nNETZTEIL A\n"), FileKind::other_text);
}

}  // namespace
}  // namespace veldra
