#pragma once

#include <QImage>
#include <QString>

/// The picture with a table of at most 256 colours: those it has if they are that few, otherwise
/// one of each kind and the commonest, the others becoming the nearest of these.
[[nodiscard]] QImage with_colour_table(const QImage& picture);

/// Writes a picture as a small PNG. Throws std::runtime_error naming the file if that fails.
void write_picture(const QImage& picture, const QString& path);
