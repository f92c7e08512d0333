#pragma once

#include <QImage>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "model/label.h"
#include "model/text_measurer.h"
#include "windows/qt/covered_tiles.h"
#include "windows/qt/pixel_canvas.h"
#include "windows/qt/raster_target.h"

namespace veldra {

/// The letters of one font at one resolution as masks, made when first needed.
class GlyphMasks {
 public:
    /// Four pixels of a row, of which the letter touches one at least; counted from the pen's
    /// place on the base line.
    struct Quad {
        int x;
        int y;
        std::array<std::uint16_t, 4> share;  ///< of the colour, 0 to 256
    };
    struct Mask {
        std::vector<Quad> quads;
        int left = 0;  ///< box of the quads
        int right = 0;
        int top = 0;
        int bottom = 0;
    };
    /// A letter starts at one of this many places within a pixel.
    static constexpr int phases = 4;
    /// The whole of a letter lies so near to the pen's place, pixels.
    struct Reach {
        int left_and_down;
        int right_and_up;
    };

    GlyphMasks(const FontSpec& font, const FaceMetrics& face, double device_pixel_ratio);
    const Mask& mask(unsigned char byte, int phase);
    [[nodiscard]] const FontSpec& font() const { return font_; }
    [[nodiscard]] const FaceMetrics& face() const { return face_; }
    /// Of the font, device pixels.
    [[nodiscard]] double size() const { return size_; }
    [[nodiscard]] double device_pixel_ratio() const { return ratio_; }
    [[nodiscard]] Reach reach() const;
    /// Rows of an underline, counted down from the base line.
    [[nodiscard]] int underline_top() const { return underline_top_; }
    [[nodiscard]] int underline_bottom() const { return underline_bottom_; }

 private:
    FontSpec font_;
    const FaceMetrics& face_;
    double ratio_;
    double size_;
    int underline_top_ = 0;
    int underline_bottom_ = 0;
    std::array<std::unique_ptr<Mask>, std::size_t{256} * phases> masks_;
};

/// Paints labels over a picture, fast enough for a hundred thousand of them at each redraw.
class LabelPainter {
 public:
    explicit LabelPainter(TextMeasurer& measurer) : measurer_(measurer) {}

    /// Paints a label if it is visible. `image` is Format_RGB32; colour 0x00BBGGRR. What it covers
    /// is kept in `covered`, if given. Fastest when many labels of one font follow each other.
    void paint(QImage& image, const PictureMapping& mapping, const Label& label,
               const FontSpec& font, std::int32_t colour, CoveredTiles* covered = nullptr);

 private:
    GlyphMasks& masks(const FontSpec& font, double device_pixel_ratio);

    TextMeasurer& measurer_;
    std::vector<std::unique_ptr<GlyphMasks>> fonts_;
    GlyphMasks* last_ = nullptr;
};

}  // namespace veldra
