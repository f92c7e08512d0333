#include "windows/qt/label_painter.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "windows/qt/qt_font.h"

namespace veldra {

namespace {

constexpr double points_to_logical_pixels = 96.0 / 72.0;
constexpr std::size_t kept_fonts = 8;

/// The quads of an image with the pen's place at (x, y).
GlyphMasks::Mask to_mask(const QImage& image, int pen_x, int pen_y) {
    GlyphMasks::Mask mask;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(line[x]) == 0) {
                continue;
            }
            if (mask.quads.empty() || mask.quads.back().y != y - pen_y ||
                x - pen_x - mask.quads.back().x >= 4) {
                mask.quads.push_back({x - pen_x, y - pen_y, {}});
            }
            const auto alpha = static_cast<std::uint16_t>(qAlpha(line[x]));
            GlyphMasks::Quad& quad = mask.quads.back();
            quad.share[static_cast<std::size_t>(x - pen_x - quad.x)] =
                static_cast<std::uint16_t>(alpha + (alpha >> 7U));
        }
    }
    if (!mask.quads.empty()) {
        const auto by_x = [](const auto& a, const auto& b) { return a.x < b.x; };
        mask.left = std::min_element(mask.quads.begin(), mask.quads.end(), by_x)->x;
        mask.right = std::max_element(mask.quads.begin(), mask.quads.end(), by_x)->x + 3;
        mask.top = mask.quads.front().y;
        mask.bottom = mask.quads.back().y;
    }
    return mask;
}

/// A letter's image reaches this far to the left of the pen's place and below it, and twice as far
/// to the right and up, device pixels.
int mask_margin(double size) {
    return static_cast<int>(std::ceil(size)) + 2;
}

GlyphMasks::Mask render_mask(const FontSpec& spec, double ratio, unsigned char byte, int phase) {
    FontSpec plain = spec;
    plain.underline = 0;  // drawn below the whole text
    QFont font = text_font(plain);
    // Upright letters with firm horizontal strokes; the widths stay those of the outlines.
    font.setHintingPreference(QFont::PreferVerticalHinting);
    const int margin = mask_margin(spec.points * points_to_logical_pixels * ratio);
    QImage image(3 * margin, 3 * margin, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    set_logical_resolution(image, ratio);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(Qt::black);
    const char c = static_cast<char>(byte);
    painter.drawText(QPointF(margin + phase / static_cast<double>(GlyphMasks::phases), 2 * margin),
                     to_qstring(std::string_view(&c, 1)));
    painter.end();

    return to_mask(image, margin, 2 * margin);
}

/// One pixel with a share of a colour.
void mix_pixel(std::uint32_t& pixel, std::uint32_t colour, std::uint32_t share) {
    const std::uint32_t rest = 256U - share;
    const std::uint32_t red_blue =
        ((pixel & 0xff00ffU) * rest + (colour & 0xff00ffU) * share) >> 8U & 0xff00ffU;
    const std::uint32_t green =
        ((pixel & 0xff00U) * rest + (colour & 0xff00U) * share) >> 8U & 0xff00U;
    pixel = 0xff000000U | red_blue | green;
}

void mix_quad(std::uint32_t* pixels, std::uint32_t colour,
              const std::array<std::uint16_t, 4>& share) {
#ifdef __SSE2__
    // Eight channels at a time, each in 16 bits; the sums stay below 65 536.
    const __m128i zero = _mm_setzero_si128();
    const __m128i ink = _mm_unpacklo_epi8(_mm_set1_epi32(static_cast<int>(colour)), zero);
    const __m128i whole = _mm_set1_epi16(256);
    auto* const place = reinterpret_cast<__m128i*>(pixels);
    const __m128i paper = _mm_loadu_si128(place);
    __m128i shares = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(share.data()));
    shares = _mm_unpacklo_epi16(shares, shares);
    const __m128i share01 = _mm_shuffle_epi32(shares, _MM_SHUFFLE(1, 1, 0, 0));
    const __m128i share23 = _mm_shuffle_epi32(shares, _MM_SHUFFLE(3, 3, 2, 2));
    const auto mix = [&](__m128i under, __m128i part) {
        return _mm_srli_epi16(_mm_add_epi16(_mm_mullo_epi16(under, _mm_sub_epi16(whole, part)),
                                            _mm_mullo_epi16(ink, part)),
                              8);
    };
    _mm_storeu_si128(place, _mm_packus_epi16(mix(_mm_unpacklo_epi8(paper, zero), share01),
                                             mix(_mm_unpackhi_epi8(paper, zero), share23)));
#else
    for (std::size_t i = 0; i < share.size(); ++i) {
        mix_pixel(pixels[i], colour, share[i]);
    }
#endif
}

void blit(const PixelCanvas& canvas, const GlyphMasks::Mask& mask, int x, int y,
          std::uint32_t colour) {
    if (x + mask.left >= 0 && x + mask.right < canvas.width && y + mask.top >= 0 &&
        y + mask.bottom < canvas.height) {
        std::uint32_t* const origin = canvas.pixels + y * canvas.stride + x;
        for (const GlyphMasks::Quad& quad : mask.quads) {
            mix_quad(origin + quad.y * canvas.stride + quad.x, colour, quad.share);
        }
        return;
    }
    for (const GlyphMasks::Quad& quad : mask.quads) {
        const int row = y + quad.y;
        for (std::size_t i = 0; i < quad.share.size(); ++i) {
            const int column = x + quad.x + static_cast<int>(i);
            if (column >= 0 && column < canvas.width && row >= 0 && row < canvas.height) {
                mix_pixel(canvas.pixels[row * canvas.stride + column], colour, quad.share[i]);
            }
        }
    }
}

/// Letters of less than a pixel, and those that are higher than the picture, say nothing.
bool is_legible(const FontSpec& font, const QImage& image, double device_pixel_ratio) {
    const double size = font.points * points_to_logical_pixels * device_pixel_ratio;
    return size >= 1 && size <= image.height();
}

bool is_blank(const std::string& caption) {
    return caption.find_first_not_of(' ') == std::string::npos;
}

/// Everything that painting one label needs beside the label.
struct Brush {
    PixelCanvas canvas;
    GlyphMasks& glyphs;
    std::uint32_t colour;
    CoveredTiles* covered;
};

/// Keeps what a line of text is going to cover.
void keep_beneath_line(const Brush& brush, std::string_view text, double x, int baseline) {
    double advance = 0;
    for (const char c : text) {
        advance += static_cast<double>(brush.glyphs.face().advance[static_cast<unsigned char>(c)]);
    }
    const GlyphMasks::Reach reach = brush.glyphs.reach();
    const double last = std::floor(x + advance * brush.glyphs.size()) + 1;
    brush.covered->keep(
        brush.canvas, static_cast<int>(std::floor(x)) - reach.left_and_down,
        baseline - reach.right_and_up,
        static_cast<int>(std::min<double>(last, brush.canvas.width)) + reach.right_and_up,
        baseline + std::max(reach.left_and_down, brush.glyphs.underline_bottom()));
}

/// One line of text from (x, baseline) on.
void paint_line(const Brush& brush, std::string_view text, double x, int baseline) {
    if (brush.covered != nullptr) {
        keep_beneath_line(brush, text, x, baseline);
    }
    double pen = x;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const double quarters = std::floor(pen * GlyphMasks::phases + 0.5);
        const int column = static_cast<int>(std::floor(quarters / GlyphMasks::phases));
        const int phase = static_cast<int>(quarters) - column * GlyphMasks::phases;
        blit(brush.canvas, brush.glyphs.mask(byte, phase), column, baseline, brush.colour);
        pen += static_cast<double>(brush.glyphs.face().advance[byte]) * brush.glyphs.size();
    }
    if (brush.glyphs.font().underline != 0) {
        const int first = std::max(baseline + brush.glyphs.underline_top(), 0);
        const int last =
            std::min(baseline + brush.glyphs.underline_bottom(), brush.canvas.height - 1);
        for (int row = first; row <= last; ++row) {
            fill_row(brush.canvas, row, x, pen, brush.colour);
        }
    }
}

void paint_label(const Brush& brush, const std::string& caption, double x, double top) {
    const FaceMetrics& face = brush.glyphs.face();
    const double line_height =
        static_cast<double>(face.ascent + face.descent) * brush.glyphs.size();
    const double ascent = static_cast<double>(face.ascent) * brush.glyphs.size();
    std::string_view rest = caption;
    for (int line = 0;; ++line) {
        const std::size_t end = rest.find('\n');
        std::string_view text = rest.substr(0, end);
        if (!text.empty() && text.back() == '\r') {
            text.remove_suffix(1);
        }
        paint_line(brush, text, x,
                   static_cast<int>(std::floor(top + line * line_height + ascent + 0.5)));
        if (end == std::string_view::npos) {
            return;
        }
        rest.remove_prefix(end + 1);
    }
}

}  // namespace

GlyphMasks::GlyphMasks(const FontSpec& font, const FaceMetrics& face, double device_pixel_ratio)
    : font_(font),
      face_(face),
      ratio_(device_pixel_ratio),
      size_(font.points * points_to_logical_pixels * device_pixel_ratio) {
    QImage image(1, 1, QImage::Format_RGB32);
    set_logical_resolution(image, ratio_);
    const QFontMetricsF metrics(text_font(font), &image);
    const double thickness = std::max(metrics.lineWidth(), 1.0);
    underline_top_ = std::max(1, static_cast<int>(std::lround(metrics.underlinePos())));
    underline_bottom_ = underline_top_ + static_cast<int>(std::lround(thickness)) - 1;
}

GlyphMasks::Reach GlyphMasks::reach() const {
    const int margin = mask_margin(size_);
    return {margin, 2 * margin};
}

const GlyphMasks::Mask& GlyphMasks::mask(unsigned char byte, int phase) {
    std::unique_ptr<Mask>& mask =
        masks_[static_cast<std::size_t>(byte) * phases + static_cast<std::size_t>(phase)];
    if (!mask) {
        mask = std::make_unique<Mask>(render_mask(font_, ratio_, byte, phase));
    }
    return *mask;
}

GlyphMasks& LabelPainter::masks(const FontSpec& font, double device_pixel_ratio) {
    const auto fits = [&](const GlyphMasks& kept) {
        return kept.device_pixel_ratio() == device_pixel_ratio && kept.font() == font;
    };
    if (last_ != nullptr && fits(*last_)) {
        return *last_;
    }
    for (const auto& kept : fonts_) {
        if (fits(*kept)) {
            last_ = kept.get();
            return *last_;
        }
    }
    if (fonts_.size() == kept_fonts) {
        fonts_.erase(fonts_.begin());
    }
    fonts_.push_back(
        std::make_unique<GlyphMasks>(font, measurer_.face_metrics(font), device_pixel_ratio));
    last_ = fonts_.back().get();
    return *last_;
}

void LabelPainter::paint(QImage& image, const PictureMapping& mapping, const Label& label,
                         const FontSpec& font, std::int32_t colour, CoveredTiles* covered) {
    if (!label.visible) {
        return;
    }
    if (!is_legible(font, image, mapping.device_pixel_ratio)) {
        return;
    }
    GlyphMasks& glyphs = masks(font, mapping.device_pixel_ratio);
    const PixelPoint corner = mapping.to_pixel(label.left, label.top);
    const double width = static_cast<double>(label.width) * mapping.pixels_per_metre_x;
    const double height = static_cast<double>(label.height) * mapping.pixels_per_metre_y;
    // A letter may lean over its label's box a little.
    const double overhang = glyphs.size();
    if (corner.x - overhang < image.width() && corner.x + width + overhang > 0 &&
        corner.y - overhang < image.height() && corner.y + height + overhang > 0 &&
        !is_blank(label.caption)) {
        paint_label({canvas_of(image), glyphs, to_pixel_colour(colour), covered}, label.caption,
                    corner.x, corner.y);
    }
}

}  // namespace veldra
