#pragma once

#include <QByteArray>
#include <array>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace veldra::test {

/// A straight line of a page, points of 1/72 inch from its lower left corner.
struct PageLine {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
};

/// Unpacked streams of a PDF document, those that are packed by deflate.
inline std::vector<std::string> unpacked_streams(const std::string& document) {
    std::vector<std::string> streams;
    const std::string begin = "stream\n";
    const std::string end = "endstream";
    for (std::size_t at = document.find(begin); at != std::string::npos;) {
        const std::size_t first = at + begin.size();
        const std::size_t last = document.find(end, first);
        if (last == std::string::npos) {
            break;
        }
        // The toolkit's unpacker wants the length in front, which is only a hint.
        QByteArray packed("\0\0\x10\0", 4);
        packed.append(document.data() + first, static_cast<qsizetype>(last - first));
        if (const QByteArray bytes = qUncompress(packed); !bytes.isEmpty()) {
            streams.push_back(bytes.toStdString());
        }
        at = document.find(begin, last + end.size());
    }
    return streams;
}

/// The straight lines that a content stream draws: of its operators, those that build paths and
/// change the matrix count.
inline std::vector<PageLine> lines_of(const std::string& content) {
    using Matrix = std::array<double, 6>;
    std::vector<Matrix> saved;
    Matrix matrix{1, 0, 0, 1, 0, 0};
    std::vector<double> numbers;
    std::array<double, 2> position{};
    std::vector<PageLine> lines;
    const auto place = [&]() -> std::array<double, 2> {
        const double x = numbers.at(numbers.size() - 2);
        const double y = numbers.back();
        return {matrix[0] * x + matrix[2] * y + matrix[4],
                matrix[1] * x + matrix[3] * y + matrix[5]};
    };
    std::istringstream words(content);
    for (std::string word; words >> word;) {
        char* end = nullptr;
        const double number = std::strtod(word.c_str(), &end);
        if (*end == '\0') {
            numbers.push_back(number);
            continue;
        }
        if (word == "q") {
            saved.push_back(matrix);
        } else if (word == "Q" && !saved.empty()) {
            matrix = saved.back();
            saved.pop_back();
        } else if (word == "cm" && numbers.size() >= 6) {
            const double* const n = &numbers[numbers.size() - 6];
            const Matrix m = matrix;
            matrix = {n[0] * m[0] + n[1] * m[2],        n[0] * m[1] + n[1] * m[3],
                      n[2] * m[0] + n[3] * m[2],        n[2] * m[1] + n[3] * m[3],
                      n[4] * m[0] + n[5] * m[2] + m[4], n[4] * m[1] + n[5] * m[3] + m[5]};
        } else if (word == "m" && numbers.size() >= 2) {
            position = place();
        } else if (word == "l" && numbers.size() >= 2) {
            const std::array<double, 2> to = place();
            lines.push_back({position[0], position[1], to[0], to[1]});
            position = to;
        }
        numbers.clear();
    }
    return lines;
}

}  // namespace veldra::test
