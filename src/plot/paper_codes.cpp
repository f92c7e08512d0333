#include "plot/paper_codes.h"

#include <algorithm>
#include <array>

namespace veldra {

namespace {

constexpr PaperCode inches(std::int16_t code, double width, double height) {
    return {code, width * 25.4, height * 25.4};
}

// Codes 12 and 13 are the B sizes of the list of printers, which differ from those of the norm.
constexpr std::array<PaperCode, 50> papers{{
    inches(1, 8.5, 11),       inches(2, 8.5, 11),     inches(3, 11, 17),
    inches(4, 17, 11),        inches(5, 8.5, 14),     inches(6, 5.5, 8.5),
    inches(7, 7.5, 10.5),     {8, 297, 420},          {9, 210, 297},
    {10, 210, 297},           {11, 148, 210},         {12, 250, 354},
    {13, 182, 257},           inches(14, 8.5, 13),    {15, 215, 275},
    inches(16, 10, 14),       inches(17, 11, 17),     inches(18, 8.5, 11),
    inches(19, 3.875, 8.875), inches(20, 4.125, 9.5), inches(21, 4.5, 10.375),
    inches(22, 4.5, 11),      inches(23, 5, 11.5),    inches(24, 17, 22),
    inches(25, 22, 34),       inches(26, 34, 44),     {27, 110, 220},
    {28, 162, 229},           {29, 324, 458},         {30, 229, 324},
    {31, 114, 162},           {32, 114, 229},         {33, 250, 353},
    {34, 176, 250},           {35, 176, 125},         {36, 110, 230},
    inches(37, 3.875, 7.5),   inches(38, 3.625, 6.5), inches(39, 14.875, 11),
    inches(40, 8.5, 12),      inches(41, 8.5, 13),    {268, 210, 297},
    {269, 297, 420},          {270, 420, 594},        {271, 594, 841},
    {272, 841, 1189},         {273, 250, 353},        {274, 353, 500},
    {275, 500, 707},          {276, 707, 1000},
}};

constexpr std::int16_t a4_code = 268;

}  // namespace

std::span<const PaperCode> known_papers() {
    return papers;
}

std::optional<PaperCode> paper_of_code(std::int16_t code) {
    const auto found =
        std::lower_bound(papers.begin(), papers.end(), code,
                         [](const PaperCode& p, std::int16_t c) { return p.code < c; });
    return found != papers.end() && found->code == code ? std::optional(*found) : std::nullopt;
}

std::optional<PaperCode> paper_of_name(std::string_view name) {
    if (name.size() != 2 || (name[0] != 'A' && name[0] != 'a') || name[1] < '0' || name[1] > '4') {
        return std::nullopt;
    }
    // The two small ones have codes that every driver knows.
    switch (name[1]) {
        case '4':
            return paper_of_code(9);
        case '3':
            return paper_of_code(8);
        default:
            return paper_of_code(static_cast<std::int16_t>(a4_code + ('4' - name[1])));
    }
}

}  // namespace veldra
