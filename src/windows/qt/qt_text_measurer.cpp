#include "windows/qt/qt_text_measurer.h"

#include <QFontMetricsF>

#include "windows/qt/qt_font.h"

namespace veldra {

namespace {

FaceMetrics measure_face(const FontSpec& spec) {
    // Large enough that rounding to the pixel grid vanishes; the common size of a font's own units.
    constexpr int size = 2048;
    QFont font = text_font(spec);
    font.setPixelSize(size);
    const QFontMetricsF metrics(font);
    FaceMetrics face;
    for (std::size_t byte = 0; byte < face.advance.size(); ++byte) {
        const char c = static_cast<char>(byte);
        face.advance[byte] = static_cast<float>(
            metrics.horizontalAdvance(to_qstring(std::string_view(&c, 1))) / size);
    }
    face.ascent = static_cast<float>(metrics.ascent() / size);
    face.descent = static_cast<float>(metrics.descent() / size);
    return face;
}

}  // namespace

const FaceMetrics& QtTextMeasurer::face_metrics(const FontSpec& font) {
    std::unique_ptr<FaceMetrics>& face = faces_[{font.face, font.bold != 0, font.italic != 0}];
    if (!face) {
        face = std::make_unique<FaceMetrics>(measure_face(font));
    }
    return *face;
}

}  // namespace veldra
