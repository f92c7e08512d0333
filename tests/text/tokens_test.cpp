#include "text/tokens.h"

#include <string>

#include <gtest/gtest.h>

#include "graphikdatei/keywords.h"

namespace veldra {
namespace {

using std::string_literals::operator""s;

std::string word(std::string_view line, int n) {
    return std::string(suche_wort(line, n).text);
}

TEST(SucheWort, SeparatesAtBlanksAndNuls) {
    EXPECT_EQ(word("  a  bc", 1), "a");
    EXPECT_EQ(word("  a  bc", 2), "bc");
    EXPECT_EQ(suche_wort("  a  bc", 3).status, 1);
    EXPECT_EQ(word("a\0\0b"s, 2), "b");
    EXPECT_EQ(word("a\tb c", 1), "a\tb");
}

TEST(SucheWort, BlankLineHasNoToken) {
    EXPECT_EQ(suche_wort("", 1).status, 1);
    EXPECT_EQ(suche_wort("   ", 1).status, 1);
}

TEST(SucheWort, QuotedTokenKeepsItsBlanks) {
    EXPECT_EQ(word("x \"A 17\" y", 2), "A 17");
    EXPECT_EQ(word("x \"A 17\" y", 3), "y");
    EXPECT_EQ(word("x \"A\"y", 3), "y");
}

TEST(SucheWort, QuoteInsideAWordIsOrdinary) {
    EXPECT_EQ(word("x a\"b c", 2), "a\"b");
}

TEST(SucheWort, QuotedTokenWithoutClosingQuoteRunsToTheEndAndLosesItsLastCharacter) {
    EXPECT_EQ(word("x \"abc def", 2), "abc de");
    EXPECT_EQ(suche_wort("x \"abc def", 3).status, 1);
    EXPECT_EQ(suche_wort("x \"a", 2).status, 2);
}

TEST(SucheWort, EmptyQuotedTokenAskedForDirectlyReportsStatus2) {
    EXPECT_EQ(suche_wort("x \"\" y", 2).status, 2);
    EXPECT_EQ(word("x \"\" y", 3), "y");
}

TEST(SucheWort, QuoteAtTheEndOfALineIsAnEmptyQuotedToken) {
    EXPECT_EQ(suche_wort("x \"", 2).status, 2);
    EXPECT_EQ(suche_wort("x \"", 3).status, 1);
}

TEST(SucheWort, FailsOnALineBeyond32767Characters) {
    EXPECT_EQ(suche_wort(std::string(32767, 'a'), 1).status, 0);
    EXPECT_EQ(suche_wort(std::string(32768, 'a'), 1).status, 3);
}

TEST(Record, EveryPrefixOfAKeywordIsThatKeyword) {
    for (const char* line : {"NETZTEIL x", "netzteil x", "N x", "Netz x"}) {
        EXPECT_TRUE(Record(line).is(keyword::netzteil)) << line;
    }
    EXPECT_FALSE(Record("NETZTEILE x").is(keyword::netzteil));
    EXPECT_FALSE(Record("").is(keyword::netzteil));
}

TEST(Record, FoldsUmlautsButNotSharpS) {
    EXPECT_TRUE(Record("h\xF6henunterschied").is(keyword::hoehenunterschied));
    EXPECT_TRUE(Record("ma\xDFstabgrundriss").is(keyword::massstabgrundriss));
    EXPECT_FALSE(Record("masstabgrundriss").is(keyword::massstabgrundriss));
}

TEST(Record, RestIsTrimmedAndKeepsItsQuotes) {
    EXPECT_EQ(Record("Netz    Nord 1   ").rest(), "Nord 1");
    EXPECT_EQ(Record("N \"Nord\"").rest(), "\"Nord\"");
    EXPECT_EQ(Record("N ").rest(), "");
    EXPECT_TRUE(Record("N ").has_rest());
    EXPECT_FALSE(Record("N").has_rest());
}

TEST(Record, ClosingQuoteOfAQuotedKeywordIsItsSeparator) {
    EXPECT_EQ(Record("\"NETZTEIL\"Nord").rest(), "Nord");
    EXPECT_TRUE(Record("\"NETZTEIL\"").has_rest());
}

TEST(Record, FindsWordsInAnyOrder) {
    Record record("K 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17");
    EXPECT_EQ(record.word(17).text, "17");
    EXPECT_EQ(record.word(5).text, "5");
    EXPECT_EQ(record.number(16), 16.0);
    EXPECT_EQ(record.word(18).status, 1);
    EXPECT_EQ(record.number(18), 0.0);
}

}  // namespace
}  // namespace veldra
