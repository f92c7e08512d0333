#include "windows/qt/pixel_canvas.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace veldra {

namespace {

constexpr double fixed_one = 4294967296.0;  // 32 binary places
/// Beyond so many pixels from its start the pattern of a thick line cannot be followed.
constexpr double farthest_pattern = 1e12;
/// A thick line shorter than this, in pixels, is drawn as its ends.
constexpr double shortest_direction = 0.5;

bool contains(const PixelBox& box, const PixelPoint& p) {
    return p.x >= box.xmin && p.x <= box.xmax && p.y >= box.ymin && p.y <= box.ymax;
}

/// The next whole number at or above a value of the size of a picture.
int whole_above(double value) {
    const int truncated = static_cast<int>(value);
    return truncated + (static_cast<double>(truncated) < value ? 1 : 0);
}

/// The line with its longer axis called u and the other v, so that one walk serves both.
struct Walk {
    double u = 0;  ///< a place on the line
    double v = 0;
    double slope = 0;  ///< dv / du, at most 1 in size
    std::int64_t first = 0;
    std::int64_t last = 0;
    std::int64_t u_limit = 0;
    std::int64_t v_limit = 0;
    std::ptrdiff_t u_stride = 0;
    std::ptrdiff_t v_stride = 0;
};

/// Number of pixels from the start pixel, in turn with the pattern's period.
std::int64_t pattern_phase(double start_u, std::int64_t at, int dot) {
    const double steps = std::abs(static_cast<double>(at) - std::floor(start_u));
    return static_cast<std::int64_t>(std::fmod(steps, 2.0 * dot));
}

void walk_line(const PixelCanvas& canvas, Walk walk, double start_u, std::uint32_t colour,
               int dot) {
    walk.first = std::max<std::int64_t>(walk.first, 0);
    walk.last = std::min(walk.last, walk.u_limit - 1);
    if (walk.first > walk.last) {
        return;
    }
    const auto step = static_cast<std::int64_t>(walk.slope * fixed_one);
    const double v0 = walk.v + walk.slope * (static_cast<double>(walk.first) + 0.5 - walk.u);
    // One up and one down again: the conversion rounds towards zero, and v0 is above -1.
    std::int64_t v = static_cast<std::int64_t>((v0 + 1) * fixed_one) - (std::int64_t{1} << 32);
    const auto outside = [&walk](std::int64_t value) {
        return (value >> 32) < 0 || (value >> 32) >= walk.v_limit;
    };
    // The centre of a pixel may lie beyond the edge that the line was cut at.
    while (walk.first <= walk.last && outside(v)) {
        ++walk.first;
        v += step;
    }
    while (walk.first <= walk.last && outside(v + (walk.last - walk.first) * step)) {
        --walk.last;
    }
    std::uint32_t* column = canvas.pixels + walk.first * walk.u_stride;
    if (dot <= 0) {
        for (std::int64_t u = walk.first; u <= walk.last; ++u) {
            column[(v >> 32) * walk.v_stride] = colour;
            column += walk.u_stride;
            v += step;
        }
        return;
    }
    const bool forwards = static_cast<double>(walk.first) >= std::floor(start_u);
    const std::int64_t period = std::int64_t{2} * dot;
    std::int64_t phase = pattern_phase(start_u, walk.first, dot);
    for (std::int64_t u = walk.first; u <= walk.last; ++u) {
        if (phase < dot) {
            column[(v >> 32) * walk.v_stride] = colour;
        }
        if (forwards) {
            phase = phase + 1 == period ? 0 : phase + 1;
        } else {
            phase = phase == 0 ? period - 1 : phase - 1;
        }
        column += walk.u_stride;
        v += step;
    }
}

/// A part of a row, from left to right.
struct RowRange {
    double left = 0;
    double right = -1;
};

/// The strip on both sides of a segment.
class Strip {
 public:
    Strip(const PixelPoint& a, const PixelPoint& b, double half) : a_(a), half_(half) {
        const double dx = b.x - a.x;
        const double dy = b.y - a.y;
        length_ = std::sqrt(dx * dx + dy * dy);
        if (length_ > flat) {
            ux_ = dx / length_;
            uy_ = dy / length_;
            across_x_ = std::abs(uy_) > flat ? 1 / uy_ : 0;
            along_x_ = std::abs(ux_) > flat ? 1 / ux_ : 0;
        }
    }

    /// The part of the row at `y` that lies in the strip.
    [[nodiscard]] RowRange range(double y) const {
        const double dy = y - a_.y;
        RowRange result{-far, far};
        if (across_x_ != 0) {
            const double middle = a_.x + dy * ux_ * across_x_;
            const double reach = half_ * std::abs(across_x_);
            result = {middle - reach, middle + reach};
        } else if (length_ <= flat || std::abs(dy) > half_) {
            return {};
        }
        if (along_x_ != 0) {
            const double start = a_.x - dy * uy_ * along_x_;
            const double end = start + length_ * along_x_;
            result.left = std::max(result.left, std::min(start, end));
            result.right = std::min(result.right, std::max(start, end));
        } else if (dy * uy_ < 0 || dy * uy_ > length_) {
            return {};
        }
        return result;
    }

 private:
    static constexpr double flat = 1e-9;
    static constexpr double far = 1e9;
    PixelPoint a_;
    double half_;
    double length_ = 0;
    double ux_ = 0;
    double uy_ = 0;
    double across_x_ = 0;  ///< x for each pixel across the segment; 0: it runs along the row
    double along_x_ = 0;   ///< x for each pixel along the segment; 0: it stands upright
};

/// Widens a range by the part of a row within `radius` of `p`.
void add_disc(RowRange& range, const PixelPoint& p, double radius, double y) {
    const double square = radius * radius - (y - p.y) * (y - p.y);
    if (square < 0) {
        return;
    }
    const double reach = std::sqrt(square);
    if (range.left > range.right) {
        range = {p.x - reach, p.x + reach};
    } else {
        range.left = std::min(range.left, p.x - reach);
        range.right = std::max(range.right, p.x + reach);
    }
}

enum class Ends { flat, round };

/// The pixels of a row whose centres lie in a range; the range must lie near the picture.
void fill_near(std::uint32_t* line, int width, const RowRange& range, std::uint32_t colour) {
    const double left = std::max(range.left, 0.0);
    const double right = std::min<double>(range.right, width);
    if (left < right) {
        std::uint32_t* const end = line + whole_above(right - 0.5);
        for (std::uint32_t* pixel = line + whole_above(left - 0.5); pixel < end; ++pixel) {
            *pixel = colour;
        }
    }
}

/// The ends must lie near the picture.
void fill_thick(const PixelCanvas& canvas, const PixelPoint& a, const PixelPoint& b, double half,
                std::uint32_t colour, Ends ends) {
    const Strip strip(a, b, half);
    const int first = std::max(whole_above(std::min(a.y, b.y) - half - 0.5), 0);
    const int last = std::min(whole_above(std::max(a.y, b.y) + half - 0.5), canvas.height) - 1;
    std::uint32_t* line = canvas.pixels + first * canvas.stride;
    for (int row = first; row <= last; ++row, line += canvas.stride) {
        const double y = row + 0.5;
        RowRange range = strip.range(y);
        if (ends == Ends::round) {
            add_disc(range, a, half, y);
            add_disc(range, b, half, y);
        }
        fill_near(line, canvas.width, range, colour);
    }
}

/// A line too short for a direction: the discs around its ends.
void fill_discs(const PixelCanvas& canvas, const PixelPoint& a, const PixelPoint& b, double half,
                std::uint32_t colour) {
    const int first = std::max(whole_above(std::min(a.y, b.y) - half - 0.5), 0);
    const int last = std::min(whole_above(std::max(a.y, b.y) + half - 0.5), canvas.height) - 1;
    for (int row = first; row <= last; ++row) {
        RowRange range;
        add_disc(range, a, half, row + 0.5);
        add_disc(range, b, half, row + 0.5);
        fill_near(canvas.pixels + row * canvas.stride, canvas.width, range, colour);
    }
}

/// How much of a pixel the outline and the interior of a circle cover, 0 to 1.
struct CircleCover {
    double outline = 0;
    double fill = 0;
};

CircleCover circle_cover(const CircleStyle& style, double dx, double dy) {
    const double distance = std::hypot(dx, dy);
    const auto within = [distance](double radius) {
        return std::clamp(radius + 0.5 - distance, 0.0, 1.0);
    };
    const double half = style.pen_width / 2.0;
    if (style.dot > 0) {
        const double along = (std::atan2(-dy, dx) + 4 * std::atan(1.0)) * style.radius;
        if (std::fmod(along, 2.0 * style.dot) >= style.dot) {
            return {0, style.filled ? within(style.radius) : 0};
        }
    }
    const double inner = style.radius > half ? within(style.radius - half) : 0;
    return {within(style.radius + half) - inner, style.filled ? inner : 0};
}

/// The two colours of a circle on one pixel, each channel times its cover, alpha on top.
std::uint32_t premultiplied(const CircleStyle& style, const CircleCover& cover) {
    const auto alpha = static_cast<std::uint32_t>(std::lround((cover.outline + cover.fill) * 255));
    const auto channel = [&](unsigned shift) {
        const double value = ((style.outline >> shift) & 0xffU) * cover.outline +
                             ((style.fill >> shift) & 0xffU) * cover.fill;
        return std::min(static_cast<std::uint32_t>(std::lround(value)), alpha) << shift;
    };
    return alpha << 24U | channel(16) | channel(8) | channel(0);
}

void add_premultiplied(std::uint32_t& pixel, std::uint32_t source) {
    const std::uint32_t alpha = source >> 24U;
    if (alpha == 255U) {
        pixel = source;
    } else if (alpha > 0U) {
        const std::uint32_t rest = 256U - (alpha + (alpha >> 7U));
        const std::uint32_t red_blue = ((pixel & 0xff00ffU) * rest >> 8U & 0xff00ffU);
        const std::uint32_t green = ((pixel & 0xff00U) * rest >> 8U & 0xff00U);
        pixel = 0xff000000U | ((source & 0xffffffU) + red_blue + green);
    }
}

/// First and last pixel of a row between two places, within the canvas.
std::pair<int, int> row_pixels(const PixelCanvas& canvas, double left, double right) {
    const double first = std::max(std::floor(left), 0.0);
    const double last = std::min(std::floor(right), canvas.width - 1.0);
    if (!(first <= last)) {
        return {0, -1};
    }
    return {static_cast<int>(first), static_cast<int>(last)};
}

void cover_row(const PixelCanvas& canvas, const PixelPoint& centre, const CircleStyle& style,
               int row, const std::pair<int, int>& range) {
    std::uint32_t* const line = canvas.pixels + row * canvas.stride;
    const double dy = row + 0.5 - centre.y;
    for (int column = range.first; column <= range.second; ++column) {
        const CircleCover cover = circle_cover(style, column + 0.5 - centre.x, dy);
        add_premultiplied(line[column], premultiplied(style, cover));
    }
}

}  // namespace

bool clip_to_box(const PixelBox& box, PixelPoint& a, PixelPoint& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    double from = 0;
    double to = 1;
    const auto cut = [&from, &to](double direction, double room) {
        if (direction == 0) {
            return room >= 0;
        }
        const double at = room / direction;
        if (direction < 0) {
            from = std::max(from, at);
        } else {
            to = std::min(to, at);
        }
        return from <= to;
    };
    if (!cut(-dx, a.x - box.xmin) || !cut(dx, box.xmax - a.x) || !cut(-dy, a.y - box.ymin) ||
        !cut(dy, box.ymax - a.y)) {
        return false;
    }
    const PixelPoint start = a;
    // Far from the box the product is inexact; the clamp keeps the end in the box all the same.
    const auto at = [&](double share) {
        return PixelPoint{std::clamp(start.x + share * dx, box.xmin, box.xmax),
                          std::clamp(start.y + share * dy, box.ymin, box.ymax)};
    };
    if (!contains(box, b)) {
        b = at(to);
    }
    if (!contains(box, a)) {
        a = at(from);
    }
    return true;
}

void fill_row(const PixelCanvas& canvas, int row, double left, double right, std::uint32_t colour) {
    const double first = std::max(std::ceil(left - 0.5), 0.0);
    const double last = std::min(std::ceil(right - 0.5), static_cast<double>(canvas.width));
    if (first < last) {
        std::uint32_t* const line = canvas.pixels + row * canvas.stride;
        std::fill(line + static_cast<int>(first), line + static_cast<int>(last), colour);
    }
}

void draw_thin_line(const PixelCanvas& canvas, PixelPoint a, PixelPoint b, std::uint32_t colour,
                    int dot) {
    const PixelBox box{0, 0, static_cast<double>(canvas.width), static_cast<double>(canvas.height)};
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const PixelPoint start = a;
    const PixelPoint end = b;
    if ((!contains(box, a) || !contains(box, b)) && !clip_to_box(box, a, b)) {
        return;
    }
    const bool steep = std::abs(dy) > std::abs(dx);
    if (is_short(start, end)) {
        for (const PixelPoint& p : {a, b}) {
            if (p.x < canvas.width && p.y < canvas.height) {
                mark_pixel(canvas, p, colour);
            }
        }
        return;
    }
    // From the same end in either direction, so that both give the same pixels.
    const bool swapped = steep ? a.y > b.y : a.x > b.x;
    const PixelPoint& p = swapped ? b : a;
    const PixelPoint& q = swapped ? a : b;
    Walk walk;
    if (steep) {
        walk = {p.y, p.x, dx / dy, 0, 0, canvas.height, canvas.width, canvas.stride, 1};
    } else {
        walk = {p.x, p.y, dy / dx, 0, 0, canvas.width, canvas.height, 1, canvas.stride};
    }
    walk.first = static_cast<std::int64_t>(walk.u);
    walk.last = static_cast<std::int64_t>(steep ? q.y : q.x);
    walk_line(canvas, walk, steep ? start.y : start.x, colour, dot);
}

void draw_thick_line(const PixelCanvas& canvas, PixelPoint a, PixelPoint b, int width,
                     std::uint32_t colour, int dot) {
    const double half = width / 2.0;
    const double reach = half + 1;
    const PixelBox box{-reach, -reach, canvas.width + reach, canvas.height + reach};
    const PixelPoint start = a;
    const double major = std::max(std::abs(b.x - a.x), std::abs(b.y - a.y));
    const double ux = major > 0 ? (b.x - a.x) / major : 0;
    const double uy = major > 0 ? (b.y - a.y) / major : 0;
    if ((!contains(box, a) || !contains(box, b)) && !clip_to_box(box, a, b)) {
        return;
    }
    if (major < shortest_direction) {
        fill_discs(canvas, a, b, half, colour);
        return;
    }
    if (dot <= 0) {
        fill_thick(canvas, a, b, half, colour, Ends::round);
        return;
    }
    const auto along = [&start](const PixelPoint& p) {
        return std::max(std::abs(p.x - start.x), std::abs(p.y - start.y));
    };
    const double period = 2.0 * dot;
    const double end = along(b);
    if (end > farthest_pattern) {
        return;
    }
    const auto first = static_cast<std::int64_t>(along(a) / period);
    const auto last = static_cast<std::int64_t>(end / period);
    for (std::int64_t piece = first; piece <= last; ++piece) {
        const double from = static_cast<double>(piece) * period;
        const double to = std::min(from + dot, major);
        fill_thick(canvas, {start.x + ux * from, start.y + uy * from},
                   {start.x + ux * to, start.y + uy * to}, half, colour, Ends::flat);
    }
}

void draw_circle(const PixelCanvas& canvas, PixelPoint centre, const CircleStyle& style) {
    const double outer = style.radius + style.pen_width / 2.0 + 0.5;
    // Pixels whose centres are no farther than this are wholly interior.
    const double solid = style.radius - style.pen_width / 2.0 - 0.5;
    const double top = std::max(std::floor(centre.y - outer), 0.0);
    const double bottom = std::min(std::floor(centre.y + outer), canvas.height - 1.0);
    if (!(top <= bottom)) {
        return;
    }
    for (int row = static_cast<int>(top); row <= static_cast<int>(bottom); ++row) {
        const double dy = row + 0.5 - centre.y;
        const double outer_square = outer * outer - dy * dy;
        if (outer_square < 0) {
            continue;
        }
        const double out = std::sqrt(outer_square);
        const double in = solid > std::abs(dy) ? std::sqrt(solid * solid - dy * dy) : 0;
        if (in < 1) {
            cover_row(canvas, centre, style, row,
                      row_pixels(canvas, centre.x - out, centre.x + out));
            continue;
        }
        // Pixels whose centres lie in [left, right) are interior; those beside them are weighed.
        const double left = std::ceil(centre.x - in - 0.5);
        const double right = std::ceil(centre.x + in - 0.5);
        cover_row(canvas, centre, style, row, row_pixels(canvas, centre.x - out, left - 1));
        if (style.filled) {
            fill_row(canvas, row, centre.x - in, centre.x + in, style.fill);
        }
        cover_row(canvas, centre, style, row, row_pixels(canvas, right, centre.x + out));
    }
}

CircleSprite::CircleSprite(const CircleStyle& style) : style_(style) {
    reach_ = static_cast<int>(std::ceil(style.radius + style.pen_width / 2.0 + 0.5));
    for (int y = -reach_; y <= reach_; ++y) {
        for (int x = -reach_; x <= reach_; ++x) {
            const std::uint32_t value = premultiplied(style, circle_cover(style, x, y));
            if (value >> 24U == 255U && !runs_.empty() && runs_.back().y == y &&
                runs_.back().end == x && runs_.back().colour == value) {
                ++runs_.back().end;
            } else if (value >> 24U == 255U) {
                runs_.push_back({y, x, x + 1, value});
            } else if (value >> 24U != 0) {
                dots_.push_back({y, x, value});
            }
        }
    }
}

void CircleSprite::draw(const PixelCanvas& canvas, int column, int row) const {
    if (column >= reach_ && column < canvas.width - reach_ && row >= reach_ &&
        row < canvas.height - reach_) {
        std::uint32_t* const middle = canvas.pixels + row * canvas.stride + column;
        for (const Run& run : runs_) {
            std::uint32_t* const line = middle + run.y * canvas.stride;
            for (int x = run.x; x < run.end; ++x) {
                line[x] = run.colour;
            }
        }
        for (const Dot& dot : dots_) {
            add_premultiplied(middle[dot.y * canvas.stride + dot.x], dot.premultiplied);
        }
        return;
    }
    for (const Run& run : runs_) {
        if (row + run.y >= 0 && row + run.y < canvas.height) {
            fill_row(canvas, row + run.y, column + run.x, column + run.end, run.colour);
        }
    }
    for (const Dot& dot : dots_) {
        const int x = column + dot.x;
        const int y = row + dot.y;
        if (x >= 0 && x < canvas.width && y >= 0 && y < canvas.height) {
            add_premultiplied(canvas.pixels[y * canvas.stride + x], dot.premultiplied);
        }
    }
}

}  // namespace veldra
