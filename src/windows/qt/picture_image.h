#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

#include "model/session.h"
#include "text/user_interface.h"
#include "windows/qt/covered_tiles.h"
#include "windows/qt/label_painter.h"

namespace veldra {

class Printer;

/// Background of the picture.
constexpr QRgb picture_background = qRgb(255, 250, 240);

/// The mapping of the session's view to a picture of this size.
[[nodiscard]] PictureMapping session_mapping(const Session& session, const QImage& image,
                                             double device_pixel_ratio);

/// An empty picture of `pixels` device pixels.
[[nodiscard]] QImage empty_picture(QSize pixels, double device_pixel_ratio);

/// Makes an image an empty picture of `pixels` device pixels. Its memory is used again if it fits:
/// the system takes longer to hand out new pages than a step of the view takes to draw.
void clear_picture(QImage& image, QSize pixels, double device_pixel_ratio);

/// Makes an image the same picture as `from`, in the memory that it has if that fits.
void copy_picture(const QImage& from, QImage& image);

/// Draws all layers of the session, without the labels, on an empty picture: those of the screen,
/// or of the preview in plot mode, which looks at the application printer. Whatever drawing changes
/// of the session or says to the user, happens. False if the user gave the drawing up: the image
/// then holds a part of the layers.
bool draw_layers(Session& session, TextMeasurer& measurer, UserInterface& ui, QImage& image,
                 double device_pixel_ratio, Printer* printer = nullptr);

/// Paints the session's labels over its layers, and in plot mode sheets and legend. What they cover
/// is kept in `covered`, if given.
void draw_labels(const Session& session, LabelPainter& painter, QImage& image,
                 double device_pixel_ratio, CoveredTiles* covered = nullptr);

/// The whole picture, labels included. The session's picture size and view must be set.
[[nodiscard]] QImage render_picture(Session& session, TextMeasurer& measurer, UserInterface& ui,
                                    QSize pixels, double device_pixel_ratio);

/// The picture as a PNG file: the same bytes for the same picture.
[[nodiscard]] QByteArray png_bytes(const QImage& picture);

/// The whole picture as an SVG file of `size` logical pixels.
[[nodiscard]] QByteArray svg_bytes(Session& session, TextMeasurer& measurer, UserInterface& ui,
                                   QSize size);

/// Writes a picture file whole or not at all; throws FatalError, naming file and reason.
void write_picture_file(const std::string& path, const QByteArray& bytes);

}  // namespace veldra
