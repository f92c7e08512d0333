#include "pdf/circle_forms.h"

#include <algorithm>

#include <fmt/format.h>

#include "pdf/arcs.h"

namespace veldra {

namespace {

std::string colour_operator(std::int32_t colour, const char* grey, const char* rgb) {
    const WrittenColour written = written_colour(colour);
    return written.numbers + (written.grey ? grey : rgb) + "\n";
}

std::string circle_content(const CircleLook& look) {
    std::string out =
        fmt::format("{:.3f} w\n", look.pen.width) + colour_operator(look.pen.colour, "G", "RG");
    out += look.pen.dot > 0 ? fmt::format("[{0:.3f} {0:.3f}] 0 d 0 J\n", look.pen.dot)
                            : std::string("[] 0 d 1 J\n");
    if (look.radius == 0) {
        return out + "0 0 m 0 0 l S\n";
    }
    if (look.filled) {
        out += colour_operator(look.fill, "g", "rg");
    }
    const double r = look.radius;
    const UnitArcs& arcs = unit_arcs(r);
    out += fmt::format("{:.2f} 0 m\n", r);
    for (const UnitArc& arc : arcs) {
        out += fmt::format("{:.2f} {:.2f} {:.2f} {:.2f} {:.2f} {:.2f} c\n", arc.x1 * r, arc.y1 * r,
                           arc.x2 * r, arc.y2 * r, arc.x3 * r, arc.y3 * r);
    }
    return out + (look.filled ? "b\n" : "s\n");
}

}  // namespace

WrittenColour written_colour(std::int32_t colour) {
    const auto bits = static_cast<std::uint32_t>(colour);
    const auto share = [](std::uint32_t byte) { return fmt::format("{:.3g} ", byte / 255.0); };
    const std::uint32_t red = bits & 0xffU;
    const std::uint32_t green = bits >> 8U & 0xffU;
    const std::uint32_t blue = bits >> 16U & 0xffU;
    if (red == green && green == blue) {
        return {share(red), true};
    }
    return {share(red) + share(green) + share(blue), false};
}

std::size_t CircleForms::number_of(PdfDocument& document, const CircleLook& look) {
    if (last_ == look) {
        return last_number_;
    }
    const Key key{look.radius,     look.pen.width, look.pen.dot,
                  look.pen.colour, look.filled,    look.filled ? look.fill : 0};
    const auto found = numbers_.find(key);
    if (found == numbers_.end()) {
        const double reach = look.radius + look.pen.width;
        last_number_ = document.add_form({reach, circle_content(look)});
        numbers_.emplace(key, last_number_);
    } else {
        last_number_ = found->second;
    }
    last_ = look;
    return last_number_;
}

}  // namespace veldra
