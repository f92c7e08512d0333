#pragma once

#include <qpdf/QPDF.hh>

#include "pdf/document.h"

namespace veldra {

/// Adds a font with the glyphs of these bytes to a document and gives its dictionary. Codes are the
/// bytes of Windows-1252 and lead back to their characters, so that texts can be searched. Faces
/// are embedded as they are, TrueType or PostScript; those for which that is not possible (variable
/// or slanted ones, symbols, glyphs without names) have their outlines drawn by the document.
[[nodiscard]] QPDFObjectHandle embed_font(QPDF& pdf, const FontFace& face, const UsedBytes& used);

}  // namespace veldra
