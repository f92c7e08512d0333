#include "picture_file.h"

#include <QImageWriter>
#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <unordered_map>
#include <utility>
#include <vector>

QImage with_colour_table(const QImage& picture) {
    constexpr std::size_t most_colours = 256;
    const QImage opaque = picture.convertToFormat(QImage::Format_RGB32);
    std::unordered_map<QRgb, int> counts;
    for (int y = 0; y < opaque.height(); ++y) {
        for (int x = 0; x < opaque.width(); ++x) {
            ++counts[opaque.pixel(x, y)];
        }
    }
    std::vector<std::pair<QRgb, int>> ranked(counts.begin(), counts.end());
    std::sort(ranked.begin(), ranked.end(), [](const auto& one, const auto& other) {
        return one.second != other.second ? one.second > other.second : one.first < other.first;
    });
    ranked.resize(std::min(ranked.size(), most_colours));
    QList<QRgb> table;
    for (const auto& [colour, count] : ranked) {
        table.append(colour);
    }
    return opaque.convertToFormat(QImage::Format_Indexed8, table,
                                  Qt::ThresholdDither | Qt::AvoidDither);
}

void write_picture(const QImage& picture, const QString& path) {
    constexpr int smallest_file = 0;  // the writer's quality is the inverse of its compression
    QImageWriter writer(path, "png");
    writer.setQuality(smallest_file);
    if (!writer.write(with_colour_table(picture))) {
        throw std::runtime_error(
            (path + QStringLiteral(": ") + writer.errorString()).toStdString());
    }
}
