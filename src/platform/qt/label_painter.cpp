#include "platform/qt/label_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/qt/qt_font.h"

namespace veldra {

namespace {

constexpr double points_to_logical_pixels = 96.0 / 72.0;
constexpr std::size_t kept_fonts = 8;

GlyphMasks::Mask render_mask(const FontSpec& spec, double ratio, unsigned char byte, int phase) {
    FontSpec plain = spec;
    plain.underline = 0;  // drawn below the whole text
    QFont font = text_font(plain);
    // Upright letters with firm horizontal strokes; the widths stay those of the outlines.
    font.setHintingPreference(QFont::PreferVerticalHinting);
    const double size = spec.points * points_to_logical_pixels * ratio;
    const int margin = static_cast<int>(std::ceil(size)) + 2;
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

    GlyphMasks::Mask mask;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(line[x]) != 0) {
                mask.dots.push_back({static_cast<std::int16_t>(x - margin),
                                     static_cast<std::int16_t>(y - 2 * margin),
                                     static_cast<std::uint32_t>(qAlpha(line[x]))});
            }
        }
    }
    if (!mask.dots.empty()) {
        const auto by_x = [](const auto& a, const auto& b) { return a.x < b.x; };
        mask.left = std::min_element(mask.dots.begin(), mask.dots.end(), by_x)->x;
        mask.right = std::max_element(mask.dots.begin(), mask.dots.end(), by_x)->x;
        mask.top = mask.dots.front().y;
        mask.bottom = mask.dots.back().y;
    }
    return mask;
}

void blit(const PixelCanvas& canvas, const GlyphMasks::Mask& mask, int x, int y,
          std::uint32_t colour) {
    if (x + mask.left >= 0 && x + mask.right < canvas.width && y + mask.top >= 0 &&
        y + mask.bottom < canvas.height) {
        std::uint32_t* const origin = canvas.pixels + y * canvas.stride + x;
        for (const GlyphMasks::Dot& dot : mask.dots) {
            blend_pixel(origin[dot.y * canvas.stride + dot.x], colour, dot.alpha);
        }
        return;
    }
    for (const GlyphMasks::Dot& dot : mask.dots) {
        const int column = x + dot.x;
        const int row = y + dot.y;
        if (column >= 0 && column < canvas.width && row >= 0 && row < canvas.height) {
            blend_pixel(canvas.pixels[row * canvas.stride + column], colour, dot.alpha);
        }
    }
}

bool is_blank(const std::string& caption) {
    return caption.find_first_not_of(' ') == std::string::npos;
}

/// Everything that painting one label needs beside the label.
struct Brush {
    PixelCanvas canvas;
    const FaceMetrics& face;
    GlyphMasks& glyphs;
    double size;  ///< of the font, device pixels
    std::uint32_t colour;
};

/// One line of text from (x, baseline) on.
void paint_line(const Brush& brush, std::string_view text, double x, int baseline) {
    double pen = x;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const double quarters = std::floor(pen * GlyphMasks::phases + 0.5);
        const int column = static_cast<int>(std::floor(quarters / GlyphMasks::phases));
        const int phase = static_cast<int>(quarters) - column * GlyphMasks::phases;
        blit(brush.canvas, brush.glyphs.mask(byte, phase), column, baseline, brush.colour);
        pen += static_cast<double>(brush.face.advance[byte]) * brush.size;
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
    const double line_height =
        static_cast<double>(brush.face.ascent + brush.face.descent) * brush.size;
    const double ascent = static_cast<double>(brush.face.ascent) * brush.size;
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

GlyphMasks::GlyphMasks(const FontSpec& font, double device_pixel_ratio)
    : font_(font), ratio_(device_pixel_ratio) {
    QImage image(1, 1, QImage::Format_RGB32);
    set_logical_resolution(image, ratio_);
    const QFontMetricsF metrics(text_font(font), &image);
    const double thickness = std::max(metrics.lineWidth(), 1.0);
    underline_top_ = std::max(1, static_cast<int>(std::lround(metrics.underlinePos())));
    underline_bottom_ = underline_top_ + static_cast<int>(std::lround(thickness)) - 1;
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
    for (const auto& kept : fonts_) {
        if (kept->font() == font && kept->device_pixel_ratio() == device_pixel_ratio) {
            return *kept;
        }
    }
    if (fonts_.size() == kept_fonts) {
        fonts_.erase(fonts_.begin());
    }
    fonts_.push_back(std::make_unique<GlyphMasks>(font, device_pixel_ratio));
    return *fonts_.back();
}

void LabelPainter::paint(QImage& image, const PictureMapping& mapping,
                         const std::vector<Label>& labels, const FontSpec& font,
                         std::int32_t colour) {
    const Brush brush{{reinterpret_cast<std::uint32_t*>(image.bits()), image.bytesPerLine() / 4,
                       image.width(), image.height()},
                      measurer_.face_metrics(font),
                      masks(font, mapping.device_pixel_ratio),
                      font.points * points_to_logical_pixels * mapping.device_pixel_ratio,
                      to_pixel_colour(colour)};
    // A letter may lean over its label's box a little.
    const double overhang = brush.size;
    for (std::size_t i = 1; i < labels.size(); ++i) {
        const Label& label = labels[i];
        if (!label.visible) {
            continue;
        }
        const PixelPoint corner = mapping.to_pixel(label.left, label.top);
        const double width = static_cast<double>(label.width) * mapping.pixels_per_metre_x;
        const double height = static_cast<double>(label.height) * mapping.pixels_per_metre_y;
        if (corner.x - overhang < image.width() && corner.x + width + overhang > 0 &&
            corner.y - overhang < image.height() && corner.y + height + overhang > 0 &&
            !is_blank(label.caption)) {
            paint_label(brush, label.caption, corner.x, corner.y);
        }
    }
}

}  // namespace veldra
