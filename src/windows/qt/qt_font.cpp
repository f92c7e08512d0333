#include "windows/qt/qt_font.h"

#include <algorithm>

#include "text/codepage.h"

namespace veldra {

QString to_qstring(std::string_view bytes) {
    return QString::fromStdString(to_utf8(bytes));
}

QString utf8_qstring(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QFont text_font(const FontSpec& font) {
    QFont result(to_qstring(font.face));
    result.setPointSizeF(std::max(font.points, 0.1));
    result.setBold(font.bold != 0);
    result.setItalic(font.italic != 0);
    result.setUnderline(font.underline != 0);
    result.setKerning(false);
    result.setHintingPreference(QFont::PreferNoHinting);
    // Grey, not coloured, edges: the picture may be saved and looked at elsewhere.
    result.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    return result;
}

}  // namespace veldra
