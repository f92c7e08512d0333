// Keywords letter by letter, characters byte by byte, and the texts of errors.
#include <string>

#include <gtest/gtest.h>

#include "text/codepage.h"
#include "text/fatal_error.h"
#include "text/tokens.h"

namespace veldra {
namespace {

TEST(EdgesOfKeywords, EachLetterCountsFromTheFirstOn) {
    for (const std::string line : {"METZTEIL Nord", "NATZTEIL Nord", "NETZTEIM Nord", "M"}) {
        EXPECT_FALSE(Record(line).is("NETZTEIL")) << line;
    }
    for (const std::string line : {"NETZTEIL Nord", "netzteil", "n", "Netz"}) {
        EXPECT_TRUE(Record(line).is("NETZTEIL")) << line;
    }
}

TEST(EdgesOfSequences, CharactersOfEachLengthComeBack) {
    // One, two, three and four bytes; the last is none of the code page.
    EXPECT_EQ(from_utf8("a€b"),
              "a\x80"
              "b");
    EXPECT_EQ(from_utf8("€"), "\x80");
    EXPECT_EQ(from_utf8("ÿ"), "\xFF");
    EXPECT_EQ(from_utf8("x\xF0\x9F\x97\xBAy"), "x?y");
    // A sequence that ends too early: each of its bytes is malformed.
    EXPECT_EQ(from_utf8("\xE2\x82"), "??");
    EXPECT_EQ(from_utf8("\xC3"), "?");
}

/// What the program says at its end, in UTF-8.
TEST(EdgesOfErrors, EachCodeHasItsText) {
    const auto message = [](int code) { return std::string(runtime_error_at(code, {}).what()); };
    EXPECT_EQ(message(5), "Laufzeitfehler '5': Ungültiger Prozeduraufruf oder ungültiges Argument");
    EXPECT_EQ(message(6), "Laufzeitfehler '6': Überlauf");
    EXPECT_EQ(message(9), "Laufzeitfehler '9': Index außerhalb des gültigen Bereichs");
    EXPECT_EQ(message(10), "Laufzeitfehler '10': Anwendungs- oder objektdefinierter Fehler");
}

TEST(EdgesOfErrors, ThePlaceIsToldAsFarAsItIsKnown) {
    ErrorPlace place;
    place.file = "ve.dat";
    EXPECT_EQ(std::string(runtime_error_at(6, place).what()),
              "Laufzeitfehler '6': Überlauf\nDatei: ve.dat");
    place.line = 1;
    place.field = "M";
    EXPECT_EQ(std::string(runtime_error_at(6, place).what()),
              "Laufzeitfehler '6': Überlauf\nDatei: ve.dat\nZeile: 1\nFeld: M");
}

}  // namespace
}  // namespace veldra
