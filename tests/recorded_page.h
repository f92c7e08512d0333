#pragma once

#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "drawing/recording_target.h"
#include "plot/printer.h"

namespace veldra::test {

/// What a page knows beyond the operations of any target.
namespace page {

struct Scale {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    bool operator==(const Scale&) const = default;
};
struct Millimetres {
    bool operator==(const Millimetres&) const = default;
};
struct Print {
    std::string text;
    double x = 0;
    double y = 0;
    FontSpec font;
    std::int32_t colour = 0;
    bool operator==(const Print&) const = default;
};
struct Polygon {
    std::vector<PagePoint> corners;
    std::int32_t colour = 0;
};
/// The line that follows is the rest of a longer one.
struct Begun {
    float length = 0;
    bool operator==(const Begun&) const = default;
};
struct MoveTo {
    float x = 0;
    float y = 0;
    bool operator==(const MoveTo&) const = default;
};
struct Layer {
    PageLayer layer = PageLayer::frame;
    bool operator==(const Layer&) const = default;
};

}  // namespace page

using PageStep = std::variant<Operation, page::Scale, page::Millimetres, page::Print, page::Polygon,
                              page::Begun, page::MoveTo, page::Layer>;

/// Keeps all that is drawn on a page, one by one and in order.
class RecordedPage final : public PageTarget {
 public:
    RecordedPage(SheetTitle sheet_title, double millimetres_a_pixel)
        : title(std::move(sheet_title)), pixel_(millimetres_a_pixel) {}

    void DrawStyle(std::int16_t style) override {
        steps.emplace_back(Operation(operation::DrawStyle{style}));
    }
    void DrawWidth(std::int16_t width) override {
        steps.emplace_back(Operation(operation::DrawWidth{width}));
    }
    void ForeColor(std::int32_t colour) override {
        steps.emplace_back(Operation(operation::ForeColor{colour}));
    }
    void FillStyle(std::int16_t style) override {
        steps.emplace_back(Operation(operation::FillStyle{style}));
    }
    void FillColor(std::int32_t colour) override {
        steps.emplace_back(Operation(operation::FillColor{colour}));
    }
    void Line(float x1, float y1, float x2, float y2) override {
        steps.emplace_back(Operation(operation::Line{x1, y1, x2, y2}));
    }
    void LinePart(float x1, float y1, float x2, float y2, const LineCut& cut) override {
        if (cut.begun > 0) {
            steps.emplace_back(page::Begun{static_cast<float>(cut.begun)});
        }
        cuts.push_back(cut);
        Line(x1, y1, x2, y2);
    }
    void MoveTo(float x, float y) override { steps.emplace_back(page::MoveTo{x, y}); }
    void Circle(float x, float y, float radius) override {
        steps.emplace_back(Operation(operation::Circle{x, y, radius}));
    }
    void TextRotated(std::string_view text, std::int32_t escapement, std::int32_t align,
                     const FontSpec& font) override {
        steps.emplace_back(
            Operation(operation::TextRotated{std::string(text), escapement, align, font}));
    }
    void LabelPlaced(LabelArray array, std::int32_t index, const Label& label, const FontSpec& font,
                     std::int32_t colour) override {
        RecordingTarget recording;
        recording.LabelPlaced(array, index, label, font, colour);
        steps.emplace_back(recording.operations().front());
    }
    void Scale(double left, double top, double right, double bottom) override {
        steps.emplace_back(page::Scale{left, top, right, bottom});
    }
    void scale_millimetres() override { steps.emplace_back(page::Millimetres{}); }
    [[nodiscard]] double pixel_size() const override { return pixel_; }
    void Print(std::string_view text, double x, double y, const FontSpec& font,
               std::int32_t colour) override {
        steps.emplace_back(page::Print{std::string(text), x, y, font, colour});
    }
    void Polygon(std::span<const PagePoint> corners, std::int32_t colour) override {
        steps.emplace_back(page::Polygon{{corners.begin(), corners.end()}, colour});
    }
    void begin_layer(PageLayer layer) override { steps.emplace_back(page::Layer{layer}); }

    /// All steps of one kind: one of `page` or one of `operation`.
    template <typename Kind>
    [[nodiscard]] std::vector<Kind> all() const {
        std::vector<Kind> found;
        const auto keep = [&](const auto& operation) {
            if constexpr (std::is_same_v<std::decay_t<decltype(operation)>, Kind>) {
                found.push_back(operation);
            }
        };
        for (const PageStep& step : steps) {
            std::visit(keep, step);
            if (const Operation* any = std::get_if<Operation>(&step)) {
                std::visit(keep, *any);
            }
        }
        return found;
    }
    [[nodiscard]] std::vector<std::string> printed_texts() const {
        std::vector<std::string> texts;
        for (const page::Print& print : all<page::Print>()) {
            texts.push_back(print.text);
        }
        return texts;
    }

    SheetTitle title;
    std::vector<PageStep> steps;
    std::vector<LineCut> cuts;  ///< of all lines that a window has cut

 private:
    double pixel_;
};

}  // namespace veldra::test
