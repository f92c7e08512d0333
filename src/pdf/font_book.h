#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "model/text_measurer.h"

struct hb_face_t;
struct hb_font_t;

namespace veldra {

/// The file of a face and what the system's configuration wants done to it.
struct FontFile {
    std::string path;
    unsigned index = 0;      ///< of the face in a collection; named instances in the upper half
    std::string variations;  ///< axis settings of a variable font, "wght=700,..."
    double slant = 0;        ///< for faces without an italic: shift to the right a unit of height
    bool embolden = false;   ///< for faces without a bold

    bool operator<(const FontFile& other) const {
        return std::tie(path, index, variations, slant, embolden) <
               std::tie(other.path, other.index, other.variations, other.slant, other.embolden);
    }
};

inline constexpr unsigned char no_break_space = 0xA0;

/// Bytes that show nothing and take no room: tab, line and page ends, the soft hyphen.
[[nodiscard]] bool is_silent(unsigned char byte);

/// A loaded face: metrics and glyphs of the bytes of Windows-1252. Glyph 0 stands for characters
/// that the face lacks and for bytes without a character.
class FontFace {
 public:
    /// Throws FatalError if the file cannot be read or has no scalable outlines.
    explicit FontFace(const FontFile& file);
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    [[nodiscard]] const FontFile& file() const { return file_; }
    [[nodiscard]] const FaceMetrics& metrics() const { return metrics_; }
    [[nodiscard]] std::uint32_t glyph(unsigned char byte) const { return glyphs_[byte]; }
    [[nodiscard]] unsigned units_per_em() const { return units_per_em_; }
    /// Centre of the underline below the base line and its thickness, fractions of the font size.
    [[nodiscard]] double underline_depth() const { return underline_depth_; }
    [[nodiscard]] double underline_thickness() const { return underline_thickness_; }
    /// Width of a text of one line, fractions of the font size.
    [[nodiscard]] double width(std::string_view text) const;

    [[nodiscard]] hb_face_t* face() const { return face_; }
    [[nodiscard]] hb_font_t* font() const { return font_; }

 private:
    void load();
    void measure();

    FontFile file_;
    hb_face_t* face_ = nullptr;
    hb_font_t* font_ = nullptr;
    unsigned units_per_em_ = 1000;
    std::array<std::uint32_t, 256> glyphs_{};
    FaceMetrics metrics_;
    double underline_depth_ = 0;
    double underline_thickness_ = 0;
};

/// Finds the faces of fonts by the system's configuration, as the picture does, and keeps those
/// that were found. References stay valid as long as the book.
class FontBook {
 public:
    /// The face of a font; size and underline do not matter. A face name that the system lacks
    /// gives the face that it puts in its place. Throws FatalError if there is no font at all.
    const FontFace& find(const FontSpec& font);

 private:
    using Style = std::tuple<std::string, bool, bool>;
    std::map<Style, const FontFace*> styles_;
    std::map<FontFile, std::unique_ptr<FontFace>> faces_;
};

/// Text sizes from the font files, in the same book as the document that embeds them.
class FontconfigMeasurer final : public TextMeasurer {
 public:
    FontconfigMeasurer() : book_(std::make_shared<FontBook>()) {}
    explicit FontconfigMeasurer(std::shared_ptr<FontBook> book) : book_(std::move(book)) {}

    const FaceMetrics& face_metrics(const FontSpec& font) override {
        return book_->find(font).metrics();
    }

 private:
    std::shared_ptr<FontBook> book_;
};

}  // namespace veldra
