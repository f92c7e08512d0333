#include "plot/paper_codes.h"

#include <algorithm>

#include <gmock/gmock.h>

namespace veldra {
namespace {

void expect_paper(const std::optional<PaperCode>& paper, std::int16_t code, double width,
                  double height) {
    ASSERT_TRUE(paper) << code;
    EXPECT_EQ(paper->code, code);
    EXPECT_NEAR(paper->width, width, 0.001) << code;
    EXPECT_NEAR(paper->height, height, 0.001) << code;
}

TEST(PaperCodes, WellKnownSizes) {
    expect_paper(paper_of_code(1), 1, 215.9, 279.4);
    expect_paper(paper_of_code(4), 4, 431.8, 279.4);
    expect_paper(paper_of_code(8), 8, 297, 420);
    expect_paper(paper_of_code(9), 9, 210, 297);
    expect_paper(paper_of_code(11), 11, 148, 210);
    expect_paper(paper_of_code(35), 35, 176, 125);
    expect_paper(paper_of_code(41), 41, 215.9, 330.2);
    expect_paper(paper_of_code(268), 268, 210, 297);
    expect_paper(paper_of_code(269), 269, 297, 420);
    expect_paper(paper_of_code(270), 270, 420, 594);
    expect_paper(paper_of_code(271), 271, 594, 841);
    expect_paper(paper_of_code(272), 272, 841, 1189);
    expect_paper(paper_of_code(273), 273, 250, 353);
    expect_paper(paper_of_code(274), 274, 353, 500);
    expect_paper(paper_of_code(275), 275, 500, 707);
    expect_paper(paper_of_code(276), 276, 707, 1000);
}

TEST(PaperCodes, EveryCodeOfTheListAndNoOther) {
    for (std::int16_t code = -1; code <= 400; ++code) {
        const bool listed = (code >= 1 && code <= 41) || (code >= 268 && code <= 276);
        EXPECT_EQ(paper_of_code(code).has_value(), listed) << code;
    }
    EXPECT_EQ(known_papers().size(), 50U);
    EXPECT_TRUE(std::is_sorted(known_papers().begin(), known_papers().end(),
                               [](const auto& a, const auto& b) { return a.code < b.code; }));
}

TEST(PaperCodes, Names) {
    expect_paper(paper_of_name("A4"), 9, 210, 297);
    expect_paper(paper_of_name("a3"), 8, 297, 420);
    expect_paper(paper_of_name("A2"), 270, 420, 594);
    expect_paper(paper_of_name("A1"), 271, 594, 841);
    expect_paper(paper_of_name("A0"), 272, 841, 1189);
    for (const char* name : {"", "A", "A5", "B4", "A44", " A4", "4A"}) {
        EXPECT_FALSE(paper_of_name(name)) << name;
    }
}

}  // namespace
}  // namespace veldra
