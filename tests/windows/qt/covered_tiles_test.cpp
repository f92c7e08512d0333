#include "windows/qt/covered_tiles.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

using veldra::CoveredTiles;
using veldra::PixelCanvas;

namespace {

/// A picture whose pixels all differ. With tiles of 64 pixels, 150 x 100 are three columns, the
/// last of 22 pixels, and two rows, the last of 36.
class CoveredTilesTest : public testing::Test {
 protected:
    CoveredTilesTest() : pixels_(paper(150, 100)) {}

    static std::vector<std::uint32_t> paper(int width, int height) {
        std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) *
                                          static_cast<std::size_t>(height));
        std::generate(pixels.begin(), pixels.end(), [n = 0U]() mutable { return ++n; });
        return pixels;
    }
    PixelCanvas canvas() { return {pixels_.data(), 150, 150, 100}; }
    std::uint32_t& at(int x, int y) { return pixels_[static_cast<std::size_t>(y * 150 + x)]; }
    void paint_all() { std::fill(pixels_.begin(), pixels_.end(), 0U); }

    std::vector<std::uint32_t> pixels_;
    CoveredTiles tiles_;
};

TEST_F(CoveredTilesTest, TheTilesThatABoxTouchesAreGivenBack) {
    tiles_.keep(canvas(), 63, 10, 64, 20);
    EXPECT_EQ(tiles_.kept(), 2U);
    paint_all();
    tiles_.give_back(canvas());
    // Two tiles of the upper row: 128 of 150 columns, 64 of 100 rows.
    EXPECT_EQ(at(0, 0), 1U);
    EXPECT_EQ(at(127, 63), 63U * 150 + 128);
    EXPECT_EQ(at(128, 0), 0U);
    EXPECT_EQ(at(0, 64), 0U);
    EXPECT_EQ(tiles_.kept(), 0U);
}

TEST_F(CoveredTilesTest, TilesAtTheRightAndLowerEdgeEndThere) {
    tiles_.keep(canvas(), 140, 90, 149, 99);
    EXPECT_EQ(tiles_.kept(), 1U);
    paint_all();
    tiles_.give_back(canvas());
    EXPECT_EQ(at(149, 99), 150U * 100);
    EXPECT_EQ(at(128, 64), 64U * 150 + 129);
    EXPECT_EQ(at(127, 99), 0U);
    EXPECT_EQ(at(0, 99), 0U);
}

TEST_F(CoveredTilesTest, ABoxAroundThePictureKeepsAllOfIt) {
    const auto whole = pixels_;
    tiles_.keep(canvas(), -1000, -1000, 1000, 1000);
    EXPECT_EQ(tiles_.kept(), 6U);
    paint_all();
    tiles_.give_back(canvas());
    EXPECT_EQ(pixels_, whole);
}

TEST_F(CoveredTilesTest, ABoxBesideThePictureKeepsNothing) {
    tiles_.keep(canvas(), -20, 10, -1, 20);
    tiles_.keep(canvas(), 150, 10, 160, 20);
    tiles_.keep(canvas(), 10, -20, 20, -1);
    tiles_.keep(canvas(), 10, 100, 20, 120);
    EXPECT_EQ(tiles_.kept(), 0U);
}

TEST_F(CoveredTilesTest, ATileIsKeptAsItWasBeforeTheFirstPainting) {
    tiles_.keep(canvas(), 0, 0, 5, 5);
    at(3, 3) = 0;
    tiles_.keep(canvas(), 0, 0, 5, 5);
    EXPECT_EQ(tiles_.kept(), 1U);
    tiles_.give_back(canvas());
    EXPECT_EQ(at(3, 3), 3U * 150 + 4);
}

TEST_F(CoveredTilesTest, WhatIsForgottenIsNotGivenBack) {
    tiles_.keep(canvas(), 0, 0, 5, 5);
    tiles_.forget();
    at(3, 3) = 0;
    tiles_.give_back(canvas());
    EXPECT_EQ(at(3, 3), 0U);
    // And is kept anew.
    tiles_.keep(canvas(), 0, 0, 5, 5);
    at(3, 3) = 7;
    tiles_.give_back(canvas());
    EXPECT_EQ(at(3, 3), 0U);
}

TEST_F(CoveredTilesTest, APictureOfAnotherSizeIsAnotherPicture) {
    tiles_.keep(canvas(), 0, 0, 149, 99);
    auto other = paper(65, 64);
    const auto whole = other;
    const PixelCanvas small{other.data(), 65, 65, 64};
    tiles_.give_back(small);
    EXPECT_EQ(other, whole);
    tiles_.keep(small, 64, 0, 64, 0);
    EXPECT_EQ(tiles_.kept(), 1U);
    std::fill(other.begin(), other.end(), 0U);
    tiles_.give_back(small);
    EXPECT_EQ(other[64], 65U);
    EXPECT_EQ(other[63], 0U);
}

}  // namespace
