#include "model/text_measurer.h"

#include <algorithm>

#include "text/length_units.h"

namespace veldra {

namespace {}

TextExtent measure_text(const FaceMetrics& face, double points, std::string_view text) {
    double widest = 0;
    double width = 0;
    int lines = 1;
    for (const char c : text) {
        if (c == '\n') {
            widest = std::max(widest, width);
            width = 0;
            ++lines;
        } else if (c != '\r') {
            width += static_cast<double>(face.advance[static_cast<unsigned char>(c)]);
        }
    }
    widest = std::max(widest, width);
    const double line = static_cast<double>(face.ascent) + static_cast<double>(face.descent);
    return {widest * points * twips_per_point, lines * line * points * twips_per_point};
}

}  // namespace veldra
