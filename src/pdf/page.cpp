#include "pdf/page.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <fmt/format.h>

#include "drawing/geometry.h"
#include "pdf/arcs.h"

namespace veldra {

namespace {

constexpr double units_per_millimetre = 1000;
constexpr double units_per_point = 25400.0 / 72;
constexpr double dot_pixels = 3;
/// A path that grows without end is slow to show.
constexpr int longest_path = 64;

double pen_width(std::int16_t pixels, double pixel) {
    return std::clamp<double>(pixels, 1, widest_pen) * pixel * units_per_millimetre;
}

/// What of a text comes to stand on paper.
std::string without_silent_bytes(std::string_view text) {
    std::string shown;
    for (const char c : text) {
        if (!is_silent(static_cast<unsigned char>(c))) {
            shown += c;
        }
    }
    return shown;
}

}  // namespace

PdfPage::PdfPage(PdfDocument& document, CircleForms& circles, const PdfPaper& paper,
                 const SheetTitle& title)
    : document_(document), circles_(circles), out_(document.content()), paper_(paper) {
    const double across = paper.margin_across * units_per_millimetre;
    const double up = paper.margin_up * units_per_millimetre;
    area_ = {across, up, paper.size.width * units_per_millimetre - across,
             paper.size.height * units_per_millimetre - up};
    const double reach = pen_width(widest_pen, paper.pixel) + 10 * units_per_millimetre;
    near_ = {area_.left - reach, area_.bottom - reach, area_.right + reach, area_.top + reach};
    scale_millimetres();
    pen_.width = pen_width(1, paper.pixel);
    told_pen_ = pen_;
    document.begin_page(paper.size, title);
    put(written({area_.left, area_.bottom}));
    put(written({area_.right - area_.left, area_.top - area_.bottom}));
    out_.text("re W n\n1 J 1 j 0 G 0 g ");
    out_.real(pen_.width);
    out_.text("w");
    out_.end_line();
}

void PdfPage::finish() {
    end_path();
    if (open_layer_) {
        out_.text("EMC");
        out_.end_line();
    }
    document_.end_page();
}

void PdfPage::Scale(double left, double top, double right, double bottom) {
    per_unit_x_ = (area_.right - area_.left) / (right - left);
    per_unit_y_ = (area_.top - area_.bottom) / (top - bottom);
    left_ = area_.left - left * per_unit_x_;
    bottom_ = area_.bottom - bottom * per_unit_y_;
}

void PdfPage::scale_millimetres() {
    per_unit_x_ = units_per_millimetre;
    per_unit_y_ = -units_per_millimetre;
    left_ = area_.left;
    bottom_ = area_.top;
}

std::optional<TargetBox> PdfPage::visible_box() const {
    const double reach = pen_width(widest_pen, paper_.pixel) / 2;
    const double x1 = (area_.left - reach - left_) / per_unit_x_;
    const double x2 = (area_.right + reach - left_) / per_unit_x_;
    const double y1 = (area_.bottom - reach - bottom_) / per_unit_y_;
    const double y2 = (area_.top + reach - bottom_) / per_unit_y_;
    return TargetBox{std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
}

PdfPage::WrittenPlace PdfPage::written(const Place& place) {
    return {static_cast<std::int32_t>(place.x < 0 ? place.x - 0.5 : place.x + 0.5),
            static_cast<std::int32_t>(place.y < 0 ? place.y - 0.5 : place.y + 0.5)};
}

bool PdfPage::is_number(const Place& place) {
    return std::isfinite(place.x) && std::isfinite(place.y);
}

bool PdfPage::touches(const Box& box, const Box& other, double reach) {
    return box.right + reach >= other.left && box.left - reach <= other.right &&
           box.top + reach >= other.bottom && box.bottom - reach <= other.top;
}

TargetBox PdfPage::on_paper(const TargetBox& box) const {
    const Place a = to_paper(box.xmin, box.ymin);
    const Place b = to_paper(box.xmax, box.ymax);
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

bool PdfPage::lies_near(const Box& box) const {
    return box.left >= near_.left && box.right <= near_.right && box.bottom >= near_.bottom &&
           box.top <= near_.top;
}

void PdfPage::begin_layer(PageLayer layer) {
    if (layer_ != layer) {
        layer_ = layer;
        settled_ = false;
    }
}

void PdfPage::DrawStyle(std::int16_t style) {
    const double dot = style == 2 ? dot_pixels * paper_.pixel * units_per_millimetre : 0;
    if (pen_.dot != dot) {
        pen_.dot = dot;
        settled_ = false;
    }
}

void PdfPage::DrawWidth(std::int16_t width) {
    const double wanted = pen_width(width, paper_.pixel);
    if (pen_.width != wanted) {
        pen_.width = wanted;
        settled_ = false;
    }
}

void PdfPage::ForeColor(std::int32_t colour) {
    if (pen_.colour != shade(colour)) {
        pen_.colour = shade(colour);
        settled_ = false;
    }
}

void PdfPage::put(const WrittenPlace& place) {
    out_.whole(place.x);
    out_.whole(place.y);
}

void PdfPage::end_path() {
    if (path_segments_ > 0) {
        out_.text("S");
        out_.end_line();
        path_segments_ = 0;
    }
}

void PdfPage::prepare() {
    end_path();
    if (open_layer_ != layer_) {
        if (open_layer_) {
            out_.text("EMC ");
        }
        out_.text(fmt::format("/OC /L{} BDC", static_cast<int>(*layer_)));
        out_.end_line();
        open_layer_ = layer_;
    }
}

void PdfPage::write_colour(std::int32_t colour, const char* grey_operator,
                           const char* rgb_operator) {
    const WrittenColour written = written_colour(colour);
    out_.text(written.numbers);
    out_.text(written.grey ? grey_operator : rgb_operator);
    out_.end_line();
}

void PdfPage::settle_pen() {
    prepare();
    if (told_pen_.colour != pen_.colour) {
        write_colour(pen_.colour, "G", "RG");
    }
    if (told_pen_.width != pen_.width) {
        out_.real(pen_.width);
        out_.text("w");
        out_.end_line();
    }
    if (told_pen_.dot != pen_.dot) {
        if (pen_.dot > 0) {
            out_.text("[");
            out_.real(pen_.dot);
            out_.real(pen_.dot);
            out_.text("] 0 d 0 J");
        } else {
            out_.text("[] 0 d 1 J");
        }
        out_.end_line();
    }
    told_pen_ = pen_;
    settled_ = true;
}

void PdfPage::settle_fill(std::int32_t colour) {
    if (told_fill_ != colour) {
        write_colour(colour, "g", "rg");
        told_fill_ = colour;
    }
}

void PdfPage::Line(float x1, float y1, float x2, float y2) {
    const Place a = to_paper(static_cast<double>(x1), static_cast<double>(y1));
    position_ = to_paper(static_cast<double>(x2), static_cast<double>(y2));
    stroke(a, position_, 0);
}

void PdfPage::LinePart(float x1, float y1, float x2, float y2, const LineCut& cut) {
    const Place a = to_paper(static_cast<double>(x1), static_cast<double>(y1));
    const Place b = to_paper(static_cast<double>(x2), static_cast<double>(y2));
    position_ = b;
    const double unit = std::abs(per_unit_x_);
    const TargetBox window = on_paper(cut.window);
    const CutLine line =
        lengthened({{a.x, a.y, b.x, b.y}, cut.begun * unit, cut.rest * unit}, window, pen_.width);
    const Segment& piece = line.piece;
    if (!is_number({piece.ax, piece.ay}) || !is_number({piece.bx, piece.by})) {
        return;
    }
    settle_pen();
    begin_clip(window);
    stroke({piece.ax, piece.ay}, {piece.bx, piece.by}, line.begun);
    end_clip();
}

void PdfPage::MoveTo(float x, float y) {
    position_ = to_paper(static_cast<double>(x), static_cast<double>(y));
}

void PdfPage::stroke(Place a, Place b, double begun) {
    if (!is_number(a) || !is_number(b) || !std::isfinite(begun)) {
        return;
    }
    const Box box{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
    if (!may_show(box, pen_.width)) {
        return;
    }
    if (!lies_near(box)) {
        const ClippedSegment clipped =
            ClipSegment({near_.left, near_.bottom, near_.right, near_.top}, {a.x, a.y, b.x, b.y});
        if (clipped.result == 0) {
            return;
        }
        const Segment& part = clipped.segment;
        begun += std::hypot(part.ax - a.x, part.ay - a.y);
        a = {part.ax, part.ay};
        b = {part.bx, part.by};
    }
    if (!settled_) {
        settle_pen();
    }
    const WrittenPlace from = written(a);
    const WrittenPlace to = written(b);
    const bool runs_on = begun > 0 && pen_.dot > 0;
    if (runs_on) {
        end_path();
        out_.text("[");
        out_.real(pen_.dot);
        out_.real(pen_.dot);
        out_.text("] ");
        out_.real(std::fmod(begun, 2 * pen_.dot));
        out_.text("d ");
    }
    // Dots start anew with each line.
    if (path_segments_ == 0 || pen_.dot > 0 || from != path_end_) {
        put(from);
        out_.text("m ");
    }
    put(to);
    out_.text("l");
    out_.end_line();
    path_end_ = to;
    if (++path_segments_ == longest_path || runs_on) {
        end_path();
    }
    if (runs_on) {
        told_pen_.dot = -1;
        settled_ = false;
    }
}

void PdfPage::Circle(float x, float y, float radius) {
    const Place centre = to_paper(static_cast<double>(x), static_cast<double>(y));
    const double reach = static_cast<double>(radius) * std::abs(per_unit_x_);
    const Box box{centre.x - reach, centre.y - reach, centre.x + reach, centre.y + reach};
    constexpr double largest = 1e8;
    if (!is_number(centre) || !(reach >= 0 && reach < largest) || !may_show(box, pen_.width) ||
        std::abs(centre.x) > largest || std::abs(centre.y) > largest) {
        return;
    }
    // Layer and path are settled in the same way as for lines; the pen belongs to the form.
    if (open_layer_ != layer_ || path_segments_ > 0) {
        prepare();
    }
    const CircleLook look{static_cast<std::int32_t>(std::lround(reach)), pen_, filled_, fill_};
    const std::size_t form = circles_.number_of(document_, look);
    out_.text("q 1 0 0 1 ");
    put(written(centre));
    out_.text("cm/C");
    out_.whole(static_cast<std::int64_t>(form));
    out_.text("Do Q");
    out_.end_line();
}

void PdfPage::begin_clip(const TargetBox& window) {
    const WrittenPlace from = written({std::clamp(window.xmin, near_.left, near_.right),
                                       std::clamp(window.ymin, near_.bottom, near_.top)});
    const WrittenPlace to = written({std::clamp(window.xmax, near_.left, near_.right),
                                     std::clamp(window.ymax, near_.bottom, near_.top)});
    out_.text("q ");
    put(from);
    put({to.x - from.x, to.y - from.y});
    out_.text("re W n ");
}

void PdfPage::end_clip() {
    end_path();
    out_.text("Q");
    out_.end_line();
}

void PdfPage::write_arcs(const Place& centre, const Place& a, const Place& b, double reach) {
    // From its own centre the numbers are short.
    out_.text("1 0 0 1 ");
    put(written(centre));
    out_.text("cm ");
    put(written(a));
    out_.text("m ");
    const auto point = [&](double u, double v) {
        put(written({u * a.x + v * b.x, u * a.y + v * b.y}));
    };
    for (const UnitArc& arc : unit_arcs(reach)) {
        point(arc.x1, arc.y1);
        point(arc.x2, arc.y2);
        point(arc.x3, arc.y3);
        out_.text("c ");
    }
    out_.text("s ");
}

/// Branches 0 and 1 are the whole curve; the others would only draw it again.
void PdfPage::write_outline(const EllipseCurve& curve, const Box& shown) {
    const auto at = [&](std::size_t branch, std::size_t n) {
        const EllipseCurve::Point p = curve.at(branch, n);
        return to_paper(p.x - curve.origin_x, p.y - curve.origin_y);
    };
    const auto segment = [&](const Place& a, const Place& b) {
        const Box box{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x),
                      std::max(a.y, b.y)};
        if (touches(box, shown, pen_.width)) {
            stroke(a, b, 0);
        }
    };
    constexpr std::size_t last = EllipseAngles::count - 1;
    for (std::size_t n = last; n > 0; --n) {
        segment(at(0, n), at(0, n - 1));
    }
    for (std::size_t n = 0; n < last; ++n) {
        segment(at(1, n), at(1, n + 1));
    }
}

void PdfPage::draw_ellipse(const EllipseCurve& curve, const TargetBox* window) {
    const Place centre = to_paper(curve.x - curve.origin_x, curve.y - curve.origin_y);
    const Place a{curve.a * curve.sine * per_unit_x_, curve.a * curve.cosine * per_unit_y_};
    const Place b{curve.b * curve.cosine * per_unit_x_, -curve.b * curve.sine * per_unit_y_};
    const double larger = std::max(std::hypot(a.x, a.y), std::hypot(b.x, b.y));
    if (!is_number(centre) || !std::isfinite(larger)) {
        return;
    }
    position_ = {centre.x + a.x, centre.y + a.y};
    const double across = std::hypot(a.x, b.x);
    const double up = std::hypot(a.y, b.y);
    const Box box{centre.x - across, centre.y - up, centre.x + across, centre.y + up};
    if (!may_show(box, pen_.width)) {
        return;
    }
    settle_pen();
    if (window != nullptr) {
        begin_clip(*window);
    }
    // A curve that is traced runs inside of the true one by 5e-4 of its radius: large ones are not
    // the same as true ones to 0.02 mm.
    constexpr double largest_arcs = 20 * units_per_millimetre;
    if (larger <= largest_arcs) {
        out_.text(window == nullptr ? "q " : "");
        write_arcs(centre, a, b, larger);
        end_clip();
        return;
    }
    if (window == nullptr) {
        write_outline(curve, area_);
        return;
    }
    write_outline(curve, {window->xmin, window->ymin, window->xmax, window->ymax});
    end_clip();
}

void PdfPage::Ellipse(const EllipseCurve& curve) {
    draw_ellipse(curve, nullptr);
}

bool PdfPage::EllipsePart(const EllipseCurve& curve, const TargetBox& window) {
    const TargetBox shown = on_paper(window);
    draw_ellipse(curve, &shown);
    return true;
}

void PdfPage::Polygon(std::span<const PagePoint> corners, std::int32_t colour) {
    if (corners.size() < 3) {
        return;
    }
    constexpr double far = 1e8;
    Box box{far, far, -far, -far};
    for (const PagePoint& corner : corners) {
        const Place place = to_paper(corner.x, corner.y);
        if (!(std::abs(place.x) < far && std::abs(place.y) < far)) {
            return;
        }
        box = {std::min(box.left, place.x), std::min(box.bottom, place.y),
               std::max(box.right, place.x), std::max(box.top, place.y)};
    }
    if (!may_show(box, 0)) {
        return;
    }
    prepare();
    settle_fill(shade(colour));
    bool first = true;
    for (const PagePoint& corner : corners) {
        put(written(to_paper(corner.x, corner.y)));
        out_.text(first ? "m " : "l ");
        first = false;
    }
    out_.text("f");
    out_.end_line();
}

const PdfPage::TextFont& PdfPage::text_font(const FontSpec& font) {
    if (text_font_.face == nullptr || text_font_.spec != font) {
        const std::size_t number = document_.font_number(font);
        text_font_ = {font, number, document_.font(number).face, font.points * units_per_point};
    }
    return text_font_;
}

void PdfPage::print_line(std::string_view text, const TextFont& font, const Place& base,
                         double cosine, double sine, std::int32_t colour) {
    const double width = font.face->width(text) * font.size;
    const double reach = width + 2 * font.size;
    if (text.find_first_not_of(' ') == std::string_view::npos || !is_number(base) ||
        !std::isfinite(reach) || !may_show({base.x, base.y, base.x, base.y}, reach)) {
        return;
    }
    const std::string shown = without_silent_bytes(text);
    if (shown.empty()) {
        return;
    }
    prepare();
    settle_fill(shade(colour));
    if (told_size_ != font.size || told_font_ != font.number) {
        out_.text("/F");
        out_.whole(static_cast<std::int64_t>(font.number));
        out_.real(font.size);
        out_.text("Tf");
        out_.end_line();
        told_size_ = font.size;
        told_font_ = font.number;
    }
    UsedBytes& used = document_.font(font.number).used;
    for (const char c : shown) {
        used.set(static_cast<unsigned char>(c));
    }
    out_.text("BT ");
    if (sine == 0 && cosine == 1) {
        put(written(base));
        out_.text("Td");
    } else {
        out_.text(fmt::format("{:.7f} {:.7f} {:.7f} {:.7f} ", cosine, sine, -sine, cosine));
        put(written(base));
        out_.text("Tm");
    }
    out_.string(shown);
    out_.text("Tj ET");
    out_.end_line();
    if (font.spec.underline != 0) {
        const double middle = -font.face->underline_depth() * font.size;
        const double half = font.face->underline_thickness() * font.size / 2;
        const auto corner = [&](double along, double up) {
            put(written(
                {base.x + along * cosine - up * sine, base.y + along * sine + up * cosine}));
        };
        corner(0, middle - half);
        out_.text("m ");
        corner(width, middle - half);
        out_.text("l ");
        corner(width, middle + half);
        out_.text("l ");
        corner(0, middle + half);
        out_.text("l f");
        out_.end_line();
    }
}

void PdfPage::print_lines(std::string_view text, const Place& corner, const FontSpec& font,
                          std::int32_t colour) {
    const TextFont& looked_up = text_font(font);
    const FaceMetrics& metrics = looked_up.face->metrics();
    const double line_height =
        static_cast<double>(metrics.ascent + metrics.descent) * looked_up.size;
    double y = corner.y - static_cast<double>(metrics.ascent) * looked_up.size;
    while (true) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        print_line(line, looked_up, {corner.x, y}, 1, 0, colour);
        if (end == std::string_view::npos) {
            return;
        }
        text.remove_prefix(end + 1);
        y -= line_height;
    }
}

void PdfPage::Print(std::string_view text, double x, double y, const FontSpec& font,
                    std::int32_t colour) {
    print_lines(text, to_paper(x, y), font, colour);
}

void PdfPage::LabelPlaced(LabelArray /*array*/, std::int32_t /*index*/, const Label& label,
                          const FontSpec& font, std::int32_t colour) {
    if (label.visible) {
        print_lines(label.caption,
                    to_paper(static_cast<double>(label.left), static_cast<double>(label.top)), font,
                    colour);
    }
}

void PdfPage::TextRotated(std::string_view text, std::int32_t escapement, std::int32_t align,
                          const FontSpec& font) {
    constexpr std::int32_t right_aligned = 2;
    const TextFont& looked_up = text_font(font);
    const double angle = escapement * std::numbers::pi / 1800;
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    const double along =
        (align & right_aligned) != 0 ? -looked_up.face->width(text) * looked_up.size : 0;
    const double up = static_cast<double>(looked_up.face->metrics().descent) * looked_up.size;
    print_line(text, looked_up,
               {position_.x + along * cosine - up * sine, position_.y + along * sine + up * cosine},
               cosine, sine, pen_.colour);
}

}  // namespace veldra
