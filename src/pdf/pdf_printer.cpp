#include "pdf/pdf_printer.h"

#include <algorithm>
#include <new>
#include <utility>

#include "os/files.h"
#include "pdf/circle_forms.h"
#include "pdf/document.h"
#include "pdf/page.h"
#include "plot/paper_codes.h"
#include "text/length_units.h"

namespace veldra {

namespace {

constexpr const char* device_name = "PDF-Datei";
constexpr double smallest_side = 15;
constexpr double largest_side = 5000;
constexpr std::int16_t automatic_bin = 15;
constexpr std::int16_t a4 = 9;

float to_twips(double millimetres) {
    return static_cast<float>(millimetres * twips_per_millimetre);
}

void set_side(double& side, float twips) {
    const double millimetres = static_cast<double>(twips) / twips_per_millimetre;
    // Half a twip for what rounding to whole ones adds.
    constexpr double slack = 0.5 / twips_per_millimetre;
    if (millimetres >= smallest_side - slack && millimetres <= largest_side + slack) {
        side = millimetres;
    }
}

float printable(double side, double margin, std::int16_t scale_mode) {
    const double inner = side - 2 * margin;
    return scale_mode == scale_millimetres ? static_cast<float>(inner) : to_twips(inner);
}

[[noreturn]] void refuse_index() {
    throw PrinterError(std::string(device_name) + ": kein weiterer Drucker vorhanden");
}

}  // namespace

template <typename Call>
auto PdfPrinter::guarded(Call&& call) {
    try {
        return call();
    } catch (const PrinterError&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        const std::string reason = error.what();
        const bool names_file = reason.compare(0, path_.size(), path_) == 0;
        throw PrinterError(path_.empty() || names_file ? reason : path_ + ": " + reason);
    }
}

PdfPrinter::PdfPrinter(AskFileName ask_file_name, double resolution)
    : ask_file_name_(std::move(ask_file_name)),
      pixel_(millimetres_per_inch / resolution),
      fonts_(std::make_shared<FontBook>()),
      measurer_(fonts_) {
    colour_mode_ = print_colour;
    forget_paper();
}

PdfPrinter::~PdfPrinter() {
    abort_job();
}

std::string PdfPrinter::DeviceName(std::int32_t index) {
    if (index != 0) {
        refuse_index();
    }
    return device_name;
}

void PdfPrinter::assign(std::int32_t index) {
    if (index != 0) {
        refuse_index();
    }
    orientation_ = hochformat;
    colour_mode_ = print_colour;
    forget_paper();
}

std::string PdfPrinter::DeviceName() {
    return device_name;
}

void PdfPrinter::forget_paper() {
    bin_ = automatic_bin;
    set_PaperSize(a4);
}

void PdfPrinter::set_Orientation(std::int16_t orientation) {
    if (orientation == hochformat || orientation == querformat) {
        orientation_ = orientation;
    }
}

void PdfPrinter::set_PaperSize(std::int16_t code) {
    if (code == user_defined_paper_code) {
        paper_ = code;
    } else if (const auto paper = paper_of_code(code)) {
        paper_ = code;
        upright_width_ = paper->width;
        upright_height_ = paper->height;
    }
}

PdfPaper PdfPrinter::sheet() const {
    PdfPaper paper{{upright_width_, upright_height_},
                   margin_across_,
                   margin_up_,
                   pixel_,
                   colour_mode_ == print_monochrome};
    if (lying()) {
        std::swap(paper.size.width, paper.size.height);
        std::swap(paper.margin_across, paper.margin_up);
    }
    return paper;
}

float PdfPrinter::Width() {
    return to_twips(sheet().size.width);
}

float PdfPrinter::Height() {
    return to_twips(sheet().size.height);
}

void PdfPrinter::set_printable_area(double width, double height) {
    const PdfPageSize size = sheet().size;
    margin_across_ = std::max(0.0, (size.width - width) / 2);
    margin_up_ = std::max(0.0, (size.height - height) / 2);
    if (lying()) {
        std::swap(margin_across_, margin_up_);
    }
}

void PdfPrinter::set_Width(float twips) {
    if (paper_ == user_defined_paper_code) {
        set_side(lying() ? upright_height_ : upright_width_, twips);
    }
}

void PdfPrinter::set_Height(float twips) {
    if (paper_ == user_defined_paper_code) {
        set_side(lying() ? upright_width_ : upright_height_, twips);
    }
}

float PdfPrinter::ScaleWidth(std::int16_t scale_mode) {
    const PdfPaper paper = sheet();
    return printable(paper.size.width, paper.margin_across, scale_mode);
}

float PdfPrinter::ScaleHeight(std::int16_t scale_mode) {
    const PdfPaper paper = sheet();
    return printable(paper.size.height, paper.margin_up, scale_mode);
}

void PdfPrinter::set_ColorMode(std::int16_t mode) {
    if (mode == print_monochrome || mode == print_colour) {
        colour_mode_ = mode;
    }
}

double PdfPrinter::TextWidth(std::string_view text, const FontSpec& font) {
    return guarded([&] { return SinglePrinter::TextWidth(text, font); });
}

double PdfPrinter::TextHeight(std::string_view text, const FontSpec& font) {
    return guarded([&] { return SinglePrinter::TextHeight(text, font); });
}

bool PdfPrinter::begin_job(const JobTitle& title) {
    end_job();
    const std::optional<std::string> path = ask_file_name_();
    if (!path) {
        return false;
    }
    path_ = *path;
    guarded([&] {
        // A file that cannot be written is told before all the work.
        const ReplacedFile probe(path_);
        document_ = std::make_unique<PdfDocument>(fonts_, title);
        circles_ = std::make_unique<CircleForms>();
    });
    return true;
}

void PdfPrinter::begin_sheet(const SheetTitle& title) {
    if (!document_) {
        throw PrinterError(std::string(device_name) + ": kein Dokument begonnen");
    }
    NewPage();
    guarded([&] { page_ = std::make_unique<PdfPage>(*document_, *circles_, sheet(), title); });
}

PageTarget& PdfPrinter::page() {
    if (!page_) {
        throw PrinterError(std::string(device_name) + ": keine Seite begonnen");
    }
    return *page_;
}

void PdfPrinter::NewPage() {
    if (page_) {
        guarded([&] { page_->finish(); });
        page_.reset();
    }
}

void PdfPrinter::end_job() {
    try {
        NewPage();
        if (document_ && document_->pages().count() > 0) {
            guarded([&] { write_document(*document_, path_); });
        }
    } catch (...) {
        abort_job();
        throw;
    }
    abort_job();
}

void PdfPrinter::abort_job() noexcept {
    page_.reset();
    circles_.reset();
    document_.reset();
    path_.clear();
}

void PdfPrinter::EndDoc() {
    forget_paper();
    const bool has_pages = page_ != nullptr || (document_ && document_->pages().count() > 0);
    if (has_pages) {
        end_job();
    }
}

}  // namespace veldra
