#include "windows/qt/pixel_canvas.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using veldra::CircleSprite;
using veldra::CircleStyle;
using veldra::PixelCanvas;
using veldra::PixelPoint;

namespace {

constexpr std::uint32_t white = 0xffffffffU;
constexpr std::uint32_t black = 0xff000000U;
constexpr std::uint32_t red = 0xffff0000U;

/// A small picture with a guard row and column around it that nothing may touch.
class Sheet {
 public:
    Sheet(int width, int height)
        : width_(width),
          height_(height),
          pixels_(static_cast<std::size_t>(width + 2) * static_cast<std::size_t>(height + 2),
                  guard) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                at(x, y) = white;
            }
        }
    }

    std::uint32_t& at(int x, int y) {
        return pixels_[static_cast<std::size_t>(y + 1) * static_cast<std::size_t>(width_ + 2) +
                       static_cast<std::size_t>(x + 1)];
    }

    PixelCanvas canvas() { return {&at(0, 0), width_ + 2, width_, height_}; }

    /// Rows of "#" (not white) and "." (white).
    std::vector<std::string> rows() {
        std::vector<std::string> result;
        for (int y = 0; y < height_; ++y) {
            std::string row;
            for (int x = 0; x < width_; ++x) {
                row += at(x, y) == white ? '.' : '#';
            }
            result.push_back(row);
        }
        return result;
    }

    [[nodiscard]] int painted() {
        int count = 0;
        for (const std::string& row : rows()) {
            count += static_cast<int>(std::count(row.begin(), row.end(), '#'));
        }
        return count;
    }

    bool guard_is_whole() {
        for (int y = -1; y <= height_; ++y) {
            for (int x = -1; x <= width_; ++x) {
                const bool inside = x >= 0 && x < width_ && y >= 0 && y < height_;
                if (!inside && at(x, y) != guard) {
                    return false;
                }
            }
        }
        return true;
    }

 private:
    static constexpr std::uint32_t guard = 0x12345678U;
    int width_;
    int height_;
    std::vector<std::uint32_t> pixels_;
};

using testing::ElementsAre;

TEST(ThinLine, HorizontalLineHasBothEndPixels) {
    Sheet sheet(6, 3);
    draw_thin_line(sheet.canvas(), {1.5, 1.5}, {4.5, 1.5}, black);
    EXPECT_THAT(sheet.rows(), ElementsAre("......",  //
                                          ".####.",  //
                                          "......"));
}

TEST(ThinLine, VerticalLineHasBothEndPixels) {
    Sheet sheet(3, 5);
    draw_thin_line(sheet.canvas(), {1.5, 3.9}, {1.5, 1.1}, black);
    EXPECT_THAT(sheet.rows(), ElementsAre("...",  //
                                          ".#.",  //
                                          ".#.",  //
                                          ".#.",  //
                                          "..."));
}

TEST(ThinLine, DiagonalLineStepsOncePerColumn) {
    Sheet sheet(5, 5);
    draw_thin_line(sheet.canvas(), {0.5, 4.5}, {4.5, 0.5}, black);
    EXPECT_THAT(sheet.rows(), ElementsAre("....#",  //
                                          "...#.",  //
                                          "..#..",  //
                                          ".#...",  //
                                          "#...."));
}

TEST(ThinLine, FlatLineRoundsAtThePixelCentres) {
    // y at the centres 0.5, 1.5, ...: 0.5, 0.75, 1.0, 1.25, 1.5, 1.75, 2.0, 2.25, 2.5
    Sheet sheet(9, 3);
    draw_thin_line(sheet.canvas(), {0.5, 0.5}, {8.5, 2.5}, black);
    EXPECT_THAT(sheet.rows(), ElementsAre("##.......",  //
                                          "..####...",  //
                                          "......###"));
}

TEST(ThinLine, SamePixelsInBothDirections) {
    for (int i = 0; i < 200; ++i) {
        const PixelPoint a{std::fmod(i * 7.31, 40.0), std::fmod(i * 3.77, 30.0)};
        const PixelPoint b{std::fmod(i * 5.93 + 11, 40.0), std::fmod(i * 9.13 + 5, 30.0)};
        Sheet there(40, 30);
        Sheet back(40, 30);
        draw_thin_line(there.canvas(), a, b, black);
        draw_thin_line(back.canvas(), b, a, black);
        EXPECT_EQ(there.rows(), back.rows()) << i;
        EXPECT_GE(there.painted(), 1);
    }
}

TEST(ThinLine, LineThroughAPlaceContinuesWithoutAKink) {
    // The two halves of a line give the pixels of the whole line.
    Sheet whole(100, 40);
    Sheet halves(100, 40);
    const PixelPoint a{3.2, 5.7};
    const PixelPoint b{95.8, 33.1};
    const PixelPoint middle{(a.x + b.x) / 2, (a.y + b.y) / 2};
    draw_thin_line(whole.canvas(), a, b, black);
    draw_thin_line(halves.canvas(), a, middle, black);
    draw_thin_line(halves.canvas(), middle, b, black);
    EXPECT_EQ(whole.rows(), halves.rows());
}

TEST(ThinLine, ZeroLengthIsOnePixel) {
    Sheet sheet(3, 3);
    draw_thin_line(sheet.canvas(), {1.9, 1.1}, {1.9, 1.1}, black);
    EXPECT_EQ(sheet.painted(), 1);
    EXPECT_EQ(sheet.at(1, 1), black);
}

TEST(ThinLine, ShorterThanAPixelMarksItsEnds) {
    Sheet sheet(4, 4);
    draw_thin_line(sheet.canvas(), {1.9, 1.9}, {2.1, 2.1}, black);
    EXPECT_EQ(sheet.painted(), 2);
    EXPECT_EQ(sheet.at(1, 1), black);
    EXPECT_EQ(sheet.at(2, 2), black);
}

TEST(ThinLine, DottedPatternRunsFromTheStart) {
    Sheet sheet(12, 2);
    draw_thin_line(sheet.canvas(), {0.5, 0.5}, {11.5, 0.5}, black, 3);
    draw_thin_line(sheet.canvas(), {11.5, 1.5}, {1.5, 1.5}, black, 3);
    EXPECT_THAT(sheet.rows(), ElementsAre("###...###...",  //
                                          "...###...###"));
}

TEST(ThinLine, DottedPatternKeepsItsPlaceWhenTheStartIsFarOutside) {
    Sheet sheet(12, 2);
    // 600 000 pixels before the edge: a whole number of periods of six.
    draw_thin_line(sheet.canvas(), {-599999.5, 0.5}, {11.5, 0.5}, black, 3);
    draw_thin_line(sheet.canvas(), {-600000.5, 1.5}, {11.5, 1.5}, black, 3);
    EXPECT_EQ(sheet.rows()[0], "###...###...");
    EXPECT_EQ(sheet.rows()[1], "##...###...#");
}

TEST(ThinLine, ClippedLineHasThePixelsOfTheWholeLine) {
    // A window of 30 x 20 at (40, 30) on a sheet of 120 x 90.
    for (int i = 0; i < 300; ++i) {
        const PixelPoint a{std::fmod(i * 17.31, 120.0), std::fmod(i * 23.77, 90.0)};
        const PixelPoint b{std::fmod(i * 45.93 + 61, 120.0), std::fmod(i * 29.13 + 45, 90.0)};
        Sheet whole(120, 90);
        Sheet window(30, 20);
        draw_thin_line(whole.canvas(), a, b, black);
        draw_thin_line(window.canvas(), {a.x - 40, a.y - 30}, {b.x - 40, b.y - 30}, black);
        std::vector<std::string> part;
        for (int y = 30; y < 50; ++y) {
            part.push_back(whole.rows()[static_cast<std::size_t>(y)].substr(40, 30));
        }
        EXPECT_EQ(window.rows(), part) << i;
        EXPECT_TRUE(window.guard_is_whole());
    }
}

TEST(ThinLine, HugeCoordinatesStayInsideThePicture) {
    const std::vector<double> places{-3e38, -1e18, -1e9, -40000, -1, 0, 5, 10, 40000, 1e9, 3e38};
    for (const int dot : {0, 3}) {
        for (const double x1 : places) {
            for (const double y1 : places) {
                for (const double x2 : places) {
                    for (const double y2 : places) {
                        Sheet sheet(10, 8);
                        draw_thin_line(sheet.canvas(), {x1, y1}, {x2, y2}, black, dot);
                        draw_thick_line(sheet.canvas(), {x1, y1}, {x2, y2}, 3, black, dot);
                        ASSERT_TRUE(sheet.guard_is_whole())
                            << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2;
                    }
                }
            }
        }
    }
}

TEST(ThinLine, CrossingFromFarOutsideFillsTheRow) {
    Sheet sheet(10, 5);
    draw_thin_line(sheet.canvas(), {-1e9, 2.5}, {1e9, 2.5}, black);
    EXPECT_EQ(sheet.rows()[2], "##########");
    EXPECT_EQ(sheet.painted(), 10);
}

TEST(ThickLine, HorizontalLineIsAsThickAsItsPen) {
    Sheet sheet(12, 7);
    draw_thick_line(sheet.canvas(), {3.5, 3.5}, {8.5, 3.5}, 3, black);
    // Three rows; the round ends reach one pixel further on the middle row.
    EXPECT_THAT(sheet.rows(), ElementsAre("............",  //
                                          "............",  //
                                          "..########..",  //
                                          "..########..",  //
                                          "..########..",  //
                                          "............",  //
                                          "............"));
}

TEST(ThickLine, EvenPenCoversWholePixels) {
    Sheet sheet(8, 10);
    draw_thick_line(sheet.canvas(), {4.0, 2.0}, {4.0, 8.0}, 2, black);
    for (int y = 2; y < 8; ++y) {
        EXPECT_EQ(sheet.rows()[static_cast<std::size_t>(y)], "...##...") << y;
    }
}

TEST(ThickLine, DiagonalLineIsAsWideInEveryRow) {
    Sheet sheet(60, 60);
    draw_thick_line(sheet.canvas(), {5, 5}, {55, 55}, 5, black);
    // 5 pixels across a slope of 45 degrees are 5 * sqrt(2) = 7.07 along a row.
    for (int y = 15; y < 45; ++y) {
        const std::string row = sheet.rows()[static_cast<std::size_t>(y)];
        const auto count = std::count(row.begin(), row.end(), '#');
        EXPECT_TRUE(count == 7 || count == 8) << y << ' ' << count;
        EXPECT_EQ(row.rfind('#') - row.find('#') + 1, static_cast<std::size_t>(count));
    }
}

TEST(ThickLine, ZeroLengthIsADisc) {
    Sheet sheet(9, 9);
    draw_thick_line(sheet.canvas(), {4.5, 4.5}, {4.5, 4.5}, 5, black);
    EXPECT_THAT(sheet.rows(), ElementsAre(".........",  //
                                          ".........",  //
                                          "...###...",  //
                                          "..#####..",  //
                                          "..#####..",  //
                                          "..#####..",  //
                                          "...###...",  //
                                          ".........",  //
                                          "........."));
}

TEST(ThickLine, DottedPiecesAreAsLongAsTheirGaps) {
    Sheet sheet(24, 4);
    draw_thick_line(sheet.canvas(), {0, 2}, {24, 2}, 2, black, 6);
    EXPECT_EQ(sheet.rows()[1], "######......######......");
    EXPECT_EQ(sheet.rows()[2], "######......######......");
    EXPECT_EQ(sheet.painted(), 24);
}

TEST(ThickLine, EndsOutsideDoNotShow) {
    Sheet sheet(10, 10);
    draw_thick_line(sheet.canvas(), {-100, 5}, {1e7, 5}, 4, black);
    for (int y = 0; y < 10; ++y) {
        EXPECT_EQ(sheet.rows()[static_cast<std::size_t>(y)],
                  y >= 3 && y < 7 ? "##########" : "..........");
    }
}

TEST(Circle, SpriteIsSymmetricInAllEightDirections) {
    for (const double radius : {1.0, 2.0, 3.0, 4.0, 6.5, 10.0}) {
        Sheet sheet(41, 41);
        CircleSprite({radius, 1, black, red, true, 0}).draw(sheet.canvas(), 20, 20);
        for (int y = -20; y <= 20; ++y) {
            for (int x = -20; x <= 20; ++x) {
                const std::uint32_t value = sheet.at(20 + x, 20 + y);
                EXPECT_EQ(value, sheet.at(20 - x, 20 + y));
                EXPECT_EQ(value, sheet.at(20 + x, 20 - y));
                EXPECT_EQ(value, sheet.at(20 + y, 20 + x));
            }
        }
    }
}

TEST(Circle, OutlineAndInteriorHaveTheirColours) {
    Sheet sheet(21, 21);
    CircleSprite({6.0, 1, black, red, true, 0}).draw(sheet.canvas(), 10, 10);
    EXPECT_EQ(sheet.at(10, 10), red);
    EXPECT_EQ(sheet.at(13, 10), red);
    EXPECT_EQ(sheet.at(16, 10), black);
    EXPECT_EQ(sheet.at(10, 4), black);
    EXPECT_EQ(sheet.at(18, 10), white);
    EXPECT_EQ(sheet.at(15, 15), white);  // at a distance of 7.07, half a pixel beyond the outline
}

TEST(Circle, BigCircleIsRound) {
    Sheet sheet(201, 201);
    draw_circle(sheet.canvas(), {100.5, 100.5}, {80.0, 3, black, red, true, 0});
    for (int y = 0; y <= 200; ++y) {
        for (int x = 0; x <= 200; ++x) {
            const double distance = std::hypot(x - 100, y - 100);
            if (distance <= 78.0) {
                ASSERT_EQ(sheet.at(x, y), red) << x << ' ' << y;
            } else if (distance >= 79.0 && distance <= 81.0) {
                ASSERT_EQ(sheet.at(x, y), black) << x << ' ' << y;
            } else if (distance >= 82.0) {
                ASSERT_EQ(sheet.at(x, y), white) << x << ' ' << y;
            }
        }
    }
}

TEST(Circle, SpriteAndBigCircleAgree) {
    Sheet sprite(61, 61);
    Sheet big(61, 61);
    const CircleStyle style{20.0, 2, black, red, true, 0};
    CircleSprite(style).draw(sprite.canvas(), 30, 30);
    draw_circle(big.canvas(), {30.5, 30.5}, style);
    for (int y = 0; y < 61; ++y) {
        for (int x = 0; x < 61; ++x) {
            ASSERT_EQ(sprite.at(x, y), big.at(x, y)) << x << ' ' << y;
        }
    }
}

TEST(Circle, UnfilledCircleLeavesItsInterior) {
    Sheet sheet(101, 101);
    draw_circle(sheet.canvas(), {50.5, 50.5}, {40.0, 1, black, red, false, 0});
    EXPECT_EQ(sheet.at(50, 50), white);
    EXPECT_EQ(sheet.at(90, 50), black);
}

TEST(Circle, DottedOutlineIsHalfAsLong) {
    Sheet with_solid(121, 121);
    Sheet with_dots(121, 121);
    draw_circle(with_solid.canvas(), {60.5, 60.5}, {50.0, 1, black, red, false, 0});
    draw_circle(with_dots.canvas(), {60.5, 60.5}, {50.0, 1, black, red, false, 3});
    EXPECT_NEAR(with_dots.painted() / static_cast<double>(with_solid.painted()), 0.5, 0.06);
}

TEST(Circle, ClipsAtEveryEdgeAndForHugeSizes) {
    const std::vector<double> places{-3e38, -1e9, -3, 0, 4.5, 9, 12, 1e9, 3e38};
    const std::vector<double> radii{0, 0.3, 4, 15, 1e4, 1e9, 3e38};
    for (const double x : places) {
        for (const double y : places) {
            for (const double radius : radii) {
                Sheet sheet(9, 9);
                draw_circle(sheet.canvas(), {x, y}, {radius, 2, black, red, true, 0});
                ASSERT_TRUE(sheet.guard_is_whole()) << x << ' ' << y << ' ' << radius;
            }
        }
    }
    Sheet sheet(9, 9);
    const CircleSprite sprite({4, 1, black, red, true, 0});
    for (const int x : {-5, -1, 0, 8, 9, 13}) {
        for (const int y : {-5, -1, 0, 8, 9, 13}) {
            sprite.draw(sheet.canvas(), x, y);
        }
    }
    EXPECT_TRUE(sheet.guard_is_whole());
    EXPECT_EQ(sheet.at(0, 0), red);
}

TEST(Circle, AHugeCircleAroundThePictureFillsIt) {
    Sheet sheet(10, 10);
    draw_circle(sheet.canvas(), {5, 5}, {1e6, 1, black, red, true, 0});
    EXPECT_EQ(sheet.painted(), 100);
    EXPECT_EQ(sheet.at(0, 9), red);
}

TEST(ClipToBox, LeavesEndsInsideAlone) {
    PixelPoint a{1, 2};
    PixelPoint b{20, 2};
    ASSERT_TRUE(veldra::clip_to_box({0, 0, 10, 10}, a, b));
    EXPECT_EQ(a.x, 1);
    EXPECT_EQ(b.x, 10);
    EXPECT_EQ(b.y, 2);
    PixelPoint c{-5, -1};
    PixelPoint d{20, -1};
    EXPECT_FALSE(veldra::clip_to_box({0, 0, 10, 10}, c, d));
    // So far away that the place of the far end is lost in rounding: both ends come to the box.
    PixelPoint e{-3e38, -3e38};
    PixelPoint f{-1e9, -1e9};
    if (veldra::clip_to_box({0, 0, 10, 10}, e, f)) {
        EXPECT_GE(std::min({e.x, e.y, f.x, f.y}), 0);
        EXPECT_LE(std::max({e.x, e.y, f.x, f.y}), 10);
    }
}

}  // namespace
