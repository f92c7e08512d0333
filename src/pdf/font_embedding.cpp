#include "pdf/font_embedding.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <hb-ot.h>
#include <hb-subset.h>

#include "pdf/deflater.h"
#include "pdf/outline_font.h"
#include "pdf/pdf_name.h"
#include "text/codepage.h"

namespace veldra {

namespace {

QPDFObjectHandle integer(double value) {
    return QPDFObjectHandle::newInteger(std::llround(value));
}

/// Whether the code page has a character for the byte that can be shown.
bool is_character(unsigned char byte) {
    const char32_t code = code_point(byte);
    return code >= 0x20 && !(code >= 0x7F && code < 0xA0);
}

/// The face cut down to the glyphs of the bytes, as a font file; empty if that is not possible.
std::string subset_file(const FontFace& face, const UsedBytes& used) {
    hb_subset_input_t* const input = hb_subset_input_create_or_fail();
    if (input == nullptr) {
        return {};
    }
    hb_subset_input_set_flags(input, HB_SUBSET_FLAGS_NOTDEF_OUTLINE | HB_SUBSET_FLAGS_GLYPH_NAMES);
    hb_set_t* const characters = hb_subset_input_unicode_set(input);
    for (std::size_t byte = 0; byte < used.size(); ++byte) {
        if (used[byte]) {
            hb_set_add(characters, code_point(static_cast<unsigned char>(byte)));
        }
    }
    if (used[no_break_space]) {
        hb_set_add(characters, ' ');  // readers look it up as an ordinary blank
    }
    hb_face_t* const subset = hb_subset_or_fail(face.face(), input);
    hb_subset_input_destroy(input);
    if (subset == nullptr) {
        return {};
    }
    hb_blob_t* const blob = hb_face_reference_blob(subset);
    unsigned size = 0;
    const char* const data = hb_blob_get_data(blob, &size);
    std::string bytes(data, size);
    hb_blob_destroy(blob);
    hb_face_destroy(subset);
    return bytes;
}

/// Reads a number of `size` bytes, most significant first; 0 beyond the end.
std::uint32_t big_endian(std::string_view bytes, std::size_t place, std::size_t size) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size && place + size <= bytes.size(); ++i) {
        value = value << 8U | static_cast<unsigned char>(bytes[place + i]);
    }
    return value;
}

std::string_view table_of(std::string_view file, std::string_view tag) {
    constexpr std::size_t header = 12;
    constexpr std::size_t record = 16;
    const std::size_t tables = big_endian(file, 4, 2);
    for (std::size_t i = 0; i < tables; ++i) {
        const std::size_t place = header + i * record;
        if (place + record <= file.size() && file.substr(place, 4) == tag) {
            const std::size_t begin = big_endian(file, place + 8, 4);
            return begin < file.size() ? file.substr(begin, big_endian(file, place + 12, 4))
                                       : std::string_view();
        }
    }
    return {};
}

/// Readers find the glyphs of a font with a named encoding by its Windows character map.
bool is_plain_truetype(std::string_view file) {
    if (table_of(file, "glyf").empty()) {
        return false;
    }
    const std::string_view map = table_of(file, "cmap");
    const std::size_t count = big_endian(map, 2, 2);
    for (std::size_t i = 0; i < count; ++i) {
        constexpr std::uint32_t windows_unicode = 0x00030001;
        if (big_endian(map, 4 + 8 * i, 4) == windows_unicode) {
            return true;
        }
    }
    return false;
}

/// Six capitals that tell this subset of a face from others.
std::string subset_tag(const UsedBytes& used) {
    std::uint64_t hash = 14695981039346656037ULL;  // FNV-1a
    for (std::size_t i = 0; i < used.size(); ++i) {
        hash = (hash ^ (used[i] ? i + 1 : 0)) * 1099511628211ULL;
    }
    std::string tag;
    for (int i = 0; i < 6; ++i) {
        tag += static_cast<char>('A' + hash % 26);
        hash /= 26;
    }
    return tag;
}

std::string postscript_name(const FontFace& face) {
    std::array<char, 128> text{};
    auto size = static_cast<unsigned>(text.size());
    hb_ot_name_get_utf8(face.face(), HB_OT_NAME_ID_POSTSCRIPT_NAME, HB_LANGUAGE_INVALID, &size,
                        text.data());
    std::string result;
    for (const char c : std::string_view(text.data(), size)) {
        const bool plain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
                           (c >= 'A' && c <= 'Z') || c == '-' || c == '_';
        if (plain) {
            result += c;
        }
    }
    return result.empty() ? "Schrift" : result;
}

double metric(const FontFace& face, hb_ot_metrics_tag_t tag) {
    hb_position_t value = 0;
    hb_ot_metrics_get_position_with_fallback(face.font(), tag, &value);
    return value * 1000.0 / face.units_per_em();
}

/// A font as it goes into a document.
struct FontProgram {
    std::string_view bytes;
    const char* descriptor_key;
    const char* stream_key;  ///< what the stream's dictionary has beside its size
    QPDFObjectHandle stream_value;
};

QPDFObjectHandle font_box(const FontFace& face, std::string_view file) {
    constexpr std::size_t bounds = 36;  // place in the table
    const std::string_view head = table_of(file, "head");
    const double scale = 1000.0 / face.units_per_em();
    QPDFObjectHandle box = QPDFObjectHandle::newArray();
    for (std::size_t i = 0; i < 4; ++i) {
        box.appendItem(
            integer(static_cast<std::int16_t>(big_endian(head, bounds + 2 * i, 2)) * scale));
    }
    return box;
}

QPDFObjectHandle make_descriptor(QPDF& pdf, const FontFace& face, const std::string& font_name,
                                 std::string_view file, const FontProgram& program) {
    constexpr int nonsymbolic = 32;
    constexpr int italic = 64;
    const auto slant =
        static_cast<double>(hb_style_get_value(face.font(), HB_STYLE_TAG_SLANT_ANGLE));
    QPDFObjectHandle descriptor = QPDFObjectHandle::newDictionary();
    descriptor.replaceKey("/Type", name("/FontDescriptor"));
    descriptor.replaceKey("/FontName", name("/" + font_name));
    descriptor.replaceKey(
        "/Flags", QPDFObjectHandle::newInteger(slant != 0 ? nonsymbolic | italic : nonsymbolic));
    descriptor.replaceKey("/FontBBox", font_box(face, file));
    descriptor.replaceKey("/ItalicAngle", integer(slant));
    descriptor.replaceKey("/Ascent", integer(static_cast<double>(face.metrics().ascent) * 1000));
    descriptor.replaceKey("/Descent", integer(static_cast<double>(face.metrics().descent) * -1000));
    descriptor.replaceKey("/CapHeight", integer(metric(face, HB_OT_METRICS_TAG_CAP_HEIGHT)));
    // About what stems are: 80 for the usual weight of 400.
    const auto weight = static_cast<double>(hb_style_get_value(face.font(), HB_STYLE_TAG_WEIGHT));
    descriptor.replaceKey("/StemV", integer(weight / 5));
    QPDFObjectHandle stream =
        QPDFObjectHandle::newStream(&pdf, std::string(Deflater().pack(program.bytes)));
    stream.getDict().replaceKey("/Filter", name("/FlateDecode"));
    stream.getDict().replaceKey(program.stream_key, program.stream_value);
    descriptor.replaceKey(program.descriptor_key, stream);
    return pdf.makeIndirectObject(descriptor);
}

/// The code page, with the bytes that are no characters sent to the glyph for what is missing.
QPDFObjectHandle make_encoding(const UsedBytes& used) {
    QPDFObjectHandle differences = QPDFObjectHandle::newArray();
    for (std::size_t byte = 0; byte < used.size(); ++byte) {
        if (used[byte] && !is_character(static_cast<unsigned char>(byte))) {
            differences.appendItem(QPDFObjectHandle::newInteger(static_cast<long long>(byte)));
            differences.appendItem(name("/.notdef"));
        }
    }
    if (differences.getArrayNItems() == 0) {
        return name("/WinAnsiEncoding");
    }
    QPDFObjectHandle encoding = QPDFObjectHandle::newDictionary();
    encoding.replaceKey("/Type", name("/Encoding"));
    encoding.replaceKey("/BaseEncoding", name("/WinAnsiEncoding"));
    encoding.replaceKey("/Differences", differences);
    return encoding;
}

/// Names of the glyphs of the bytes as the face itself has them; empty if it has none.
std::vector<std::string> glyph_names(const FontFace& face, const UsedBytes& used) {
    std::vector<std::string> names(used.size());
    for (std::size_t byte = 0; byte < used.size(); ++byte) {
        if (used[byte]) {
            const std::uint32_t glyph = face.glyph(static_cast<unsigned char>(byte));
            std::array<char, 128> text{};
            if (glyph == 0) {
                names[byte] = ".notdef";
            } else if (hb_font_get_glyph_name(face.font(), glyph, text.data(),
                                              static_cast<unsigned>(text.size())) != 0) {
                names[byte] = text.data();
            } else {
                return {};
            }
        }
    }
    return names;
}

QPDFObjectHandle encoding_by_names(const std::vector<std::string>& names) {
    QPDFObjectHandle differences = QPDFObjectHandle::newArray();
    for (std::size_t byte = 0; byte < names.size(); ++byte) {
        if (!names[byte].empty()) {
            differences.appendItem(QPDFObjectHandle::newInteger(static_cast<long long>(byte)));
            differences.appendItem(name("/" + names[byte]));
        }
    }
    QPDFObjectHandle encoding = QPDFObjectHandle::newDictionary();
    encoding.replaceKey("/Type", name("/Encoding"));
    encoding.replaceKey("/BaseEncoding", name("/WinAnsiEncoding"));
    encoding.replaceKey("/Differences", differences);
    return encoding;
}

QPDFObjectHandle make_to_unicode(QPDF& pdf, const UsedBytes& used) {
    std::string lines;
    int count = 0;
    std::string block;
    const auto close_block = [&] {
        if (count > 0) {
            lines += fmt::format("{} beginbfchar\n{}endbfchar\n", count, block);
            block.clear();
            count = 0;
        }
    };
    for (std::size_t byte = 0; byte < used.size(); ++byte) {
        if (used[byte]) {
            const auto code =
                static_cast<std::uint32_t>(code_point(static_cast<unsigned char>(byte)));
            block += fmt::format("<{:02X}> <{:04X}>\n", byte, code);
            constexpr int most_in_a_block = 100;
            if (++count == most_in_a_block) {
                close_block();
            }
        }
    }
    close_block();
    return QPDFObjectHandle::newStream(
        &pdf,
        "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
        "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
        "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
        "1 begincodespacerange\n<00> <FF>\nendcodespacerange\n" +
            lines + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n");
}

/// First and last code and the widths between them, in 1/`units` of the font size.
void add_widths(QPDFObjectHandle font, const FontFace& face, const UsedBytes& used, double units) {
    std::size_t first = used.size() - 1;
    std::size_t last = 0;
    for (std::size_t byte = 0; byte < used.size(); ++byte) {
        if (used[byte]) {
            first = std::min(first, byte);
            last = byte;
        }
    }
    QPDFObjectHandle widths = QPDFObjectHandle::newArray();
    for (std::size_t byte = first; byte <= last; ++byte) {
        const double advance = used[byte] ? static_cast<double>(face.metrics().advance[byte]) : 0.0;
        widths.appendItem(QPDFObjectHandle::newReal(advance * units, 4, true));
    }
    font.replaceKey("/FirstChar", QPDFObjectHandle::newInteger(static_cast<long long>(first)));
    font.replaceKey("/LastChar", QPDFObjectHandle::newInteger(static_cast<long long>(last)));
    font.replaceKey("/Widths", widths);
}

/// Fills the dictionary of a font whose file can be embedded; false if it cannot.
bool embed_file(QPDF& pdf, QPDFObjectHandle font, const FontFace& face, const UsedBytes& used) {
    const FontFile& source = face.file();
    const bool as_it_stands = source.variations.empty() && source.slant == 0 && !source.embolden &&
                              (source.index >> 16U) == 0;
    const std::string file = as_it_stands ? subset_file(face, used) : std::string();
    const std::string_view postscript = table_of(file, "CFF ");
    const std::vector<std::string> names =
        postscript.empty() ? std::vector<std::string>() : glyph_names(face, used);
    FontProgram program{file, "/FontFile2", "/Length1",
                        QPDFObjectHandle::newInteger(static_cast<long long>(file.size()))};
    if (!names.empty()) {
        program = {postscript, "/FontFile3", "/Subtype", name("/Type1C")};
    } else if (!is_plain_truetype(file)) {
        return false;
    }
    const std::string font_name = subset_tag(used) + "+" + postscript_name(face);
    font.replaceKey("/Subtype", name(names.empty() ? "/TrueType" : "/Type1"));
    font.replaceKey("/Encoding", names.empty() ? make_encoding(used) : encoding_by_names(names));
    font.replaceKey("/BaseFont", name("/" + font_name));
    font.replaceKey("/FontDescriptor", make_descriptor(pdf, face, font_name, file, program));
    add_widths(font, face, used, 1000);
    return true;
}

}  // namespace

QPDFObjectHandle embed_font(QPDF& pdf, const FontFace& face, const UsedBytes& used) {
    QPDFObjectHandle font = QPDFObjectHandle::newDictionary();
    font.replaceKey("/Type", name("/Font"));
    font.replaceKey("/ToUnicode", make_to_unicode(pdf, used));
    if (!embed_file(pdf, font, face, used)) {
        font.replaceKey("/Subtype", name("/Type3"));
        add_outlines(pdf, font, face, used);
        add_widths(font, face, used, face.units_per_em());
    }
    return pdf.makeIndirectObject(font);
}

}  // namespace veldra
