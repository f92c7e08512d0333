#pragma once

#include <QImage>
#include <map>
#include <memory>
#include <tuple>
#include <vector>

#include "model/target.h"
#include "windows/qt/pixel_canvas.h"

class QPainter;

namespace veldra {

/// How metres of ground in a picture become pixels. Ground has its origin at the lower left
/// corner of the picture.
struct PictureMapping {
    double pixels_per_metre_x = 1;
    double pixels_per_metre_y = 1;
    double height = 0;              ///< pixels
    double device_pixel_ratio = 1;  ///< device pixels a logical pixel

    [[nodiscard]] PixelPoint to_pixel(float x, float y) const {
        return {static_cast<double>(x) * pixels_per_metre_x,
                height - static_cast<double>(y) * pixels_per_metre_y};
    }
};

/// The mapping that spreads `rw_span` by `hw_span` metres over the whole image.
[[nodiscard]] PictureMapping picture_mapping(const QImage& image, double rw_span, double hw_span,
                                             double device_pixel_ratio);

/// Gives an image the resolution at which a font's points come out right: 96 dots per inch for
/// each logical pixel.
void set_logical_resolution(QImage& image, double device_pixel_ratio);

/// The pixels of an image (Format_RGB32), as long as it lives and is not copied.
[[nodiscard]] PixelCanvas canvas_of(QImage& image);

/// Draws on an image by its own pixel routines, in the order of the calls. Lines are crisp (a pen
/// of width n is n logical pixels, rounded to whole device pixels), circles antialiased; small
/// circles stand on the centre of a pixel. What is no number is not drawn. Labels are left to
/// the picture.
class RasterTarget final : public DrawingTarget {
 public:
    /// `image` (Format_RGB32) must outlive the target and not be copied meanwhile.
    RasterTarget(QImage& image, const PictureMapping& mapping);
    ~RasterTarget() override;
    RasterTarget(const RasterTarget&) = delete;
    RasterTarget& operator=(const RasterTarget&) = delete;

    void DrawStyle(std::int16_t style) override;
    void DrawWidth(std::int16_t width) override;
    void ForeColor(std::int32_t colour) override;
    void FillStyle(std::int16_t style) override;
    void FillColor(std::int32_t colour) override;
    void Line(float x1, float y1, float x2, float y2) override;
    void Circle(float x, float y, float radius) override;
    void Ellipse(const EllipseCurve& curve) override;
    void TextRotated(std::string_view text, std::int32_t escapement, std::int32_t align,
                     const FontSpec& font) override;
    void LabelPlaced(LabelArray array, std::int32_t index, const Label& label, const FontSpec& font,
                     std::int32_t colour) override;
    /// The picture and as much around it as the pen in force may reach into it from outside,
    /// 64 logical pixels at least.
    [[nodiscard]] std::optional<TargetBox> visible_box() const override;

 private:
    void stroke(const PixelPoint& a, const PixelPoint& b);
    const CircleSprite& sprite(const CircleStyle& style);

    QImage& image_;
    PictureMapping mapping_;
    PixelCanvas canvas_;
    int pen_width_ = 1;  ///< device pixels
    int dot_ = 3;        ///< device pixels on and off of a dotted line
    bool dotted_ = false;
    bool filled_ = true;
    std::uint32_t pen_ = 0xff000000U;
    std::uint32_t fill_ = 0xff000000U;
    PixelPoint position_;
    std::unique_ptr<QPainter> painter_;
    using SpriteKey = std::tuple<double, int, std::uint32_t, std::uint32_t, bool, int>;
    std::map<SpriteKey, CircleSprite> sprites_;
    const CircleSprite* last_sprite_ = nullptr;
};

/// A colour 0x00BBGGRR as a pixel 0xffRRGGBB.
[[nodiscard]] constexpr std::uint32_t to_pixel_colour(std::int32_t colour) {
    const auto bits = static_cast<std::uint32_t>(colour);
    return 0xff000000U | (bits & 0xffU) << 16U | (bits & 0xff00U) | (bits >> 16U & 0xffU);
}

}  // namespace veldra
