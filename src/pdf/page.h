#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <tuple>
#include <unordered_map>

#include "drawing/geometry.h"
#include "pdf/circle_forms.h"
#include "pdf/document.h"
#include "plot/printer.h"

namespace veldra {

/// The sheet of paper that a page stands for.
struct PdfPaper {
    PdfPageSize size;
    double margin_across = 5;   ///< not printed on, at the left and at the right, mm
    double margin_up = 5;       ///< not printed on, at the top and at the bottom, mm
    double pixel = 25.4 / 300;  ///< what pens count in, mm
    bool grey = false;          ///< every colour is written as its grey
};

/// A page of a document, drawn in whole 1/1000 mm. Lines have round ends; dotted ones are three
/// pixels on and three off with flat ends. What lies outside the printable area is not written,
/// and what is no number is not drawn.
class PdfPage final : public PageTarget {
 public:
    /// Opens the page in the document, which must outlive it.
    PdfPage(PdfDocument& document, CircleForms& circles, const PdfPaper& paper,
            const SheetTitle& title);
    /// Ends the page.
    void finish();

    void Scale(double left, double top, double right, double bottom) override;
    void scale_millimetres() override;
    [[nodiscard]] double pixel_size() const override { return paper_.pixel; }
    void Print(std::string_view text, double x, double y, const FontSpec& font,
               std::int32_t colour) override;
    void Polygon(std::span<const PagePoint> corners, std::int32_t colour) override;
    void begin_layer(PageLayer layer) override;

    void DrawStyle(std::int16_t style) override;
    void DrawWidth(std::int16_t width) override;
    void ForeColor(std::int32_t colour) override;
    void FillStyle(std::int16_t style) override { filled_ = style == 0; }
    void FillColor(std::int32_t colour) override { fill_ = shade(colour); }
    void Line(float x1, float y1, float x2, float y2) override;
    void LinePart(float x1, float y1, float x2, float y2, const LineCut& cut) override;
    void MoveTo(float x, float y) override;
    void Circle(float x, float y, float radius) override;
    void Ellipse(const EllipseCurve& curve) override;
    bool EllipsePart(const EllipseCurve& curve, const TargetBox& window) override;
    void TextRotated(std::string_view text, std::int32_t escapement, std::int32_t align,
                     const FontSpec& font) override;
    void LabelPlaced(LabelArray array, std::int32_t index, const Label& label, const FontSpec& font,
                     std::int32_t colour) override;
    [[nodiscard]] std::optional<TargetBox> visible_box() const override;

 private:
    /// A place on the paper, 1/1000 mm from its lower left corner.
    struct Place {
        double x = 0;
        double y = 0;
    };
    struct Box {
        double left = 0;
        double bottom = 0;
        double right = 0;
        double top = 0;
    };
    /// A place as it is written.
    struct WrittenPlace {
        std::int32_t x = 0;
        std::int32_t y = 0;
        bool operator==(const WrittenPlace&) const = default;
    };
    /// A font in force, looked up.
    struct TextFont {
        FontSpec spec;
        std::size_t number = 0;
        const FontFace* face = nullptr;
        double size = 0;  ///< 1/1000 mm
    };

    /// A colour as this page writes it.
    [[nodiscard]] std::int32_t shade(std::int32_t colour) const {
        return paper_.grey ? GreyOf(colour) : colour;
    }
    [[nodiscard]] Place to_paper(double x, double y) const {
        return {left_ + x * per_unit_x_, bottom_ + y * per_unit_y_};
    }
    [[nodiscard]] static WrittenPlace written(const Place& place);
    [[nodiscard]] static bool is_number(const Place& place);
    /// Whether something that reaches this far from its box may show.
    [[nodiscard]] bool may_show(const Box& box, double reach) const {
        return touches(box, area_, reach);
    }
    /// Whether something that reaches this far from a box may touch another one.
    [[nodiscard]] static bool touches(const Box& box, const Box& other, double reach);
    [[nodiscard]] TargetBox on_paper(const TargetBox& box) const;
    [[nodiscard]] bool lies_near(const Box& box) const;

    void stroke(Place a, Place b, double begun);
    /// What is written up to end_clip shows only inside of this box of the paper, whose sides may
    /// be infinite. The pen must have been settled.
    void begin_clip(const TargetBox& window);
    void end_clip();
    void put(const WrittenPlace& place);
    void end_path();
    /// Ends the path and opens the layer wanted.
    void prepare();
    void settle_pen();
    void settle_fill(std::int32_t colour);
    void write_colour(std::int32_t colour, const char* grey_operator, const char* rgb_operator);
    /// The ellipse with these half-axes; `window` as for begin_clip, null for the whole curve.
    void draw_ellipse(const EllipseCurve& curve, const TargetBox* window);
    void write_arcs(const Place& centre, const Place& a, const Place& b, double reach);
    void write_outline(const EllipseCurve& curve, const Box& shown);

    const TextFont& text_font(const FontSpec& font);
    /// Lines of text from the upper left corner of their box on.
    void print_lines(std::string_view text, const Place& corner, const FontSpec& font,
                     std::int32_t colour);
    /// One line of text; `base` is the start of its base line, `cosine` and `sine` its direction.
    void print_line(std::string_view text, const TextFont& font, const Place& base, double cosine,
                    double sine, std::int32_t colour);

    PdfDocument& document_;
    CircleForms& circles_;
    ContentStream& out_;
    PdfPaper paper_;
    Box area_;  ///< printable
    Box near_;  ///< what is far outside of it is cut off before it is written
    double left_ = 0;
    double bottom_ = 0;
    double per_unit_x_ = 1;
    double per_unit_y_ = 1;

    // What the caller wants.
    std::optional<PageLayer> layer_;
    CirclePen pen_;
    bool filled_ = true;
    std::int32_t fill_ = 0;
    Place position_;

    // What the page has been told.
    std::optional<PageLayer> open_layer_;
    CirclePen told_pen_;
    std::int32_t told_fill_ = 0;
    std::size_t told_font_ = 0;
    double told_size_ = 0;
    bool settled_ = false;  ///< layer and pen are those wanted
    int path_segments_ = 0;
    WrittenPlace path_end_;
    TextFont text_font_;
};

}  // namespace veldra
