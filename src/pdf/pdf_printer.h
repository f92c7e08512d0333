#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "pdf/font_book.h"
#include "plot/single_printer.h"

namespace veldra {

class PdfDocument;
class CircleForms;
class PdfPage;
struct PdfPaper;

/// The printer that is always there: it writes its documents to PDF files.
///
/// Paper: all known codes and 256, sides 15 mm to 5 m; other codes, orientations and sizes are
/// ignored. 5 mm on each side cannot be printed on, unless the printable area is set. Bins and
/// colour modes are taken as written; in monochrome everything on a page is grey. The end of a
/// document sets bin and paper back to 15 and A4 and leaves orientation and colour mode.
///
/// A file is written when its document ends, as a whole: until then, and when anything fails, the
/// file that was there stays. Failures throw PrinterError with the file's path and the reason.
class PdfPrinter final : public SinglePrinter {
 public:
    /// Path of the file of the next document; none if the user does not want one after all.
    using AskFileName = std::function<std::optional<std::string>()>;
    static constexpr double standard_resolution = 300;

    /// `resolution` is in pixels an inch, above 0: what pen widths count in.
    explicit PdfPrinter(AskFileName ask_file_name, double resolution = standard_resolution);
    ~PdfPrinter() override;
    PdfPrinter(const PdfPrinter&) = delete;
    PdfPrinter& operator=(const PdfPrinter&) = delete;

    [[nodiscard]] std::string DeviceName(std::int32_t index) override;
    void assign(std::int32_t index) override;

    [[nodiscard]] std::string DeviceName() override;
    void set_Orientation(std::int16_t orientation) override;
    [[nodiscard]] std::int16_t PaperSize() override { return paper_; }
    void set_PaperSize(std::int16_t code) override;
    void set_PaperBin(std::int16_t code) override { bin_ = code; }
    [[nodiscard]] float Width() override;
    void set_Width(float twips) override;
    [[nodiscard]] float Height() override;
    void set_Height(float twips) override;
    [[nodiscard]] float ScaleWidth(std::int16_t scale_mode) override;
    [[nodiscard]] float ScaleHeight(std::int16_t scale_mode) override;
    void set_ColorMode(std::int16_t mode) override;
    /// Sets the printable area, in the middle of the paper, millimetres as it lies now. What is
    /// left free on each side stays the same when the paper changes.
    void set_printable_area(double width, double height);

    [[nodiscard]] double TextWidth(std::string_view text, const FontSpec& font) override;
    [[nodiscard]] double TextHeight(std::string_view text, const FontSpec& font) override;
    [[nodiscard]] TextMeasurer& measurer() override { return measurer_; }

    bool begin_job(const JobTitle& title) override;
    void begin_sheet(const SheetTitle& title) override;
    [[nodiscard]] PageTarget& page() override;
    void NewPage() override;
    void end_job() override;
    void abort_job() noexcept override;
    void EndDoc() override;

 private:
    static constexpr double usual_margin = 5;

    /// The paper as it lies.
    [[nodiscard]] PdfPaper sheet() const;
    void forget_paper();
    /// Runs a call; what fails becomes a PrinterError with the document's file.
    template <typename Call>
    auto guarded(Call&& call);

    AskFileName ask_file_name_;
    double pixel_;  ///< mm
    std::shared_ptr<FontBook> fonts_;
    FontconfigMeasurer measurer_;

    std::int16_t paper_ = 0;
    double upright_width_ = 0;  ///< mm
    double upright_height_ = 0;
    // What cannot be printed on at each side of the upright paper, mm.
    double margin_across_ = usual_margin;
    double margin_up_ = usual_margin;

    std::string path_;
    std::unique_ptr<PdfDocument> document_;
    std::unique_ptr<CircleForms> circles_;
    std::unique_ptr<PdfPage> page_;
};

}  // namespace veldra
