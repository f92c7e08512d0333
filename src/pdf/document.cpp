#include "pdf/document.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <fmt/format.h>

#include "text/fatal_error.h"

namespace veldra {

namespace {

/// Runs a call in the midst of drawing, where callers expect nothing but the errors of printers.
template <typename Call>
auto on_page(Call&& call) {
    try {
        return call();
    } catch (const FatalError& error) {
        throw PrinterError(error.what());
    }
}

}  // namespace

PdfDocument::PdfDocument(std::shared_ptr<FontBook> fonts, const JobTitle& title)
    : book_(std::move(fonts)), title_(title), content_([this](std::string_view packed) {
          on_page([&] { page_.pieces.push_back({spool_.append(packed), packed.size()}); });
      }) {}

void PdfDocument::begin_page(const PdfPageSize& size, const SheetTitle& title) {
    page_ = {size, title, {}};
    const double scale = points_per_millimetre / 1000 / page_unit(size);
    content_.text(fmt::format("{0:.14f} 0 0 {0:.14f} 0 0 cm\n", scale));
}

void PdfDocument::end_page() {
    content_.flush();
    on_page([&] { pages_.append(page_); });
}

std::size_t PdfDocument::font_number(const FontSpec& font) {
    const FontFace* face = on_page([&] { return &book_->find(font); });
    const auto [place, is_new] = font_numbers_.try_emplace(face, fonts_.size());
    if (is_new) {
        fonts_.push_back({face, {}});
    }
    return place->second;
}

std::size_t PdfDocument::add_form(PdfForm form) {
    forms_.push_back(std::move(form));
    return forms_.size() - 1;
}

double page_unit(const PdfPageSize& size) {
    constexpr double longest_side = 14400;  // units, by the standard
    return std::max(
        1.0, std::ceil(std::max(size.width, size.height) * points_per_millimetre / longest_side));
}

}  // namespace veldra
