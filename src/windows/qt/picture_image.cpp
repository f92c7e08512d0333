#include "windows/qt/picture_image.h"

#include <QBuffer>
#include <QImageWriter>
#include <QSvgGenerator>
#include <cstring>

#include "os/files.h"
#include "plot/preview.h"
#include "text/fatal_error.h"
#include "windows/qt/painter_target.h"

namespace veldra {

namespace {

constexpr int svg_resolution = 96;  // dots per inch: one unit is a logical pixel

/// Hands over the labels that may be visible, from the lowest to the topmost.
template <typename Visit>
void visit_labels(const Session& session, Visit&& visit) {
    for (std::size_t i = 1; i < session.lbl_nubez.size(); ++i) {
        visit(session.lbl_nubez[i], session.lbl_nubez_font, session.settings.nubcolor);
    }
    for (const std::int32_t i : session.lbl_pubez_placed) {
        if (static_cast<std::size_t>(i) < session.lbl_pubez.size()) {
            visit(session.lbl_pubez[static_cast<std::size_t>(i)], session.lbl_pubez_font,
                  session.settings.pubcolor);
        }
    }
    if (session.window.lbl_legende_visible) {
        for (const LegendText& line : session.legende_texte) {
            visit(line.label, line.font, rgb(0, 0, 0));
        }
    }
}

}  // namespace

PictureMapping session_mapping(const Session& session, const QImage& image,
                               double device_pixel_ratio) {
    return picture_mapping(image, session.view.ansicht_rw_max - session.view.ansicht_rw_min,
                           session.view.ansicht_hw_max - session.view.ansicht_hw_min,
                           device_pixel_ratio);
}

namespace {

bool can_be_used_again(const QImage& image, QSize pixels) {
    return image.size() == pixels && image.format() == QImage::Format_RGB32 && image.isDetached();
}

}  // namespace

void clear_picture(QImage& image, QSize pixels, double device_pixel_ratio) {
    if (!can_be_used_again(image, pixels)) {
        image = empty_picture(pixels, device_pixel_ratio);
        return;
    }
    image.setDevicePixelRatio(1);
    image.fill(picture_background);
    set_logical_resolution(image, device_pixel_ratio);
}

void copy_picture(const QImage& from, QImage& image) {
    if (!can_be_used_again(image, from.size())) {
        image = from.copy();
        return;
    }
    image.setDevicePixelRatio(from.devicePixelRatio());
    image.setDotsPerMeterX(from.dotsPerMeterX());
    image.setDotsPerMeterY(from.dotsPerMeterY());
    std::memcpy(image.bits(), from.constBits(), static_cast<std::size_t>(from.sizeInBytes()));
}

QImage empty_picture(QSize pixels, double device_pixel_ratio) {
    QImage image(pixels, QImage::Format_RGB32);
    if (image.isNull()) {
        throw FatalError("Das Bild ist zu groß für den Arbeitsspeicher.");
    }
    image.fill(picture_background);
    set_logical_resolution(image, device_pixel_ratio);
    return image;
}

bool draw_layers(Session& session, TextMeasurer& measurer, UserInterface& ui, QImage& image,
                 double device_pixel_ratio, Printer* printer) {
    RasterTarget target(image, session_mapping(session, image, device_pixel_ratio));
    return draw_picture(session, target, {measurer, ui, [] {}, printer});
}

void draw_labels(const Session& session, LabelPainter& painter, QImage& image,
                 double device_pixel_ratio, CoveredTiles* covered) {
    const PictureMapping mapping = session_mapping(session, image, device_pixel_ratio);
    if (covered != nullptr && session.plotmodus == 1) {
        // Sheets may go all over the picture.
        covered->keep(canvas_of(image), 0, 0, image.width() - 1, image.height() - 1);
    }
    visit_labels(session, [&](const Label& label, const FontSpec& font, std::int32_t colour) {
        painter.paint(image, mapping, label, font, colour, covered);
    });
    RasterTarget target(image, mapping);
    draw_sheet_frames(session, target);
}

QImage render_picture(Session& session, TextMeasurer& measurer, UserInterface& ui, QSize pixels,
                      double device_pixel_ratio) {
    QImage image = empty_picture(pixels, device_pixel_ratio);
    draw_layers(session, measurer, ui, image, device_pixel_ratio);
    LabelPainter painter(measurer);
    draw_labels(session, painter, image, device_pixel_ratio);
    return image;
}

QByteArray png_bytes(const QImage& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "png");
    if (!writer.write(picture)) {
        throw FatalError("PNG kann nicht erzeugt werden: " + writer.errorString().toStdString());
    }
    return bytes;
}

namespace {

/// Texts of files may hold control characters, of which XML knows no more than tab and line ends;
/// they become blanks.
QByteArray without_controls(const QByteArray& svg) {
    constexpr unsigned char upper_lead = 0xC2;  // of U+0080 to U+009F
    QByteArray plain;
    plain.reserve(svg.size());
    for (qsizetype at = 0; at < svg.size(); ++at) {
        const auto byte = static_cast<unsigned char>(svg[at]);
        const auto next = static_cast<unsigned char>(at + 1 < svg.size() ? svg[at + 1] : '\0');
        const bool upper = byte == upper_lead && (next & 0xE0U) == 0x80U;
        const bool allowed = byte == '\t' || byte == '\n' || byte == '\r';
        plain += upper || (byte < ' ' && !allowed) || byte == 0x7F ? ' ' : svg[at];
        at += upper ? 1 : 0;
    }
    return plain;
}

}  // namespace

QByteArray svg_bytes(Session& session, TextMeasurer& measurer, UserInterface& ui, QSize size) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(svg_resolution);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    generator.setTitle(QStringLiteral("VELDRA"));
    QPainter painter;
    if (!painter.begin(&generator)) {
        throw FatalError("SVG kann nicht erzeugt werden.");
    }
    painter.fillRect(QRect(QPoint(0, 0), size), QColor(picture_background));
    const Viewport& view = session.view;
    PainterArea picture;
    picture.area = QRectF(QPointF(0, 0), size);
    PainterTarget target(painter, picture, PainterTarget::Labels::leave_out);
    target.Scale(0, view.ansicht_hw_max - view.ansicht_hw_min,
                 view.ansicht_rw_max - view.ansicht_rw_min, 0);
    draw_picture(session, target, {measurer, ui, [] {}});
    draw_sheet_frames(session, target);
    visit_labels(session, [&](const Label& label, const FontSpec& font, std::int32_t colour) {
        target.print_label(label, font, colour);
    });
    if (!painter.end()) {
        throw FatalError("SVG kann nicht erzeugt werden.");
    }
    return without_controls(bytes);
}

void write_picture_file(const std::string& path, const QByteArray& bytes) {
    ReplacedFile file(path);
    file.write({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    file.commit();
}

}  // namespace veldra
