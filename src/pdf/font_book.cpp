#include "pdf/font_book.h"

#include <vector>

#include <fontconfig/fontconfig.h>
#include <hb-ot.h>
#include <hb.h>

#include "text/codepage.h"
#include "text/fatal_error.h"

namespace veldra {

namespace {

constexpr unsigned char soft_hyphen = 0xAD;

/// Frees what fontconfig hands out.
struct FontconfigDeleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcFontSet* set) const { FcFontSetDestroy(set); }
};
using Pattern = std::unique_ptr<FcPattern, FontconfigDeleter>;
using FontSet = std::unique_ptr<FcFontSet, FontconfigDeleter>;

const FcChar8* fc_text(const char* text) {
    return reinterpret_cast<const FcChar8*>(text);
}

std::string text_value(FcPattern* pattern, const char* key) {
    FcChar8* value = nullptr;
    return FcPatternGetString(pattern, key, 0, &value) == FcResultMatch
               ? reinterpret_cast<const char*>(value)
               : std::string();
}

FontFile to_file(FcPattern* pattern) {
    FontFile file;
    file.path = text_value(pattern, FC_FILE);
    int index = 0;
    if (FcPatternGetInteger(pattern, FC_INDEX, 0, &index) == FcResultMatch) {
        file.index = static_cast<unsigned>(index);
    }
    file.variations = text_value(pattern, FC_FONT_VARIATIONS);
    FcMatrix* matrix = nullptr;
    if (FcPatternGetMatrix(pattern, FC_MATRIX, 0, &matrix) == FcResultMatch) {
        file.slant = matrix->xy;
    }
    FcBool embolden = FcFalse;
    file.embolden =
        FcPatternGetBool(pattern, FC_EMBOLDEN, 0, &embolden) == FcResultMatch && embolden == FcTrue;
    return file;
}

Pattern wanted_pattern(const FontSpec& font) {
    Pattern pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, fc_text(to_utf8(font.face).c_str()));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT,
                        font.bold != 0 ? FC_WEIGHT_BOLD : FC_WEIGHT_NORMAL);
    FcPatternAddInteger(pattern.get(), FC_SLANT,
                        font.italic != 0 ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

bool has_table(hb_face_t* face, hb_tag_t tag) {
    hb_blob_t* blob = hb_face_reference_table(face, tag);
    const bool found = hb_blob_get_length(blob) > 0;
    hb_blob_destroy(blob);
    return found;
}

bool has_outlines(hb_face_t* face) {
    return hb_face_get_glyph_count(face) > 0 && (has_table(face, HB_TAG('g', 'l', 'y', 'f')) ||
                                                 has_table(face, HB_TAG('C', 'F', 'F', ' ')) ||
                                                 has_table(face, HB_TAG('C', 'F', 'F', '2')));
}

/// What a line takes above and below its base line, font units.
struct LineExtents {
    double above = 0;
    double below = 0;
};

/// As the picture takes it: what the face's Windows table asks for, its general one otherwise.
LineExtents line_extents(hb_face_t* face, hb_font_t* font) {
    constexpr unsigned selection = 62;  // places in the table
    constexpr unsigned windows_ascent = 74;
    constexpr unsigned windows_descent = 76;
    constexpr unsigned use_typographic = 0x80;
    hb_blob_t* const blob = hb_face_reference_table(face, HB_TAG('O', 'S', '/', '2'));
    unsigned size = 0;
    const char* const data = hb_blob_get_data(blob, &size);
    const auto word = [&](unsigned place) {
        return place + 2 > size
                   ? 0U
                   : static_cast<unsigned>(static_cast<unsigned char>(data[place])) << 8U |
                         static_cast<unsigned char>(data[place + 1]);
    };
    const unsigned above = word(windows_ascent);
    const unsigned below = word(windows_descent);
    const bool by_windows = (word(selection) & use_typographic) == 0 && above + below > 0;
    hb_blob_destroy(blob);
    if (by_windows) {
        return {static_cast<double>(above), static_cast<double>(below)};
    }
    hb_font_extents_t extents{};
    hb_font_get_h_extents(font, &extents);
    return {static_cast<double>(extents.ascender), static_cast<double>(-extents.descender)};
}

void set_variations(hb_font_t* font, const std::string& list) {
    std::vector<hb_variation_t> variations;
    std::size_t begin = 0;
    while (begin < list.size()) {
        const std::size_t end = std::min(list.find(',', begin), list.size());
        hb_variation_t variation{};
        if (hb_variation_from_string(list.data() + begin, static_cast<int>(end - begin),
                                     &variation) != 0) {
            variations.push_back(variation);
        }
        begin = end + 1;
    }
    if (!variations.empty()) {
        hb_font_set_variations(font, variations.data(), static_cast<unsigned>(variations.size()));
    }
}

}  // namespace

FontFace::FontFace(const FontFile& file) : file_(file) {
    try {
        load();
    } catch (...) {
        hb_font_destroy(font_);
        hb_face_destroy(face_);
        throw;
    }
}

FontFace::~FontFace() {
    hb_font_destroy(font_);
    hb_face_destroy(face_);
}

void FontFace::load() {
    constexpr unsigned index_bits = 16;
    hb_blob_t* const blob = hb_blob_create_from_file_or_fail(file_.path.c_str());
    if (blob == nullptr) {
        throw FatalError(file_.path + ": Schriftdatei kann nicht gelesen werden");
    }
    face_ = hb_face_create(blob, file_.index & 0xffffU);
    hb_blob_destroy(blob);
    if (!has_outlines(face_)) {
        throw FatalError(file_.path + ": Schriftdatei ohne skalierbare Umrisse");
    }
    font_ = hb_font_create(face_);
    if ((file_.index >> index_bits) != 0) {
        hb_font_set_var_named_instance(font_, (file_.index >> index_bits) - 1);
    }
    set_variations(font_, file_.variations);
    hb_font_set_synthetic_slant(font_, static_cast<float>(file_.slant));
    units_per_em_ = hb_face_get_upem(face_);
    measure();
}

bool is_silent(unsigned char byte) {
    return byte == '\t' || byte == '\n' || byte == '\f' || byte == '\r' || byte == soft_hyphen;
}

void FontFace::measure() {
    const double em = units_per_em_;
    for (std::size_t byte = 0; byte < glyphs_.size(); ++byte) {
        const char32_t code = code_point(static_cast<unsigned char>(byte));
        hb_codepoint_t glyph = 0;
        if (hb_font_get_nominal_glyph(font_, code, &glyph) != 0) {
            glyphs_[byte] = glyph;
        }
    }
    if (glyphs_[no_break_space] == 0) {
        glyphs_[no_break_space] = glyphs_[' '];
    }
    for (std::size_t byte = 0; byte < glyphs_.size(); ++byte) {
        if (!is_silent(static_cast<unsigned char>(byte))) {
            metrics_.advance[byte] =
                static_cast<float>(hb_font_get_glyph_h_advance(font_, glyphs_[byte]) / em);
        }
    }
    const LineExtents extents = line_extents(face_, font_);
    metrics_.ascent = static_cast<float>(extents.above / em);
    metrics_.descent = static_cast<float>(extents.below / em);

    hb_position_t offset = 0;
    hb_position_t size = 0;
    hb_ot_metrics_get_position_with_fallback(font_, HB_OT_METRICS_TAG_UNDERLINE_OFFSET, &offset);
    hb_ot_metrics_get_position_with_fallback(font_, HB_OT_METRICS_TAG_UNDERLINE_SIZE, &size);
    underline_depth_ = (-offset + size / 2.0) / em;
    underline_thickness_ = size / em;
}

double FontFace::width(std::string_view text) const {
    double sum = 0;
    for (const char c : text) {
        sum += static_cast<double>(metrics_.advance[static_cast<unsigned char>(c)]);
    }
    return sum;
}

const FontFace& FontBook::find(const FontSpec& font) {
    const FontFace*& known = styles_[{font.face, font.bold != 0, font.italic != 0}];
    if (known != nullptr) {
        return *known;
    }
    const auto load = [this](FcPattern* pattern) {
        const FontFile file = to_file(pattern);
        std::unique_ptr<FontFace>& face = faces_[file];
        if (!face) {
            face = std::make_unique<FontFace>(file);
        }
        return face.get();
    };
    const Pattern wanted = wanted_pattern(font);
    FcResult result = FcResultNoMatch;
    try {
        const Pattern best(FcFontMatch(nullptr, wanted.get(), &result));
        if (best) {
            return *(known = load(best.get()));
        }
    } catch (const FatalError&) {  // NOLINT(bugprone-empty-catch): the next best one then
    }
    const FontSet others(FcFontSort(nullptr, wanted.get(), FcTrue, nullptr, &result));
    for (int i = 0; others && i < others->nfont; ++i) {
        try {
            const Pattern next(FcFontRenderPrepare(nullptr, wanted.get(), others->fonts[i]));
            return *(known = load(next.get()));
        } catch (const FatalError&) {  // NOLINT(bugprone-empty-catch): the next best one then
        }
    }
    throw FatalError(to_utf8(font.face) + ": keine skalierbare Schrift vorhanden");
}

}  // namespace veldra
