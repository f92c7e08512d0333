#include "model/tables.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "model/flat_index.h"
#include "model/row_table.h"

namespace veldra {
namespace {

struct NamedRow {
    std::int32_t number = -1;
    std::string name = "a name that is too long to be kept in place";
};

RowTable<NamedRow> table_of(std::int32_t rows) {
    RowTable<NamedRow> table;
    for (std::int32_t i = 1; i <= rows; ++i) {
        table[table.append()].number = i;
    }
    return table;
}

TEST(RowTable, RowsStayWhereTheyAreWhileOthersAreAdded) {
    constexpr std::int32_t rows = 3000;
    RowTable<NamedRow> table;
    std::vector<const NamedRow*> places{&table[0]};
    for (std::int32_t i = 1; i <= rows; ++i) {
        EXPECT_EQ(table.append(), i);
        EXPECT_EQ(table.count(), i);
        places.push_back(&table[i]);
        EXPECT_EQ(table[i].number, -1);
        table[i].number = i;
    }
    for (std::int32_t i = 1; i <= rows; ++i) {
        EXPECT_EQ(&table[i], places[static_cast<std::size_t>(i)]);
        EXPECT_EQ(table[i].number, i);
    }
    EXPECT_EQ(table[0].number, -1);
}

TEST(RowTable, DropsTheRowsBehindTheLastOfThem) {
    for (const std::int32_t last : {0, 1, 254, 255, 256, 257, 511, 512, 700, 1023, 1024}) {
        RowTable<NamedRow> table = table_of(1500);
        table.truncate(last);
        EXPECT_EQ(table.count(), last);
        EXPECT_EQ(table[last].number, last == 0 ? -1 : last);
        for (std::int32_t i = last + 1; i <= 1100; ++i) {
            ASSERT_EQ(table.append(), i);
            ASSERT_EQ(table[i].number, -1) << "a dropped row has come back";
        }
        table.truncate(2000);
        EXPECT_EQ(table.count(), 1100);
    }
}

TEST(RowTable, ACopyIsATableOfItsOwn) {
    RowTable<NamedRow> table = table_of(600);
    RowTable<NamedRow> copy = table.copy();
    table[300].number = 0;
    table.clear();
    EXPECT_EQ(table.count(), 0);
    ASSERT_EQ(copy.count(), 600);
    for (std::int32_t i = 1; i <= 600; ++i) {
        ASSERT_EQ(copy[i].number, i);
    }
    for (std::int32_t i = 601; i <= 1300; ++i) {
        ASSERT_EQ(copy.append(), i);
    }
    EXPECT_EQ(copy[300].number, 300);
}

TEST(FlatIndex, EntersARowOnlyIfItsKeyIsNew) {
    // Row i has the key i / 2; all keys fall on a few slots.
    FlatIndex index;
    const auto hash = [](std::int32_t key) { return static_cast<std::uint64_t>(key % 5) << 32U; };
    for (std::int32_t row = 2; row < 400; ++row) {
        const std::int32_t key = row / 2;
        const auto matches = [&](std::int32_t other) { return other / 2 == key; };
        EXPECT_EQ(index.find_or_put(hash(key), row, matches), key * 2);
        EXPECT_EQ(index.find(hash(key), matches), key * 2);
    }
    const auto third = [](std::int32_t other) { return other / 2 == 3; };
    index.put(hash(3), 7, third);
    EXPECT_EQ(index.find(hash(3), third), 7);
    EXPECT_EQ(index.find(hash(3), [](std::int32_t) { return false; }), 0);
}

TEST(FlatIndex, GuessesARowByTheFirstSlot) {
    FlatIndex index;
    const auto none = [](std::int32_t) { return false; };
    const std::uint64_t hash = std::uint64_t{7} << 32U;
    EXPECT_EQ(index.candidate(hash), 0);
    index.put(hash, 12, none);
    EXPECT_EQ(index.candidate(hash), 12);
    // The same slot of 64, another key.
    EXPECT_EQ(index.candidate(std::uint64_t{64 + 7} << 32U), 0);
}

TEST(LineKey, KeepsTheTextsOfCoordinatesTooLongForTheirFields) {
    const LineKey key({99999999.994, -9999999.994, 1234567890.125, -123456789.5});
    EXPECT_FALSE(key.is_ordinary());
    EXPECT_EQ(key.text(), "99999999.99-9999999.991234567890.13-123456789.50");
    EXPECT_EQ(key.reversed_text(), "1234567890.13-123456789.5099999999.99-9999999.99");
    // Read back at the positions 1, 12, 23 and 34 of the text, whatever stands there.
    EXPECT_EQ(key.coordinates().x1, 99999999.99);
    EXPECT_EQ(key.coordinates().y1, -9999999.99);
    EXPECT_EQ(key.coordinates().x2, 1234567890.0);
    EXPECT_EQ(key.coordinates().y2, 13.0);
    EXPECT_FALSE(key.ends_equal());
}

TEST(LineKey, TellsLongCoordinatesFromCentimetres) {
    for (const double too_long : {99999999.995, -9999999.995, 1e15, -1e300}) {
        EXPECT_FALSE(LineKey({0, 1, 2, too_long}).is_ordinary()) << too_long;
        EXPECT_FALSE(LineKey({too_long, 0, 0, 0}).is_ordinary()) << too_long;
        EXPECT_TRUE(LineKey({too_long, 5, too_long, 5}).ends_equal()) << too_long;
    }
    for (const double fits : {99999999.99, -9999999.99, 0.0, -0.004}) {
        EXPECT_TRUE(LineKey({0, 1, 2, fits}).is_ordinary()) << fits;
    }
    // The ends of a key that fits agree to a centimetre.
    EXPECT_TRUE(LineKey({1.001, 2.004, 1.0, 2.0}).ends_equal());
    EXPECT_FALSE(LineKey({1.005, 2.004, 1.0, 2.0}).ends_equal());
}

TEST(LineTable, FindsARowThatRunsTheOtherWay) {
    LineTable lines;
    const auto find = [&](const LineCoordinates& ends) { return lines.lin_suchen(ends).index; };
    EXPECT_EQ(find({1, 2, 3, 4}), 1);
    EXPECT_EQ(find({3, 4, 1, 2}), -1);
    EXPECT_EQ(find({1, 2, 3, 4.004}), 1);
    EXPECT_EQ(find({1, 2, 123456789.5, 4}), 2);
    EXPECT_EQ(find({123456789.5, 4, 1, 2}), -2);
    EXPECT_EQ(find({3, 4, 1, 2.01}), 3);
    EXPECT_EQ(lines.count(), 3);
}

}  // namespace
}  // namespace veldra
