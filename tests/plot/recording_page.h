#pragma once

#include <string>
#include <vector>

#include "plot/printer.h"

namespace veldra::test {

/// A page that keeps what the layers of plain lines, polygons and texts draw on it.
class RecordingPage final : public PageTarget {
 public:
    struct Pen {
        std::int16_t style = 0;
        std::int16_t width = 0;
        std::int32_t colour = 0;
        bool operator==(const Pen&) const = default;
    };
    struct DrawnLine {
        float x1 = 0;
        float y1 = 0;
        float x2 = 0;
        float y2 = 0;
        Pen pen;
    };
    struct Strip {
        std::vector<PagePoint> corners;
        std::int32_t colour = 0;
    };
    struct Text {
        std::string text;
        double x = 0;
        double y = 0;
        FontSpec font;
        std::int32_t colour = 0;
    };
    struct PlacedLabel {
        std::string caption;
        float left = 0;
        float top = 0;
        std::int32_t colour = 0;
    };

    explicit RecordingPage(double pixel = 0.1) : pixel_(pixel) {}

    void DrawStyle(std::int16_t style) override { pen_.style = style; }
    void DrawWidth(std::int16_t width) override { pen_.width = width; }
    void ForeColor(std::int32_t colour) override { pen_.colour = colour; }
    void FillStyle(std::int16_t /*style*/) override {}
    void FillColor(std::int32_t /*colour*/) override {}
    void Line(float x1, float y1, float x2, float y2) override {
        lines.push_back({x1, y1, x2, y2, pen_});
    }
    void Circle(float /*x*/, float /*y*/, float /*radius*/) override { ++circles; }
    void TextRotated(std::string_view /*text*/, std::int32_t /*escapement*/, std::int32_t /*align*/,
                     const FontSpec& /*font*/) override {
        ++turned_texts;
    }
    void LabelPlaced(LabelArray /*array*/, std::int32_t /*index*/, const Label& label,
                     const FontSpec& /*font*/, std::int32_t colour) override {
        labels.push_back({label.caption, label.left, label.top, colour});
    }
    void Scale(double /*left*/, double /*top*/, double /*right*/, double /*bottom*/) override {}
    void scale_millimetres() override {}
    [[nodiscard]] double pixel_size() const override { return pixel_; }
    void Print(std::string_view text, double x, double y, const FontSpec& font,
               std::int32_t colour) override {
        texts.push_back({std::string(text), x, y, font, colour});
    }
    void Polygon(std::span<const PagePoint> corners, std::int32_t colour) override {
        strips.push_back({{corners.begin(), corners.end()}, colour});
    }
    void begin_layer(PageLayer /*layer*/) override {}

    std::vector<DrawnLine> lines;
    std::vector<Strip> strips;
    std::vector<Text> texts;
    std::vector<PlacedLabel> labels;
    int circles = 0;
    int turned_texts = 0;

 private:
    double pixel_;
    Pen pen_;
};

}  // namespace veldra::test
