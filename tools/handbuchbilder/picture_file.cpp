#include "picture_file.h"

#include <QImageWriter>
#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

constexpr qsizetype most_colours = 256;

/// Whether two colours look alike.
bool near(QRgb one, QRgb other) {
    constexpr int step = 24;
    return std::abs(qRed(one) - qRed(other)) < step &&
           std::abs(qGreen(one) - qGreen(other)) < step &&
           std::abs(qBlue(one) - qBlue(other)) < step;
}

/// The colours of a picture, the commonest first.
std::vector<QRgb> ranked_colours(const QImage& opaque) {
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
    std::vector<QRgb> colours;
    colours.reserve(ranked.size());
    for (const auto& [colour, count] : ranked) {
        colours.push_back(colour);
    }
    return colours;
}

/// At most so many colours of the ranked ones: first one of each kind, so that a thin line keeps
/// its colour among the many shades of letters, then the commonest.
QList<QRgb> colour_table(const std::vector<QRgb>& ranked) {
    QList<QRgb> table;
    for (const QRgb colour : ranked) {
        const auto alike = [colour](QRgb taken) { return near(colour, taken); };
        if (table.size() < most_colours && std::none_of(table.begin(), table.end(), alike)) {
            table.append(colour);
        }
    }
    for (const QRgb colour : ranked) {
        if (table.size() < most_colours && !table.contains(colour)) {
            table.append(colour);
        }
    }
    return table;
}

}  // namespace

QImage with_colour_table(const QImage& picture) {
    const QImage opaque = picture.convertToFormat(QImage::Format_RGB32);
    return opaque.convertToFormat(QImage::Format_Indexed8, colour_table(ranked_colours(opaque)),
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
