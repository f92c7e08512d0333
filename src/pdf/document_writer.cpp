#include <array>
#include <memory>

#include <fmt/format.h>
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFWriter.hh>

#include "os/files.h"
#include "pdf/document.h"
#include "pdf/font_embedding.h"
#include "pdf/pdf_name.h"
#include "text/codepage.h"

namespace veldra {

namespace {

/// Where qpdf's bytes go.
class FilePipeline final : public Pipeline {
 public:
    explicit FilePipeline(ReplacedFile& file) : Pipeline("file", nullptr), file_(file) {}
    void write(unsigned char const* data, std::size_t size) override {
        file_.write({reinterpret_cast<const char*>(data), size});
    }
    void finish() override {}

 private:
    ReplacedFile& file_;
};

/// Gives qpdf a piece of a page from the intermediate file, when it asks for it.
class SpooledData final : public QPDFObjectHandle::StreamDataProvider {
 public:
    SpooledData(const SpoolFile& spool, SpoolPiece piece) : spool_(spool), piece_(piece) {}
    void provideStreamData(QPDFObjGen const& /*object*/, Pipeline* pipeline) override {
        const std::string bytes = spool_.read(piece_.place, piece_.size);
        pipeline->write(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
        pipeline->finish();
    }

 private:
    const SpoolFile& spool_;
    SpoolPiece piece_;
};

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
        fonts.replaceKey(fmt::format("/F{}", i), embed_font(pdf, *font.face, font.used));
    }
    QPDFObjectHandle resources = empty_dictionary();
    resources.replaceKey("/Font", fonts);
    resources.replaceKey("/XObject", make_forms(pdf, document.forms()));
    resources.replaceKey("/Properties", add_layers(pdf));
    return pdf.makeIndirectObject(resources);
}

QPDFObjectHandle make_page(QPDF& pdf, const PdfDocument& document, const PdfDocument::Page& page,
                           const QPDFObjectHandle& resources) {
    constexpr int decimals = 6;
    const double unit = page_unit(page.size);
    QPDFObjectHandle box = QPDFObjectHandle::newArray();
    for (const double side : {0.0, 0.0, page.size.width, page.size.height}) {
        box.appendItem(
            QPDFObjectHandle::newReal(side * points_per_millimetre / unit, decimals, true));
    }
    QPDFObjectHandle contents = QPDFObjectHandle::newArray();
    for (const SpoolPiece& piece : page.pieces) {
        QPDFObjectHandle stream = QPDFObjectHandle::newStream(&pdf);
        stream.replaceStreamData(std::make_shared<SpooledData>(document.spool(), piece),
                                 name("/FlateDecode"), QPDFObjectHandle::newNull());
        contents.appendItem(stream);
    }
    QPDFObjectHandle dictionary = empty_dictionary();
    dictionary.replaceKey("/Type", name("/Page"));
    dictionary.replaceKey("/MediaBox", box);
    dictionary.replaceKey("/CropBox", box.shallowCopy());
    dictionary.replaceKey("/TrimBox", box.shallowCopy());
    if (unit > 1) {
        dictionary.replaceKey("/UserUnit",
                              QPDFObjectHandle::newInteger(static_cast<long long>(unit)));
    }
    dictionary.replaceKey("/Resources", resources);
    dictionary.replaceKey("/Contents", contents);
    return pdf.makeIndirectObject(dictionary);
}

/// A bookmark that will be one of several under a parent.
struct Bookmark {
    QPDFObjectHandle item;
    std::vector<QPDFObjectHandle> children;
};

QPDFObjectHandle make_bookmark(QPDF& pdf, std::string_view title, const QPDFObjectHandle& page) {
    QPDFObjectHandle destination = QPDFObjectHandle::newArray();
    destination.appendItem(page);
    destination.appendItem(name("/Fit"));
    QPDFObjectHandle item = empty_dictionary();
    item.replaceKey("/Title", text_string(title));
    item.replaceKey("/Dest", destination);
    return pdf.makeIndirectObject(item);
}

/// Chains bookmarks under their parent; `shown` is what the parent counts.
void chain(QPDFObjectHandle parent, std::vector<QPDFObjectHandle>& items, std::size_t shown) {
    if (items.empty()) {
        return;
    }
    parent.replaceKey("/First", items.front());
    parent.replaceKey("/Last", items.back());
    parent.replaceKey("/Count", QPDFObjectHandle::newInteger(static_cast<long long>(shown)));
    for (std::size_t i = 0; i < items.size(); ++i) {
        items[i].replaceKey("/Parent", parent);
        if (i > 0) {
            items[i].replaceKey("/Prev", items[i - 1]);
            items[i - 1].replaceKey("/Next", items[i]);
        }
    }
}

/// Sheets that follow each other in one network part stand below it.
void add_bookmarks(QPDF& pdf, const std::vector<PdfDocument::Page>& pages,
                   const std::vector<QPDFObjectHandle>& page_objects) {
    std::vector<Bookmark> parts;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const SheetTitle& title = pages[i].title;
        if (i == 0 || title.netzteil != pages[i - 1].title.netzteil) {
            parts.push_back({make_bookmark(pdf, title.netzteil, page_objects[i]), {}});
        }
        if (!title.blatt.empty()) {
            parts.back().children.push_back(make_bookmark(pdf, title.blatt, page_objects[i]));
        }
    }
    QPDFObjectHandle outlines = empty_dictionary();
    outlines.replaceKey("/Type", name("/Outlines"));
    outlines = pdf.makeIndirectObject(outlines);
    std::vector<QPDFObjectHandle> items;
    std::size_t shown = 0;
    for (Bookmark& part : parts) {
        chain(part.item, part.children, part.children.size());
        items.push_back(part.item);
        shown += 1 + part.children.size();
    }
    chain(outlines, items, shown);
    pdf.getRoot().replaceKey("/Outlines", outlines);
}

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
    QPDF pdf;
    pdf.emptyPDF();
    describe(pdf, document.title());
    const QPDFObjectHandle resources = make_resources(pdf, document);
    std::vector<QPDFObjectHandle> pages;
    for (const PdfDocument::Page& page : document.pages()) {
        pages.push_back(make_page(pdf, document, page, resources));
        pdf.addPage(pages.back(), false);
    }
    add_bookmarks(pdf, document.pages(), pages);

    FilePipeline pipeline(file);
    QPDFWriter writer(pdf);
    writer.setOutputPipeline(&pipeline);
    writer.setMinimumPDFVersion("1.6");  // layers, page units
    writer.setObjectStreamMode(qpdf_o_disable);
    writer.setStreamDataMode(qpdf_s_preserve);
    writer.setDeterministicID(true);
    writer.write();
    file.commit();
}

}  // namespace veldra
