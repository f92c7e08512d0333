#pragma once

#include <QFont>
#include <QString>
#include <string_view>

#include "model/text_measurer.h"

namespace veldra {

/// Windows-1252 bytes as the toolkit's text.
[[nodiscard]] QString to_qstring(std::string_view bytes);
/// UTF-8, as the messages and captions of the core are, as the toolkit\'s text.
[[nodiscard]] QString utf8_qstring(std::string_view utf8);

/// The font of a text in the picture or on a page, in points: no kerning, no merging of letters,
/// so that the width is the sum over the bytes.
[[nodiscard]] QFont text_font(const FontSpec& font);

}  // namespace veldra
