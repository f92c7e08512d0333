#pragma once

#include <qpdf/QPDF.hh>

#include "pdf/document.h"

namespace veldra {

/// Gives a font dictionary the glyphs of these bytes as drawings, with matrix, box and encoding.
void add_outlines(QPDF& pdf, QPDFObjectHandle font, const FontFace& face, const UsedBytes& used);

}  // namespace veldra
