// The faces and metrics that documents use are those of the picture.

#include <gmock/gmock.h>

#include "pdf/font_book.h"
#include "qt_application.h"
#include "windows/qt/qt_text_measurer.h"

namespace veldra {
namespace {

class PdfFonts : public ::testing::TestWithParam<FontSpec> {};

TEST_P(PdfFonts, HaveTheMetricsOfThePicture) {
    veldra_test::qt_application();
    QtTextMeasurer picture;
    FontconfigMeasurer document;
    const FaceMetrics& seen = picture.face_metrics(GetParam());
    const FaceMetrics& printed = document.face_metrics(GetParam());
    for (unsigned byte = 0; byte < 256; ++byte) {
        if (byte != '\t') {  // its width in the picture is that of a tabulator
            EXPECT_NEAR(printed.advance[byte], seen.advance[byte], 1e-3F) << byte;
        }
    }
    EXPECT_NEAR(printed.ascent, seen.ascent, 1e-3F);
    EXPECT_NEAR(printed.descent, seen.descent, 1e-3F);
}

FontSpec font(const char* face, std::int16_t bold, std::int16_t italic) {
    return {face, 10, bold, italic, 0};
}

INSTANTIATE_TEST_SUITE_P(, PdfFonts,
                         ::testing::Values(font("Arial", 0, 0), font("Arial", -1, 0),
                                           font("Arial", 0, -1), font("Arial", -1, -1),
                                           font("Times New Roman", 0, 0),
                                           font("Times New Roman", -1, -1),
                                           font("Courier New", 0, 0), font("DejaVu Sans", -1, 0),
                                           font("Nimbus Sans", 0, 0), font("Helvetica", 0, 0),
                                           font("MS Sans Serif", 0, 0), font("Verdana", 0, 0),
                                           font("Unbekannte Schrift", 0, 0)));

}  // namespace
}  // namespace veldra
