#include "pdf/outline_font.h"

#include <algorithm>
#include <string>

#include <fmt/format.h>
#include <hb.h>

namespace veldra {

namespace {

/// Operators of a glyph while it is drawn, and the box of all points.
struct Outline {
    std::string path;
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;

    void add(std::initializer_list<float> numbers, const char* operation) {
        bool is_x = true;
        for (const float number : numbers) {
            const auto value = static_cast<double>(number);
            path += fmt::format("{:.2f} ", value);
            double& low = is_x ? left : bottom;
            double& high = is_x ? right : top;
            low = std::min(low, value);
            high = std::max(high, value);
            is_x = !is_x;
        }
        path += operation;
    }
};

Outline& outline_of(void* data) {
    return *static_cast<Outline*>(data);
}

void move_to(hb_draw_funcs_t* /*funcs*/, void* data, hb_draw_state_t* /*state*/, float x, float y,
             void* /*user*/) {
    outline_of(data).add({x, y}, "m\n");
}

void line_to(hb_draw_funcs_t* /*funcs*/, void* data, hb_draw_state_t* /*state*/, float x, float y,
             void* /*user*/) {
    outline_of(data).add({x, y}, "l\n");
}

void cubic_to(hb_draw_funcs_t* /*funcs*/, void* data, hb_draw_state_t* /*state*/, float x1,
              float y1, float x2, float y2, float x3, float y3, void* /*user*/) {
    outline_of(data).add({x1, y1, x2, y2, x3, y3}, "c\n");
}

void close_path(hb_draw_funcs_t* /*funcs*/, void* data, hb_draw_state_t* /*state*/,
                void* /*user*/) {
    outline_of(data).add({}, "h\n");
}

/// How outlines are drawn; freed at the end of its life.
class DrawFuncs {
 public:
    DrawFuncs() : funcs_(hb_draw_funcs_create()) {
        hb_draw_funcs_set_move_to_func(funcs_, move_to, nullptr, nullptr);
        hb_draw_funcs_set_line_to_func(funcs_, line_to, nullptr, nullptr);
        hb_draw_funcs_set_cubic_to_func(funcs_, cubic_to, nullptr, nullptr);
        hb_draw_funcs_set_close_path_func(funcs_, close_path, nullptr, nullptr);
    }
    ~DrawFuncs() { hb_draw_funcs_destroy(funcs_); }
    DrawFuncs(const DrawFuncs&) = delete;
    DrawFuncs& operator=(const DrawFuncs&) = delete;

    [[nodiscard]] Outline draw(const FontFace& face, std::uint32_t glyph) const {
        Outline outline;
        hb_font_get_glyph_shape(face.font(), glyph, funcs_, &outline);
        return outline;
    }

 private:
    hb_draw_funcs_t* funcs_;
};

}  // namespace

void add_outlines(QPDF& pdf, QPDFObjectHandle font, const FontFace& face, const UsedBytes& used) {
    const DrawFuncs draw;
    const double em = face.units_per_em();
    // A face without a bold of its own is thickened by a pen along its outlines.
    const double pen = face.file().embolden ? em / 24 : 0;
    Outline all;
    QPDFObjectHandle glyphs = QPDFObjectHandle::newDictionary();
    QPDFObjectHandle differences = QPDFObjectHandle::newArray();
    for (std::size_t byte = 0; byte < used.size(); ++byte) {
        if (!used[byte]) {
            continue;
        }
        const Outline outline = draw.draw(face, face.glyph(static_cast<unsigned char>(byte)));
        const double advance = static_cast<double>(face.metrics().advance[byte]) * em;
        const std::string glyph_name = fmt::format("/g{}", byte);
        glyphs.replaceKey(
            glyph_name,
            QPDFObjectHandle::newStream(
                &pdf, fmt::format("{:.2f} 0 {:.2f} {:.2f} {:.2f} {:.2f} d1\n{}{}", advance,
                                  outline.left - pen, outline.bottom - pen, outline.right + pen,
                                  outline.top + pen, outline.path,
                                  pen > 0 ? fmt::format("{:.2f} w 1 j B\n", pen) : "f\n")));
        differences.appendItem(QPDFObjectHandle::newInteger(static_cast<long long>(byte)));
        differences.appendItem(QPDFObjectHandle::newName(glyph_name));
        all.left = std::min(all.left, outline.left);
        all.bottom = std::min(all.bottom, outline.bottom);
        all.right = std::max(all.right, outline.right);
        all.top = std::max(all.top, outline.top);
    }
    QPDFObjectHandle encoding = QPDFObjectHandle::newDictionary();
    encoding.replaceKey("/Type", QPDFObjectHandle::newName("/Encoding"));
    encoding.replaceKey("/Differences", differences);
    font.replaceKey("/Encoding", encoding);
    font.replaceKey("/CharProcs", glyphs);
    font.replaceKey("/Resources", QPDFObjectHandle::newDictionary());
    font.replaceKey("/FontBBox",
                    QPDFObjectHandle::newFromRectangle(
                        {all.left - pen, all.bottom - pen, all.right + pen, all.top + pen}));
    font.replaceKey("/FontMatrix",
                    QPDFObjectHandle::parse(fmt::format("[{0:.9f} 0 0 {0:.9f} 0 0]", 1 / em)));
}

}  // namespace veldra
