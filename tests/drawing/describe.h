#pragma once

#include <string>
#include <variant>
#include <vector>

#include <fmt/format.h>

#include "drawing/recording_target.h"

namespace veldra::test {

/// Operations as short texts, numbers in their shortest form.
struct Describe {
    std::string operator()(const operation::DrawStyle& op) const {
        return fmt::format("DrawStyle {}", op.style);
    }
    std::string operator()(const operation::DrawWidth& op) const {
        return fmt::format("DrawWidth {}", op.width);
    }
    std::string operator()(const operation::ForeColor& op) const {
        return fmt::format("ForeColor {}", op.colour);
    }
    std::string operator()(const operation::FillStyle& op) const {
        return fmt::format("FillStyle {}", op.style);
    }
    std::string operator()(const operation::FillColor& op) const {
        return fmt::format("FillColor {}", op.colour);
    }
    std::string operator()(const operation::Line& op) const {
        return fmt::format("Line {} {} {} {}", op.x1, op.y1, op.x2, op.y2);
    }
    std::string operator()(const operation::Circle& op) const {
        return fmt::format("Circle {} {} {}", op.x, op.y, op.radius);
    }
    std::string operator()(const operation::TextRotated& op) const {
        return fmt::format("TextRotated '{}' {} {}", op.text, op.escapement, op.align);
    }
    std::string operator()(const operation::LabelPlaced& op) const {
        return fmt::format("Label {} {} '{}' {} {} {} {}", label_array_name(op.array), op.index,
                           op.caption, op.left, op.top, op.width, op.height);
    }
};

using Lines = std::vector<std::string>;

inline Lines described(const RecordingTarget& target) {
    Lines lines;
    for (const Operation& op : target.operations()) {
        lines.push_back(std::visit(Describe{}, op));
    }
    return lines;
}

/// Only the operations whose text begins with `kind`.
inline Lines only(const Lines& lines, const std::string& kind) {
    Lines kept;
    for (const std::string& line : lines) {
        if (line.rfind(kind, 0) == 0) {
            kept.push_back(line);
        }
    }
    return kept;
}

}  // namespace veldra::test
