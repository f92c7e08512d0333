#include <algorithm>
#include <array>
#include <string>

#include <fmt/format.h>
#include <qpdf/QPDF.hh>

#include "os/files.h"
#include "pdf/document.h"
#include "pdf/font_embedding.h"
#include "pdf/object_writer.h"
#include "pdf/pdf_name.h"
#include "text/codepage.h"

namespace veldra {

namespace {

/// Names of the layers, in the order of PageLayer.
constexpr std::array<const char*, 7> layer_names{
    "Rahmen",     "Grenzen", "Nummerierungsbezirke", "Beobachtungen",
    "Signaturen", "Werte",   "Beschriftung"};

QPDFObjectHandle text_string(std::string_view windows_1252) {
    return QPDFObjectHandle::newUnicodeString(to_utf8(windows_1252));
}

QPDFObjectHandle empty_dictionary() {
    return QPDFObjectHandle::newDictionary();
}

/// Adds the layers to the catalogue; gives the resources that pages name them by.
QPDFObjectHandle add_layers(QPDF& pdf) {
    QPDFObjectHandle properties = empty_dictionary();
    QPDFObjectHandle all = QPDFObjectHandle::newArray();
    QPDFObjectHandle order = QPDFObjectHandle::newArray();
    for (std::size_t i = 0; i < layer_names.size(); ++i) {
        QPDFObjectHandle group = empty_dictionary();
        group.replaceKey("/Type", name("/OCG"));
        group.replaceKey("/Name", QPDFObjectHandle::newUnicodeString(layer_names[i]));
        group = pdf.makeIndirectObject(group);
        all.appendItem(group);
        order.appendItem(group);
        properties.replaceKey(fmt::format("/L{}", i), group);
    }
    QPDFObjectHandle configuration = empty_dictionary();
    configuration.replaceKey("/Name", QPDFObjectHandle::newUnicodeString("Ebenen"));
    configuration.replaceKey("/Order", order);
    configuration.replaceKey("/ON", all.shallowCopy());
    QPDFObjectHandle layers = empty_dictionary();
    layers.replaceKey("/OCGs", all);
    layers.replaceKey("/D", configuration);
    pdf.getRoot().replaceKey("/OCProperties", layers);
    return properties;
}

QPDFObjectHandle make_forms(QPDF& pdf, const std::vector<PdfForm>& forms) {
    QPDFObjectHandle names = empty_dictionary();
    for (std::size_t i = 0; i < forms.size(); ++i) {
        QPDFObjectHandle form = QPDFObjectHandle::newStream(&pdf, forms[i].content);
        QPDFObjectHandle dictionary = form.getDict();
        dictionary.replaceKey("/Type", name("/XObject"));
        dictionary.replaceKey("/Subtype", name("/Form"));
        const double reach = forms[i].reach;
        dictionary.replaceKey("/BBox",
                              QPDFObjectHandle::newFromRectangle({-reach, -reach, reach, reach}));
        dictionary.replaceKey("/Resources", empty_dictionary());
        names.replaceKey(fmt::format("/C{}", i), form);
    }
    return names;
}

QPDFObjectHandle make_resources(QPDF& pdf, const PdfDocument& document) {
    QPDFObjectHandle fonts = empty_dictionary();
    for (std::size_t i = 0; i < document.fonts().size(); ++i) {
        const PdfDocument::Font& font = document.fonts()[i];
        // A face may have been asked for without a letter coming to stand on a page.
        if (font.used.any()) {
            fonts.replaceKey(fmt::format("/F{}", i), embed_font(pdf, *font.face, font.used));
        }
    }
    QPDFObjectHandle resources = empty_dictionary();
    resources.replaceKey("/Font", fonts);
    resources.replaceKey("/XObject", make_forms(pdf, document.forms()));
    resources.replaceKey("/Properties", add_layers(pdf));
    return pdf.makeIndirectObject(resources);
}

/// Object numbers of the pages and bookmarks follow those of what all pages share: each page's
/// pieces, then the page itself; then each part's bookmark, and behind it those of its sheets.
class DocumentFile {
 public:
    DocumentFile(ReplacedFile& file, const PdfDocument& document, QPDF& shared)
        : document_(document),
          shared_(shared),
          resources_(make_resources(shared, document)),
          outlines_(shared.makeIndirectObject(empty_dictionary())),
          first_number_(largest_number(shared) + 1),
          writer_(file, first_number_ - 1) {
        shared.getRoot().replaceKey("/Outlines", outlines_);
    }

    void write() {
        write_pages();
        write_page_tree();
        write_bookmarks();
        write_shared();
        QPDFObjectHandle trailer = shared_.getTrailer();
        writer_.finish(fmt::format("/Root {} /Info {}", trailer.getKey("/Root").unparse(),
                                   trailer.getKey("/Info").unparse()));
    }

 private:
    using Walk = PdfPageList::Walk;

    /// A walk that knows the number of its page's object.
    class NumberedWalk {
     public:
        NumberedWalk(const PdfPageList& pages, int first_number)
            : walk_(pages), next_number_(first_number) {}

        bool next() {
            if (!walk_.next()) {
                return false;
            }
            number_ = next_number_ + static_cast<int>(walk_.page().pieces.size());
            next_number_ = number_ + 1;
            return true;
        }
        [[nodiscard]] const PdfPageRecord& page() const { return walk_.page(); }
        [[nodiscard]] int number() const { return number_; }
        [[nodiscard]] int next_number() const { return next_number_; }

     private:
        Walk walk_;
        int number_ = 0;
        int next_number_;
    };

    static int largest_number(QPDF& pdf) {
        int largest = 0;
        for (const QPDFObjectHandle& object : pdf.getAllObjects()) {
            largest = std::max(largest, object.getObjectID());
        }
        return largest;
    }

    [[nodiscard]] NumberedWalk walk() const { return {document_.pages(), first_number_}; }

    [[nodiscard]] std::string page_tree() { return shared_.getRoot().getKey("/Pages").unparse(); }

    void write_pages() {
        for (NumberedWalk at = walk(); at.next();) {
            const PdfPageRecord& page = at.page();
            std::string contents;
            int number = at.number() - static_cast<int>(page.pieces.size());
            for (const SpoolPiece& piece : page.pieces) {
                contents += fmt::format(" {} 0 R", number);
                writer_.stream_object(number++, "/Filter /FlateDecode",
                                      document_.spool().read(piece.place, piece.size));
            }
            writer_.begin_object(at.number());
            writer_.write(page_dictionary(page, contents));
            writer_.end_object();
            next_number_ = at.next_number();
        }
    }

    std::string page_dictionary(const PdfPageRecord& page, const std::string& contents) {
        const double unit = page_unit(page.size);
        const std::string box =
            fmt::format("[0 0 {:.6f} {:.6f}]", page.size.width * points_per_millimetre / unit,
                        page.size.height * points_per_millimetre / unit);
        return fmt::format(
            "<< /Type /Page /Parent {} /MediaBox {} /CropBox {} /TrimBox {}{} /Resources {} "
            "/Contents [{} ] >>",
            page_tree(), box, box, box,
            unit > 1 ? fmt::format(" /UserUnit {}", static_cast<long long>(unit)) : "",
            resources_.unparse(), contents);
    }

    void write_page_tree() {
        writer_.begin_object(shared_.getRoot().getKey("/Pages").getObjectID());
        writer_.write(fmt::format("<< /Type /Pages /Count {} /Kids [", document_.pages().count()));
        for (NumberedWalk at = walk(); at.next();) {
            writer_.write(fmt::format("{} 0 R\n", at.number()));
        }
        writer_.write("] >>");
        writer_.end_object();
    }

    /// Bookmarks of sheets that follow each other in one part.
    struct Group {
        std::string netzteil;
        int number = 0;      ///< object of the part's bookmark
        int first_page = 0;  ///< object
        int sheets = 0;      ///< bookmarks below it; their objects come right behind
        [[nodiscard]] int end() const { return number + 1 + sheets; }
    };

    /// Takes the pages of a group from a walk that stands on its first one; false if that was the
    /// last group.
    static bool take_group(NumberedWalk& at, Group& group, int number) {
        group = {at.page().title.netzteil, number, at.number(), 0};
        do {
            group.sheets += at.page().title.blatt.empty() ? 0 : 1;
            if (!at.next()) {
                return false;
            }
        } while (at.page().title.netzteil == group.netzteil);
        return true;
    }

    void write_bookmarks() {
        NumberedWalk ahead = walk();
        NumberedWalk sheets = walk();
        bool more = ahead.next();
        sheets.next();
        Group group;
        int previous = 0;
        int shown = 0;
        const int first = next_number_;
        for (int number = first; more; number = group.end()) {
            more = take_group(ahead, group, number);
            write_group(group, previous, more);
            write_sheets(sheets, group);
            previous = number;
            shown += 1 + group.sheets;
        }
        writer_.begin_object(outlines_.getObjectID());
        writer_.write(fmt::format("<< /Type /Outlines /First {} 0 R /Last {} 0 R /Count {} >>",
                                  first, previous, shown));
        writer_.end_object();
    }

    static std::string link(const char* key, int number) {
        return number > 0 ? fmt::format(" /{} {} 0 R", key, number) : std::string();
    }

    /// A bookmark that leads to a page; `links` are its ways to other bookmarks.
    void write_bookmark(int number, const std::string& title, int page, const std::string& links) {
        writer_.begin_object(number);
        writer_.write(fmt::format("<< /Title {} /Dest [{} 0 R /Fit]{} >>",
                                  text_string(title).unparseBinary(), page, links));
        writer_.end_object();
    }

    void write_group(const Group& group, int previous, bool more) {
        std::string links = " /Parent " + outlines_.unparse() + link("Prev", previous) +
                            link("Next", more ? group.end() : 0);
        if (group.sheets > 0) {
            links += link("First", group.number + 1) + link("Last", group.end() - 1) +
                     fmt::format(" /Count {}", group.sheets);
        }
        write_bookmark(group.number, group.netzteil, group.first_page, links);
    }

    /// Leaves the walk on the first page behind the group.
    void write_sheets(NumberedWalk& at, const Group& group) {
        int number = group.number + 1;
        do {
            if (!at.page().title.blatt.empty()) {
                write_bookmark(number, at.page().title.blatt, at.number(),
                               link("Parent", group.number) +
                                   link("Prev", number > group.number + 1 ? number - 1 : 0) +
                                   link("Next", number + 1 < group.end() ? number + 1 : 0));
                ++number;
            }
        } while (at.next() && at.page().title.netzteil == group.netzteil);
    }

    void write_shared() {
        const int page_tree_number = shared_.getRoot().getKey("/Pages").getObjectID();
        for (QPDFObjectHandle object : shared_.getAllObjects()) {
            const int number = object.getObjectID();
            if (number == page_tree_number || number == outlines_.getObjectID()) {
                continue;
            }
            if (object.isStream()) {
                write_shared_stream(number, object);
            } else {
                writer_.begin_object(number);
                writer_.write(object.unparseResolved());
                writer_.end_object();
            }
        }
    }

    void write_shared_stream(int number, QPDFObjectHandle& stream) {
        QPDFObjectHandle dictionary = stream.getDict().shallowCopy();
        dictionary.removeKey("/Length");
        std::string keys = dictionary.unparse();
        keys = keys.substr(2, keys.size() - 4);  // without << and >>
        const auto data = stream.getRawStreamData();
        writer_.stream_object(number, keys,
                              {reinterpret_cast<const char*>(data->getBuffer()), data->getSize()});
    }

    const PdfDocument& document_;
    QPDF& shared_;
    QPDFObjectHandle resources_;
    QPDFObjectHandle outlines_;
    int first_number_;
    int next_number_ = 0;
    PdfObjectWriter writer_;
};

void describe(QPDF& pdf, const JobTitle& title) {
    QPDFObjectHandle root = pdf.getRoot();
    QPDFObjectHandle preferences = empty_dictionary();
    preferences.replaceKey("/PrintScaling", name("/None"));
    preferences.replaceKey("/DisplayDocTitle", QPDFObjectHandle::newBool(true));
    root.replaceKey("/ViewerPreferences", preferences);
    root.replaceKey("/Lang", QPDFObjectHandle::newString("de"));
    QPDFObjectHandle information = empty_dictionary();
    information.replaceKey("/Title", text_string(title.titel));
    information.replaceKey("/Producer", QPDFObjectHandle::newString("VELDRA"));
    pdf.getTrailer().replaceKey("/Info", pdf.makeIndirectObject(information));
}

}  // namespace

void write_document(const PdfDocument& document, const std::string& path) {
    ReplacedFile file(path);
    QPDF shared;
    shared.emptyPDF();
    describe(shared, document.title());
    DocumentFile(file, document, shared).write();
    file.commit();
}

}  // namespace veldra
