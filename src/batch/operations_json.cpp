#include <iterator>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "batch/json_output.h"
#include "text/codepage.h"

namespace veldra::batch {

namespace {

std::string json_text(std::string_view bytes) {
    return nlohmann::json(to_utf8(bytes)).dump();
}

/// Writes one operation as a line.
class OperationWriter {
 public:
    explicit OperationWriter(std::string& out) : out_(out) {}

    void operator()(const operation::DrawStyle& op) { state("DrawStyle", op.style); }
    void operator()(const operation::DrawWidth& op) { state("DrawWidth", op.width); }
    void operator()(const operation::ForeColor& op) { state("ForeColor", op.colour); }
    void operator()(const operation::FillStyle& op) { state("FillStyle", op.style); }
    void operator()(const operation::FillColor& op) { state("FillColor", op.colour); }
    void operator()(const operation::Line& op) {
        line("[\"Line\",{},{},{},{}]\n", op.x1, op.y1, op.x2, op.y2);
    }
    void operator()(const operation::Circle& op) {
        line("[\"Circle\",{},{},{}]\n", op.x, op.y, op.radius);
    }
    void operator()(const operation::TextRotated& op) {
        line("[\"TextRotated\",{},{},{}]\n", json_text(op.text), op.escapement, op.align);
    }
    void operator()(const operation::LabelPlaced& op) {
        line("[\"Label\",\"{}\",{},{},{},{},{},{}]\n", label_array_name(op.array), op.index,
             json_text(op.caption), op.left, op.top, op.width, op.height);
    }

 private:
    void state(const char* name, int value) { line("[\"{}\",{}]\n", name, value); }

    template <typename... Values>
    void line(fmt::format_string<Values...> format, Values&&... values) {
        fmt::format_to(std::back_inserter(out_), format, std::forward<Values>(values)...);
    }

    std::string& out_;
};

}  // namespace

std::string operations_json(const std::vector<Operation>& operations) {
    std::string text;
    OperationWriter writer(text);
    for (const Operation& operation : operations) {
        std::visit(writer, operation);
    }
    return text;
}

}  // namespace veldra::batch
