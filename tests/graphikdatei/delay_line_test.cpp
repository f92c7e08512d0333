#include "graphikdatei/delay_line.h"

#include <memory>

#include <gtest/gtest.h>

namespace veldra {
namespace {

TEST(DelayLine, HandsItemsOnInTheirOrder) {
    DelayLine<int, 4> line;
    EXPECT_TRUE(line.is_empty());
    int next = 1;
    for (int i = 1; i <= 10; ++i) {
        if (line.is_full()) {
            EXPECT_EQ(line.first(), next++);
            line.leave();
        }
        line.enter(i);
        // Of four the third from the end has waited for two others.
        EXPECT_EQ(line.half_way() != nullptr, i >= 3);
        if (i >= 3) {
            EXPECT_EQ(*line.half_way(), i - 2);
        }
    }
    EXPECT_EQ(next, 7);
    for (; !line.is_empty(); line.leave()) {
        EXPECT_EQ(line.first(), next++);
    }
    EXPECT_EQ(next, 11);
}

TEST(DelayLine, MakesItemsInPlaceAndLetsThemBeMovedAway) {
    DelayLine<std::unique_ptr<int>, 2> line;
    *line.enter(std::make_unique<int>(1)) = 5;
    const std::unique_ptr<int> taken = std::move(line.first());
    line.leave();
    EXPECT_EQ(*taken, 5);
    EXPECT_TRUE(line.is_empty());
}

}  // namespace
}  // namespace veldra
