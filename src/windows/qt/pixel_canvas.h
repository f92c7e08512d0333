#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veldra {

/// Pixels that the drawing routines below write to: 0xffRRGGBB, rows from the top. Pixel (i, j)
/// covers [i, i + 1) x [j, j + 1), its centre is (i + 0.5, j + 0.5).
struct PixelCanvas {
    std::uint32_t* pixels = nullptr;
    std::ptrdiff_t stride = 0;  ///< pixels from one row to the next
    int width = 0;
    int height = 0;
};

/// A place in pixels from the upper left corner.
struct PixelPoint {
    double x = 0;
    double y = 0;
};

/// A rectangle in pixels.
struct PixelBox {
    double xmin = 0;
    double ymin = 0;
    double xmax = 0;
    double ymax = 0;
};

/// Cuts a segment to a rectangle (Liang and Barsky, ACM Transactions on Graphics 3, 1984); false
/// if it lies outside. Ends inside stay as they are. Coordinates must be finite.
bool clip_to_box(const PixelBox& box, PixelPoint& a, PixelPoint& b);

/// Fills the pixels of a row whose centres lie in [left, right).
void fill_row(const PixelCanvas& canvas, int row, double left, double right, std::uint32_t colour);

/// Sets the pixel at a place, which must lie in the picture.
inline void mark_pixel(const PixelCanvas& canvas, const PixelPoint& p, std::uint32_t colour) {
    canvas.pixels[static_cast<int>(p.y) * canvas.stride + static_cast<int>(p.x)] = colour;
}

/// A thin line is too short for a direction: it is the pixels of its ends, which are neighbours.
inline bool is_short(const PixelPoint& a, const PixelPoint& b) {
    return b.x - a.x < 1 && a.x - b.x < 1 && b.y - a.y < 1 && a.y - b.y < 1;
}

/// A line one pixel wide, both end pixels included; the same pixels in either direction.
/// With `dot` above 0, `dot` pixels on and `dot` pixels off in turn, counted from `a` along the
/// longer axis. Coordinates must be finite, of any size.
void draw_thin_line(const PixelCanvas& canvas, PixelPoint a, PixelPoint b, std::uint32_t colour,
                    int dot = 0);

/// A line of `width` pixels with round ends. With `dot` above 0: pieces with flat ends, `dot`
/// pixels on and off in turn from `a`, counted along the longer axis.
void draw_thick_line(const PixelCanvas& canvas, PixelPoint a, PixelPoint b, int width,
                     std::uint32_t colour, int dot = 0);

/// How a circle looks.
struct CircleStyle {
    double radius = 0;  ///< of the middle of the outline, pixels
    int pen_width = 1;
    std::uint32_t outline = 0;
    std::uint32_t fill = 0;
    bool filled = true;
    int dot = 0;  ///< 0: solid outline, else pixels on and off in turn

    bool operator==(const CircleStyle&) const = default;
};

/// An antialiased circle of any size at any place.
void draw_circle(const PixelCanvas& canvas, PixelPoint centre, const CircleStyle& style);

/// A small circle around the centre of a pixel, kept for repeated use.
class CircleSprite {
 public:
    explicit CircleSprite(const CircleStyle& style);
    /// Puts the circle around the centre of pixel (column, row).
    void draw(const PixelCanvas& canvas, int column, int row) const;
    [[nodiscard]] const CircleStyle& style() const { return style_; }

 private:
    /// Opaque pixels of one row, from x to the one before `end`.
    struct Run {
        int y;
        int x;
        int end;
        std::uint32_t colour;
    };
    /// A pixel that the circle covers in part.
    struct Dot {
        int y;
        int x;
        std::uint32_t premultiplied;
    };
    CircleStyle style_;
    int reach_ = 0;  ///< pixels from the centre to the farthest pixel
    std::vector<Run> runs_;
    std::vector<Dot> dots_;
};

}  // namespace veldra
