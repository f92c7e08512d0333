#pragma once

#include <bitset>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "os/spool_file.h"
#include "pdf/content_stream.h"
#include "pdf/font_book.h"
#include "pdf/page_list.h"
#include "plot/printer.h"

namespace veldra {

/// Bytes of Windows-1252 that a document uses of a face.
using UsedBytes = std::bitset<256>;

/// A drawing that pages show by its number.
struct PdfForm {
    double reach = 0;     ///< it stays within this distance of its origin, 1/1000 mm
    std::string content;  ///< operators
};

/// A document while its pages are drawn, one after the other. Pages go packed into intermediate
/// files; what stays in memory is the fonts and the forms. Calls throw PrinterError when such a
/// file or a font fails.
class PdfDocument {
 public:
    struct Font {
        const FontFace* face = nullptr;
        UsedBytes used;
    };

    PdfDocument(std::shared_ptr<FontBook> fonts, const JobTitle& title);

    /// Opens a page; its operators go to content(), in 1/1000 mm from the lower left corner of the
    /// paper with y upwards.
    void begin_page(const PdfPageSize& size, const SheetTitle& title);
    [[nodiscard]] ContentStream& content() { return content_; }
    void end_page();

    /// Number of the font's face in this document, from 0: it is the resource "/F" and number.
    std::size_t font_number(const FontSpec& font);
    [[nodiscard]] Font& font(std::size_t number) { return fonts_[number]; }
    /// Adds a form; it is the resource "/C" and the number returned.
    std::size_t add_form(PdfForm form);

    [[nodiscard]] const JobTitle& title() const { return title_; }
    [[nodiscard]] const PdfPageList& pages() const { return pages_; }
    [[nodiscard]] const std::vector<Font>& fonts() const { return fonts_; }
    [[nodiscard]] const std::vector<PdfForm>& forms() const { return forms_; }
    [[nodiscard]] const SpoolFile& spool() const { return spool_; }

 private:
    std::shared_ptr<FontBook> book_;
    JobTitle title_;
    SpoolFile spool_;
    ContentStream content_;
    PdfPageList pages_;
    PdfPageRecord page_;  ///< the one that is being drawn
    std::vector<Font> fonts_;
    std::map<const FontFace*, std::size_t> font_numbers_;
    std::vector<PdfForm> forms_;
};

/// Points of paper, 1/72 inch, a millimetre.
constexpr double points_per_millimetre = 72 / 25.4;
/// Length that a page's own unit makes of one point; above 1 for pages too large for points.
[[nodiscard]] double page_unit(const PdfPageSize& size);

/// Writes the finished document to `path`, which it replaces as a whole. Equal documents give equal
/// bytes. Throws FatalError or what qpdf throws.
void write_document(const PdfDocument& document, const std::string& path);

}  // namespace veldra
