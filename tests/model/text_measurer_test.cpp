#include "model/text_measurer.h"

#include <gtest/gtest.h>

#include "fake_measurer.h"

namespace veldra::test {
namespace {

/// At 10 points a letter is 100 twips wide and a line 200 high.
TextExtent extent(std::string_view text) {
    FakeMeasurer measurer;
    return measure_text(measurer.face_metrics({}), 10, text);
}

TEST(TextMeasurerTest, AsWideAsTheWidestLineWhereverItStands) {
    EXPECT_DOUBLE_EQ(extent("abcd").width, 400);
    EXPECT_DOUBLE_EQ(extent("abcd\r\nab").width, 400);
    EXPECT_DOUBLE_EQ(extent("ab\r\nabcd").width, 400);
    EXPECT_DOUBLE_EQ(extent("a\r\nabcde\r\nabc").width, 500);
    EXPECT_DOUBLE_EQ(extent("").width, 0);
}

TEST(TextMeasurerTest, EachLineHasTheHeightOfTheFace) {
    EXPECT_DOUBLE_EQ(extent("abcd").height, 200);
    EXPECT_DOUBLE_EQ(extent("abcd\r\nab").height, 400);
    EXPECT_DOUBLE_EQ(extent("a\r\nabcde\r\nabc").height, 600);
}

}  // namespace
}  // namespace veldra::test
