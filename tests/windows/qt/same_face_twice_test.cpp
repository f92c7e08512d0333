// Picture and documents take a face from the same file, also where the system has two.

#include <QFont>
#include <QRawFont>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "pdf/font_book.h"
#include "qt_application.h"
#include "temp_file.h"
#include "windows/qt/qt_font.h"

namespace veldra {
namespace {

using testing_support::file_bytes;
using testing_support::TempFolder;

std::uint32_t big_endian(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8U | static_cast<unsigned char>(bytes.at(at + i));
    }
    return value;
}

/// Where the table "head" of the first face begins in a font file.
std::size_t place_of_head(const std::string& font) {
    const std::size_t face = font.compare(0, 4, "ttcf") == 0 ? big_endian(font, 12) : 0;
    const std::size_t entry = font.find("head", face);
    return big_endian(font, entry + 8);
}

constexpr std::size_t head_size = 54;

class FileOfAFace : public ::testing::TestWithParam<FontSpec> {};

TEST_P(FileOfAFace, IsTheSameInPictureAndDocument) {
    veldra_test::qt_application();
    const std::string file = file_bytes(FontBook().find(GetParam()).file().path);
    const QByteArray seen = QRawFont::fromFont(text_font(GetParam())).fontTable("head");
    EXPECT_EQ(seen.toStdString(), file.substr(place_of_head(file), head_size));
}

INSTANTIATE_TEST_SUITE_P(, FileOfAFace,
                         ::testing::Values(FontSpec{"Arial", 10, 0, 0, 0},
                                           FontSpec{"Arial", 10, -1, 0, 0},
                                           FontSpec{"Times New Roman", 10, 0, -1, 0},
                                           FontSpec{"Courier New", 10, -1, -1, 0}));

/// What a second package of the same font differs in.
struct Package {
    const char* name;
    int revision;           ///< added to that of the font
    bool before_the_other;  ///< in the configuration
};

class TwoPackages : public ::testing::TestWithParam<Package> {
 protected:
    /// The faces of the system once more, of another revision and another time.
    void copy_faces() const {
        std::filesystem::create_directories(folder_.path("fonts"));
        for (const char* name : {"Arial", "Times New Roman", "Courier New"}) {
            copy_face({name, 10, 0, 0, 0});
            copy_face({name, 10, -1, 0, 0});
            copy_face({name, 10, 0, -1, 0});
            copy_face({name, 10, -1, -1, 0});
        }
    }

    void copy_face(const FontSpec& font) const {
        const std::filesystem::path file = FontBook().find(font).file().path;
        std::string bytes = file_bytes(file.string());
        const std::size_t head = place_of_head(bytes);
        constexpr std::size_t whole_revision = 5;  // lower byte
        constexpr std::size_t modified = 35;       // lowest byte
        bytes[head + whole_revision] =
            static_cast<char>(bytes[head + whole_revision] + GetParam().revision);
        bytes[head + modified] = static_cast<char>(bytes[head + modified] ^ 1);
        (void)folder_.file("fonts/" + file.filename().string(), bytes);
    }

    [[nodiscard]] std::string configuration() const {
        const std::string system =
            "<include ignore_missing=\"yes\">/etc/fonts/fonts.conf</include>\n";
        const std::string copy = "<dir>" + folder_.path("fonts") + "</dir>\n";
        return folder_.file("fonts.conf",
                            "<?xml version=\"1.0\"?>\n<fontconfig>\n<cachedir>" +
                                folder_.path("cache") + "</cachedir>\n" +
                                (GetParam().before_the_other ? copy + system : system + copy) +
                                "</fontconfig>\n");
    }

    TempFolder folder_;
};

TEST_P(TwoPackages, OfAFontGiveOneFile) {
    copy_faces();
    const std::string command = "FONTCONFIG_FILE='" + configuration() + "' '" +
                                std::filesystem::read_symlink("/proc/self/exe").string() +
                                "' --gtest_filter='*FileOfAFace*:*PdfFonts*' > '" +
                                folder_.path("output") + "' 2>&1";
    const int code = std::system(command.c_str());
    const std::string output = file_bytes(folder_.path("output"));
    EXPECT_EQ(code, 0) << output;
    EXPECT_THAT(output, ::testing::HasSubstr("IsTheSameInPictureAndDocument/3"));
}

INSTANTIATE_TEST_SUITE_P(
    , TwoPackages,
    ::testing::Values(Package{"older_first", -1, true}, Package{"older_last", -1, false},
                      Package{"same_first", 0, true}, Package{"same_last", 0, false},
                      Package{"newer_first", 1, true}, Package{"newer_last", 1, false}),
    [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace veldra
