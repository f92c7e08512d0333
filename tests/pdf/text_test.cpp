// Texts of a document: where they stand, that they can be searched, and the fonts they come with.

#include <cmath>
#include <sstream>

#include <gmock/gmock.h>

#include "command_output.h"
#include "pdf_fixture.h"
#include "text/codepage.h"

namespace veldra::pdf_test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr double millimetres_per_point = 25.4 / 72;

FontSpec font(const char* face = "Arial", double points = 10) {
    FontSpec spec;
    spec.face = face;
    spec.points = points;
    return spec;
}

class PdfTexts : public PdfFile {
 protected:
    /// The text that a reader finds in the document.
    [[nodiscard]] std::string extracted() const {
        const CommandOutput output = run("pdftotext -layout -enc UTF-8 '" + file + "' -");
        EXPECT_EQ(output.status, 0) << output.text;
        return output.text;
    }
    [[nodiscard]] std::string extracted(const std::string& bytes, const FontSpec& spec) {
        write([&](PageTarget& p) { p.Print(bytes, 10, 20, spec, 0); });
        std::string text = extracted();
        text.erase(std::min(text.find('\n'), text.size()));
        return text.substr(std::min(text.find_first_not_of(' '), text.size()));
    }
    /// Dictionary of the first font.
    [[nodiscard]] static QPDFObjectHandle first_font(QPDF& pdf) {
        return QPDFPageDocumentHelper(pdf)
            .getAllPages()
            .at(0)
            .getAttribute("/Resources", false)
            .getKey("/Font")
            .getKey("/F0");
    }
    [[nodiscard]] const FaceMetrics& metrics(const FontSpec& spec) {
        return measurer.face_metrics(spec);
    }

    FontconfigMeasurer measurer;
};

TEST_F(PdfTexts, PrintPutsTheUpperLeftCornerOfTheBox) {
    const ShownPage page =
        drawn([](PageTarget& p) { p.Print("5208", 30, 40, font("Arial", 20), 0x0000ff); });
    ASSERT_EQ(page.texts.size(), 1U);
    const Text& text = page.texts[0];
    EXPECT_EQ(text.bytes, "5208");
    EXPECT_EQ(text.fill, "1 0 0 ");
    EXPECT_NEAR(text.size, 20 * millimetres_per_point, rounding);
    EXPECT_NEAR(text.base.x, 35, rounding);
    const double ascent = static_cast<double>(metrics(font()).ascent) * 20 * millimetres_per_point;
    EXPECT_NEAR(text.base.y, 45 + ascent, rounding);
}

TEST_F(PdfTexts, LabelsStandInTheirBoxes) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.Scale(0, 2870, 2000, 0);  // 10 m a millimetre
        Label label;
        label.caption = "P 1\r\nzweite";
        label.left = 100;
        label.top = 2770;
        p.LabelPlaced(LabelArray::lbl_pubez, 1, label, font(), 0);  // not visible
        label.visible = true;
        p.LabelPlaced(LabelArray::lbl_pubez, 1, label, font(), 0xff0000);
        label.caption = "  ";
        p.LabelPlaced(LabelArray::lbl_pubez, 1, label, font(), 0);
    });
    ASSERT_EQ(page.texts.size(), 2U);
    const FaceMetrics& face = metrics(font());
    const double size = 10 * millimetres_per_point;
    EXPECT_EQ(page.texts[0].bytes, "P 1");
    EXPECT_EQ(page.texts[0].fill, "0 0 1 ");
    EXPECT_NEAR(page.texts[0].base.x, 15, rounding);
    EXPECT_NEAR(page.texts[0].base.y, 15 + static_cast<double>(face.ascent) * size, rounding);
    EXPECT_EQ(page.texts[1].bytes, "zweite");
    EXPECT_NEAR(page.texts[1].base.y - page.texts[0].base.y,
                static_cast<double>(face.ascent + face.descent) * size, 2 * rounding);
}

TEST_F(PdfTexts, TurnedTextStandsWithItsBottomAtTheEndOfTheLine) {
    const ShownPage page = drawn([](PageTarget& p) {
        p.ForeColor(0x00ff00);
        p.Line(50, 50, 80, 50);
        p.TextRotated("Ziel", 300, 9, font());
        p.Line(50, 150, 80, 150);
        p.TextRotated("Ziel", 300, 11, font());
        p.Line(50, 200, 80, 200);
        p.TextRotated("Ziel", 0, 9, font());
        p.TextRotated("", 0, 9, font());
    });
    ASSERT_EQ(page.texts.size(), 3U);
    const double size = 10 * millimetres_per_point;
    const double descent = static_cast<double>(metrics(font()).descent) * size;
    double width = 0;
    for (const unsigned char c : {'Z', 'i', 'e', 'l'}) {
        width += static_cast<double>(metrics(font()).advance[c]) * size;
    }
    const double cosine = std::cos(M_PI / 6);
    EXPECT_EQ(page.texts[0].fill, "0 1 0 ");
    EXPECT_NEAR(page.texts[0].cosine, cosine, 1e-6);
    EXPECT_NEAR(page.texts[0].sine, 0.5, 1e-6);
    // The base line lies by the descent away from the end, to the upper left for this turn.
    EXPECT_NEAR(page.texts[0].base.x, 85 - descent * 0.5, rounding);
    EXPECT_NEAR(page.texts[0].base.y, 55 - descent * cosine, rounding);
    EXPECT_NEAR(page.texts[1].base.x, 85 - width * cosine - descent * 0.5, rounding);
    EXPECT_NEAR(page.texts[1].base.y, 155 + width * 0.5 - descent * cosine, rounding);
    EXPECT_NEAR(page.texts[2].base.x, 85, rounding);
    EXPECT_NEAR(page.texts[2].base.y, 205 - descent, rounding);
}

TEST_F(PdfTexts, UnderlinesAreDrawn) {
    FontSpec spec = font("Arial", 20);
    spec.underline = -1;
    const ShownPage page = drawn([&](PageTarget& p) { p.Print("Netz", 10, 10, spec, 0x0000ff); });
    ASSERT_EQ(page.paths.size(), 1U);
    const Path& line = page.paths[0];
    EXPECT_EQ(line.painted, "f");
    EXPECT_EQ(line.pen.fill, "1 0 0 ");
    const double width = measure_text(metrics(spec), 20, "Netz").width * 25.4 / 1440;
    const double base = page.texts.at(0).base.y;
    ASSERT_EQ(line.pieces.size(), 4U);
    EXPECT_NEAR(line.pieces[0].from.x, 15, rounding);
    EXPECT_NEAR(line.pieces[0].to.x, 15 + width, 2 * rounding);
    // Below the base line, within the descent, and thinner than a tenth of the letters.
    const double below = line.pieces[0].from.y - base;
    const double above = line.pieces[1].to.y - base;
    EXPECT_GT(above, 0);
    EXPECT_GT(below, above);
    EXPECT_LT(below, static_cast<double>(metrics(spec).descent) * 20 * millimetres_per_point);
    EXPECT_LT(below - above, 0.7);
}

TEST_F(PdfTexts, CanBeSearched) {
    EXPECT_EQ(extracted("Gr\xF6\xDF"
                        "e \xC4\xD6\xDC\xE4\xFC (100 %) \\ 5\x80",
                        font()),
              "Größe ÄÖÜäü (100 %) \\ 5€");
    EXPECT_EQ(extracted("\x84Stra\xDF"
                        "e\x93 \x96 \xB5m\xB2 \xB0",
                        font("Times New Roman")),
              "„Straße“ – µm² °");
}

TEST_F(PdfTexts, EveryCharacterOfTheCodePage) {
    for (unsigned row = 0x20; row < 0x100; row += 16) {
        std::string bytes;
        for (unsigned byte = row; byte < row + 16; ++byte) {
            const char32_t code = code_point(static_cast<unsigned char>(byte));
            const bool blank = byte == 0x20 || byte == 0xA0 || byte == 0xAD;
            const bool undefined = code >= 0x7F && code < 0xA0;
            if (!blank && !undefined) {
                bytes += static_cast<char>(byte);
            }
        }
        EXPECT_EQ(extracted(bytes, font()), to_utf8(bytes)) << row;
    }
}

TEST_F(PdfTexts, BytesWithoutACharacterDoNoHarm) {
    std::string bytes = "a";
    for (unsigned byte = 0; byte < 0x20; ++byte) {
        bytes += byte == '\n' ? '.' : static_cast<char>(byte);
    }
    bytes +=
        "\x7F\x81\x8D\x8F\x90\x9D\xA0\xAD"
        "b";
    write([&](PageTarget& p) { p.Print(bytes, 10, 20, font(), 0); });
    EXPECT_EQ(run("qpdf --check '" + file + "'").status, 0);
    const CommandOutput picture =
        run("pdftoppm -r 30 '" + file + "' '" + folder.path("bild") + "'");
    EXPECT_EQ(picture.status, 0);
    EXPECT_EQ(picture.text, "");
    const std::string text = extracted();
    EXPECT_THAT(text, HasSubstr("a"));
    EXPECT_THAT(text, HasSubstr("b"));
    // Tabs, ends of lines and the soft hyphen are not written at all.
    const ShownPage page = shown();
    ASSERT_EQ(page.texts.size(), 1U);
    EXPECT_EQ(page.texts[0].bytes.find_first_of("\t\f\r\xAD"), std::string::npos);
    EXPECT_EQ(page.texts[0].bytes.size(), bytes.size() - 4);
}

TEST_F(PdfTexts, FontsAreSubsetsOfWhatTheSystemHasForThem) {
    write([](PageTarget& p) { p.Print("ABC", 10, 20, font(), 0); });
    const auto pdf = document();
    QPDFObjectHandle dictionary = first_font(*pdf);
    EXPECT_EQ(dictionary.getKey("/Subtype").getName(), "/TrueType");
    EXPECT_EQ(dictionary.getKey("/Encoding").getName(), "/WinAnsiEncoding");
    EXPECT_THAT(dictionary.getKey("/BaseFont").getName(),
                ::testing::MatchesRegex("/[A-Z][A-Z][A-Z][A-Z][A-Z][A-Z]\\+LiberationSans"));
    EXPECT_EQ(dictionary.getKey("/FirstChar").getIntValue(), 'A');
    EXPECT_EQ(dictionary.getKey("/LastChar").getIntValue(), 'C');
    // Widths of A, B and C in Arial and its substitutes, thousandths of the size.
    std::vector<double> widths;
    for (auto& width : dictionary.getKey("/Widths").getArrayAsVector()) {
        widths.push_back(std::round(width.getNumericValue()));
    }
    EXPECT_THAT(widths, ElementsAre(667, 667, 722));
    QPDFObjectHandle descriptor = dictionary.getKey("/FontDescriptor");
    QPDFObjectHandle embedded = descriptor.getKey("/FontFile2");
    const auto bytes = embedded.getStreamData(qpdf_dl_all);
    EXPECT_EQ(static_cast<long long>(bytes->getSize()),
              embedded.getDict().getKey("/Length1").getIntValue());
    EXPECT_LT(bytes->getSize(), 60000U);
    EXPECT_THAT(run("pdffonts '" + file + "'").text, HasSubstr("yes yes yes"));
}

TEST_F(PdfTexts, OneFontForEachFaceAndStyle) {
    write([](PageTarget& p) {
        FontSpec bold = font();
        bold.bold = -1;
        p.Print("a", 10, 20, font(), 0);
        p.Print("b", 10, 30, bold, 0);
        p.Print("c", 10, 40, font("Arial", 33), 0);
        p.Print("d", 10, 50, font("arial"), 0);
    });
    const ShownPage page = shown();
    ASSERT_EQ(page.texts.size(), 4U);
    EXPECT_EQ(page.texts[0].font, page.texts[2].font);
    EXPECT_EQ(page.texts[0].font, page.texts[3].font);
    EXPECT_NE(page.texts[0].font, page.texts[1].font);
}

TEST_F(PdfTexts, FacesThatTheSystemLacksAreReplaced) {
    EXPECT_EQ(extracted("Ersatz", font("Gibt es nicht")), "Ersatz");
    EXPECT_EQ(extracted("Ersatz", font("")), "Ersatz");
    EXPECT_EQ(extracted("Ersatz", font("\xC4\x81\"',:-=\\")), "Ersatz");
}

/// Left and right end of what is dark in a picture of the page, mm.
std::pair<double, double> dark_columns(const std::string& pgm, double dots) {
    std::istringstream in(pgm);
    std::string magic;
    std::size_t width = 0;
    std::size_t height = 0;
    int most = 0;
    in >> magic >> width >> height >> most;
    in.get();
    std::size_t left = width;
    std::size_t right = 0;
    for (std::size_t i = 0; i < width * height; ++i) {
        if (in.get() < 128) {
            left = std::min(left, i % width);
            right = std::max(right, i % width);
        }
    }
    return {static_cast<double>(left) * 25.4 / dots, static_cast<double>(right + 1) * 25.4 / dots};
}

/// A family of fonts in this form, none if the system lacks it.
std::string family_of(const std::string& pattern) {
    std::string family = run("fc-list '" + pattern + "' family | sort | head -1").text;
    family.erase(std::min({family.find(','), family.find('\n'), family.size()}));
    return family;
}

TEST_F(PdfTexts, PostScriptOutlinesAreEmbedded) {
    const std::string family = family_of(":fontformat=CFF:lang=de");
    if (family.empty()) {
        GTEST_SKIP() << "this system has no font with PostScript outlines";
    }
    const std::string bytes = "\xC4pfel (7) \x80 \x81";
    EXPECT_EQ(extracted(bytes, font(family.c_str())), to_utf8(bytes)) << family;
    EXPECT_EQ(run("qpdf --check '" + file + "'").status, 0);
    EXPECT_THAT(run("pdffonts '" + file + "'").text, HasSubstr("Type 1C"));
    const auto pdf = document();
    QPDFObjectHandle dictionary = first_font(*pdf);
    EXPECT_EQ(dictionary.getKey("/Subtype").getName(), "/Type1");
    const CommandOutput picture =
        run("pdftoppm -r 30 '" + file + "' '" + folder.path("bild") + "'");
    EXPECT_EQ(picture.text, "");
}

/// A line of nothing but tabs shows nothing and takes no room; a face far off the page is asked for
/// its width only.
TEST_F(PdfTexts, FacesWithoutALetterOnThePageAreNotWritten) {
    FontSpec made_up = font("Standard Symbols PS", 60);
    made_up.bold = -1;
    made_up.italic = -1;
    write([&](PageTarget& p) {
        p.Print("\t\t", 10, 20, made_up, 0);
        p.Print("fern", 90000, 20, made_up, 0);
        p.Print("B", 10, 40, font(), 0);
    });
    const auto pdf = document();
    QPDFObjectHandle fonts = QPDFPageDocumentHelper(*pdf)
                                 .getAllPages()
                                 .at(0)
                                 .getAttribute("/Resources", false)
                                 .getKey("/Font");
    ASSERT_EQ(fonts.getKeys().size(), 1U);
    EXPECT_NE(fonts.getKey(*fonts.getKeys().begin()).getKey("/Subtype").getName(), "/Type3");
    EXPECT_EQ(run("qpdf --check '" + file + "'").status, 0);
    EXPECT_THAT(extracted(), HasSubstr("B"));
}

/// The document draws the letters itself where there is no italic or bold of a face.
TEST_F(PdfTexts, FacesThatAreMadeUpAreDrawn) {
    const std::string family = family_of(":family=Standard Symbols PS");
    if (family.empty()) {
        GTEST_SKIP() << "this system lacks the family that has one style only";
    }
    FontSpec spec = font(family.c_str(), 60);
    spec.bold = -1;
    spec.italic = -1;
    write([&](PageTarget& p) { p.Print("a7", 10, 20, spec, 0); });
    EXPECT_EQ(run("qpdf --check '" + file + "'").status, 0);
    const auto pdf = document();
    EXPECT_EQ(first_font(*pdf).getKey("/Subtype").getName(), "/Type3");
    EXPECT_THAT(extracted(), HasSubstr("a7"));
    const CommandOutput picture =
        run("pdftoppm -gray -r 50 '" + file + "' '" + folder.path("bild") + "'");
    EXPECT_EQ(picture.text, "");
    const auto [left, right] =
        dark_columns(testing_support::file_bytes(folder.path("bild-1.pgm")), 50);
    EXPECT_NEAR(left, 16, 2);
    EXPECT_GT(right, 35);
}

TEST_F(PdfTexts, SizesAreThoseOfTheMeasurer) {
    PdfPrinter printer(asked);
    const FontSpec spec = font("Arial", 72);
    // 556 thousandths of an inch for each digit; the line goes 0.905 up and 0.212 down.
    EXPECT_NEAR(printer.TextWidth("1234", spec), 4 * 0.5562 * 25.4, 0.01);
    EXPECT_NEAR(printer.TextHeight("1234", spec), (0.905 + 0.212) * 25.4, 0.05);
    EXPECT_NEAR(printer.TextHeight("", spec), (0.905 + 0.212) * 25.4, 0.05);
    const TextExtent extent = measure_text(printer.measurer().face_metrics(spec), 72, "1234");
    EXPECT_DOUBLE_EQ(printer.TextWidth("1234", spec), extent.width * 25.4 / 1440);
}

TEST_F(PdfTexts, TakeTheRoomThatWasMeasured) {
    const FontSpec spec = font("Arial", 40);
    PdfPrinter printer(asked);
    const std::string text =
        "H H\xDC"
        "HH";
    write(printer, [&](PageTarget& p) { p.Print(text, 20, 20, spec, 0); });
    ASSERT_EQ(run("pdftoppm -gray -r 300 '" + file + "' '" + folder.path("bild") + "'").status, 0);
    const auto [left, right] =
        dark_columns(testing_support::file_bytes(folder.path("bild-1.pgm")), 300);
    // An H has the same room to both sides; its stems start 0.079 of the size inside of it.
    const double bearing = 0.079 * 40 * millimetres_per_point;
    EXPECT_NEAR(left, 25 + bearing, 0.15);
    EXPECT_NEAR(right, 25 + printer.TextWidth(text, spec) - bearing, 0.15);
}

}  // namespace
}  // namespace veldra::pdf_test
