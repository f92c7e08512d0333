// What a document says of itself and of its pages.

#include <fstream>

#include <gmock/gmock.h>
#include <sys/resource.h>

#include "child_process.h"
#include "command_output.h"
#include "pdf_fixture.h"

namespace veldra::pdf_test {
namespace {

using ::testing::ElementsAre;

class PdfDocuments : public PdfFile {
 protected:
    /// Pages with these titles, each with a line.
    void write_pages(PdfPrinter& printer, const std::vector<SheetTitle>& titles) const {
        ASSERT_TRUE(printer.begin_job({"Netz M\xFCnchen"}));
        for (const SheetTitle& title : titles) {
            printer.begin_sheet(title);
            printer.page().Line(10, 10, 20, 20);
            printer.NewPage();
        }
        printer.end_job();
    }
    void write_pages(const std::vector<SheetTitle>& titles) {
        PdfPrinter printer(asked);
        write_pages(printer, titles);
    }
};

TEST_F(PdfDocuments, BoxesArePapersToAHundredthOfAMillimetre) {
    PdfPrinter printer(asked);
    printer.set_PaperSize(272);  // A0
    printer.set_Orientation(2);
    write_pages(printer, {{"A", "1"}});
    const auto pdf = document();
    auto page = QPDFPageDocumentHelper(*pdf).getAllPages().at(0).getObjectHandle();
    for (const char* box : {"/MediaBox", "/CropBox", "/TrimBox"}) {
        const auto sides = page.getKey(box).getArrayAsRectangle();
        EXPECT_EQ(sides.llx, 0) << box;
        EXPECT_EQ(sides.lly, 0) << box;
        EXPECT_NEAR(sides.urx * 25.4 / 72, 1189, 0.001) << box;
        EXPECT_NEAR(sides.ury * 25.4 / 72, 841, 0.001) << box;
    }
    EXPECT_FALSE(page.hasKey("/UserUnit"));
}

TEST_F(PdfDocuments, CatalogueAsksForTrueScaleAndGerman) {
    write_pages({{"A", "1"}});
    const auto pdf = document();
    QPDFObjectHandle root = pdf->getRoot();
    EXPECT_EQ(root.getKey("/ViewerPreferences").getKey("/PrintScaling").getName(), "/None");
    EXPECT_TRUE(root.getKey("/ViewerPreferences").getKey("/DisplayDocTitle").getBoolValue());
    EXPECT_EQ(root.getKey("/Lang").getUTF8Value(), "de");
    QPDFObjectHandle information = pdf->getTrailer().getKey("/Info");
    EXPECT_EQ(information.getKey("/Title").getUTF8Value(), "Netz München");
    EXPECT_FALSE(information.hasKey("/CreationDate"));
    EXPECT_FALSE(information.hasKey("/ModDate"));
}

TEST_F(PdfDocuments, LayersCanBeSwitched) {
    write_pages({{"A", "1"}});
    const auto pdf = document();
    QPDFObjectHandle layers = pdf->getRoot().getKey("/OCProperties");
    std::vector<std::string> names;
    for (auto& group : layers.getKey("/D").getKey("/Order").getArrayAsVector()) {
        EXPECT_EQ(group.getKey("/Type").getName(), "/OCG");
        EXPECT_TRUE(group.isIndirect());
        names.push_back(group.getKey("/Name").getUTF8Value());
    }
    EXPECT_THAT(names, ElementsAre("Rahmen", "Grenzen", "Nummerierungsbezirke", "Beobachtungen",
                                   "Signaturen", "Werte", "Beschriftung"));
    EXPECT_EQ(layers.getKey("/OCGs").getArrayNItems(), 7);
    EXPECT_EQ(layers.getKey("/D").getKey("/ON").getArrayNItems(), 7);
}

/// Bookmarks as "title@page", those below in parentheses.
std::string outline(QPDFObjectHandle parent, const std::vector<QPDFPageObjectHelper>& pages) {
    std::string text;
    std::string last;
    for (QPDFObjectHandle item = parent.getKey("/First"); item.isDictionary();
         item = item.getKey("/Next")) {
        std::size_t page = 0;
        while (page < pages.size() && !pages[page].getObjectHandle().isSameObjectAs(
                                          item.getKey("/Dest").getArrayItem(0))) {
            ++page;
        }
        text += text.empty() ? "" : " ";
        text += item.getKey("/Title").getUTF8Value() + "@" + std::to_string(page + 1);
        if (item.hasKey("/First")) {
            text += " (" + outline(item, pages) + ")";
        }
        EXPECT_TRUE(item.getKey("/Parent").isSameObjectAs(parent));
        last = item.unparse();
    }
    EXPECT_EQ(parent.getKey("/Last").unparse(), last);
    return text;
}

TEST_F(PdfDocuments, BookmarksNamePartsAndTheirSheets) {
    write_pages({{"S\xFC"
                  "d",
                  "Blatt 1.1"},
                 {"S\xFC"
                  "d",
                  "Blatt 1.2"},
                 {"Nord", ""},
                 {"S\xFC"
                  "d",
                  "Blatt 1.1"}});
    const auto pdf = document();
    QPDFObjectHandle outlines = pdf->getRoot().getKey("/Outlines");
    EXPECT_EQ(outline(outlines, QPDFPageDocumentHelper(*pdf).getAllPages()),
              "Süd@1 (Blatt 1.1@1 Blatt 1.2@2) Nord@3 Süd@4 (Blatt 1.1@4)");
    EXPECT_EQ(outlines.getKey("/Count").getIntValue(), 6);
}

TEST_F(PdfDocuments, EqualInputGivesEqualBytes) {
    const auto draw = [](PageTarget& p) {
        FontSpec font;
        font.underline = -1;
        for (int i = 0; i < 3000; ++i) {
            const auto x = static_cast<float>(i % 190);
            p.begin_layer(i % 2 == 0 ? PageLayer::signatures : PageLayer::labels);
            p.Circle(x, static_cast<float>(i) * 0.09F, 1 + static_cast<float>(i % 7));
            p.Print("P" + std::to_string(i), x, i * 0.09, font, i);
        }
    };
    write(draw);
    const std::string first = testing_support::file_bytes(file);
    std::filesystem::remove(file);
    file = folder.path("anderer Name.pdf");
    write(draw);
    EXPECT_EQ(testing_support::file_bytes(file), first);
    EXPECT_GT(first.size(), 10000U);
    write([&](PageTarget& p) {
        draw(p);
        p.Line(0, 0, 1, 1);
    });
    EXPECT_NE(testing_support::file_bytes(file), first);
}

TEST_F(PdfDocuments, ReadersFindNoFault) {
    write_pages({{"A", "1"}, {"A", "2"}, {"(B\\", ")"}});
    const CommandOutput check = run("qpdf --check '" + file + "'");
    EXPECT_EQ(check.status, 0) << check.text;
    EXPECT_THAT(check.text, ::testing::HasSubstr("No syntax or stream encoding errors found"));
    const CommandOutput picture =
        run("pdftoppm -r 30 '" + file + "' '" + folder.path("bild") + "'");
    EXPECT_EQ(picture.status, 0);
    EXPECT_EQ(picture.text, "");
    EXPECT_TRUE(std::filesystem::exists(folder.path("bild-3.ppm")));
}

TEST_F(PdfDocuments, LargePagesComeInPieces) {
    // About 5 MB of operators, beyond what is packed at once.
    const ShownPage page = drawn([](PageTarget& p) {
        for (int i = 0; i < 200000; ++i) {
            const auto x = static_cast<float>(i % 1999) * 0.1F;
            p.Line(x, static_cast<float>(i % 283), x, static_cast<float>(i % 281));
        }
    });
    std::size_t segments = 0;
    for (const Path& path : page.paths) {
        segments += path.pieces.size();
    }
    EXPECT_EQ(segments, 200000U);
    const auto pdf = document();
    EXPECT_GT(QPDFPageDocumentHelper(*pdf).getAllPages().at(0).getPageContents().size(), 3U);
}

/// Most memory, MB, that a process of its own has had after a document of so many full pages.
int memory_after(const PdfPrinter::AskFileName& asked, int pages) {
    return testing_support::run_in_child([&] {
        PdfPrinter printer(asked);
        printer.begin_job({"Titel"});
        for (int page = 0; page < pages; ++page) {
            printer.begin_sheet({"Netzteil", std::to_string(page)});
            std::uint32_t random = 1;
            for (int i = 0; i < 60000; ++i) {
                random = random * 1664525U + 1013904223U;
                const float x = static_cast<float>(random >> 16U) * 0.003F;
                const float y = static_cast<float>(random >> 8U & 0xFFFFU) * 0.004F;
                printer.page().Line(x, y, y * 0.7F, x);
            }
            printer.NewPage();
        }
        printer.end_job();
        rusage usage{};
        ::getrusage(RUSAGE_SELF, &usage);
        constexpr long most_that_can_be_told = 255;
        return static_cast<int>(std::min(usage.ru_maxrss / 1024, most_that_can_be_told));
    });
}

TEST_F(PdfDocuments, MemoryDoesNotGrowWithTheNumberOfSheets) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the address sanitizer keeps what has been freed";
#endif
    const int few = memory_after(asked, 2);
    const auto size_of_few = std::filesystem::file_size(file);
    const int many = memory_after(asked, 32);
    const auto size_of_many = std::filesystem::file_size(file);
    EXPECT_GT(size_of_many - size_of_few, 25000000U);
    EXPECT_LT(many, 255);
    EXPECT_LT(many - few, 8) << few << " " << many;
}

/// Most memory, kB, of a process of its own that has written a document of so many small pages.
int memory_after_small(const PdfPrinter::AskFileName& asked, const std::string& note, int pages) {
    testing_support::run_in_child([&] {
        PdfPrinter printer(asked);
        printer.begin_job({"Titel"});
        for (int page = 0; page < pages; ++page) {
            printer.begin_sheet({"Netzteil " + std::to_string(page / 100), std::to_string(page)});
            printer.page().Line(1, 2, 3, 4);
            printer.NewPage();
        }
        printer.end_job();
        rusage usage{};
        ::getrusage(RUSAGE_SELF, &usage);
        std::ofstream(note) << usage.ru_maxrss;
        return 0;
    });
    return std::stoi(testing_support::file_bytes(note));
}

TEST_F(PdfDocuments, MemoryDoesNotGrowWithManySmallSheets) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the address sanitizer keeps what has been freed";
#endif
    const int few = memory_after_small(asked, folder.path("few"), 100);
    const int many = memory_after_small(asked, folder.path("many"), 20000);
    EXPECT_LT(many - few, 1500) << "below 80 bytes a sheet";
    const auto pdf = document();
    EXPECT_EQ(QPDFPageDocumentHelper(*pdf).getAllPages().size(), 20000U);
    EXPECT_EQ(pdf->getRoot().getKey("/Outlines").getKey("/Count").getIntValue(), 20200);
}

}  // namespace
}  // namespace veldra::pdf_test
