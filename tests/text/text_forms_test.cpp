#include "text/text_forms.h"

#include <gtest/gtest.h>

namespace veldra {
namespace {

TEST(ScaleList, HoldsTwentyFiveDenominatorsLargestFirst) {
    const ScaleList& list = ApplyScaleList();
    ASSERT_EQ(list.size(), 25U);
    EXPECT_EQ(list.front(), "5 000 000");
    EXPECT_EQ(list[3], "1 250 000");
    EXPECT_EQ(list[18], "1 200");
    EXPECT_EQ(list.back(), "100");
    for (std::size_t i = 1; i < list.size(); ++i) {
        EXPECT_LT(GroupDigits(list[i]).value, GroupDigits(list[i - 1]).value) << list[i];
    }
}

TEST(ScaleList, TextsAreInNormalForm) {
    for (const std::string_view text : ApplyScaleList()) {
        EXPECT_EQ(GroupDigits(text).grouped, text);
    }
}

struct Grouping {
    const char* typed;
    const char* grouped;
    double value;
};

class GroupDigitsForms : public testing::TestWithParam<Grouping> {};

TEST_P(GroupDigitsForms, AreNormalised) {
    const GroupedNumber result = GroupDigits(GetParam().typed);
    EXPECT_EQ(result.grouped, GetParam().grouped);
    EXPECT_EQ(result.value, GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Denominators, GroupDigitsForms,
    testing::Values(Grouping{"100", "100", 100}, Grouping{"1250", "1 250", 1250},
                    Grouping{"25000000", "25 000 000", 25000000},
                    Grouping{"1250000", "1 250 000", 1250000},
                    Grouping{" 1 250  000 ", "1 250 000", 1250000},
                    Grouping{"999999999", "999 999 999", 999999999},
                    Grouping{"1234567890", "1 234 567 890", 1234567890},
                    Grouping{"12345678901234", "12345 678 901 234", 12345678901234},
                    Grouping{"2,5", "3", 2.5}, Grouping{"1500.4", "1 500", 1500.4},
                    Grouping{"", "0", 0}, Grouping{"abc", "0", 0}));

struct Shortening {
    const char* number;
    const char* shown;
};

class ShortPointNumbers : public testing::TestWithParam<Shortening> {};

TEST_P(ShortPointNumbers, AreShortened) {
    EXPECT_EQ(ShortPointNumber(GetParam().number), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Labels, ShortPointNumbers,
    testing::Values(Shortening{"3251001250", "12.50"}, Shortening{"3251001200", "12"},
                    Shortening{"3251200125", "125"}, Shortening{"A12", "A12"}, Shortening{"", ""},
                    Shortening{"   ", ""}, Shortening{"  TP 7 ", "TP 7"}, Shortening{"0", "0"},
                    Shortening{"7", "7"}, Shortening{"12345", "12345"},
                    Shortening{"123456", "23456"}, Shortening{"100000", "0"},
                    // Nine digits with a 0 before the last five.
                    Shortening{"325001250", "12.50"},
                    // The sub number loses its leading zero.
                    Shortening{"3251001205", "12.5"},
                    // Without a main number the last five digits stand as they are.
                    Shortening{"3251000050", "50"},
                    // Eight and eleven digits have no sub number.
                    Shortening{"51001250", "1250"}, Shortening{"13251001250", "1250"},
                    // A leading zero or a point is no whole number.
                    Shortening{"0012", "0012"}, Shortening{"12.5", "12.5"}, Shortening{"-0", "-0"},
                    // A text that is digits only, but more than a number holds exactly.
                    Shortening{"12345678901234567891", "12345678901234567891"},
                    Shortening{"-12", "-12"}, Shortening{"-123456", "23456"}));

TEST(TakenOtherwise, TellsWhatIsNoNumberOrFarFromTheOneInForce) {
    EXPECT_EQ(taken_otherwise("2.5", "2.5"), "");
    EXPECT_EQ(taken_otherwise("2,5", "2.5"), "");
    EXPECT_EQ(taken_otherwise("0", "0.0"), "");
    EXPECT_EQ(taken_otherwise("10", "11"), "");
    EXPECT_EQ(taken_otherwise("10", "11.1"), "Statt \"10\" gilt 11.1");
    EXPECT_EQ(taken_otherwise("-3", "1.5"), "Statt \"-3\" gilt 1.5");
    EXPECT_EQ(taken_otherwise("0", "1.5"), "Statt \"0\" gilt 1.5");
    EXPECT_EQ(taken_otherwise(" abc ", "0.0"), "Statt \"abc\" gilt 0.0");
    EXPECT_EQ(taken_otherwise("", "0.0"), "Statt \"\" gilt 0.0");
}

}  // namespace
}  // namespace veldra
