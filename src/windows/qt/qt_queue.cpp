#include "windows/qt/qt_queue.h"

#include <QFile>
#include <QPrintEngine>
#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "os/files.h"
#include "pdf/pdf_printer.h"
#include "plot/paper_codes.h"
#include "text/fatal_error.h"
#include "text/length_units.h"
#include "windows/qt/qt_font.h"
#include "windows/qt/qt_user_interface.h"

namespace veldra {

namespace {

constexpr double millimetres_per_point = millimetres_per_inch / 72;
/// A queue that was there this many milliseconds ago is taken to be there.
constexpr qint64 sight_lasts = 2000;

/// From this code on, papers have none in the toolkit's table.
constexpr std::int16_t first_large_format = 268;

QPageSize large_format(const PaperCode& paper) {
    return QPageSize({paper.width, paper.height}, QPageSize::Millimeter, QString(),
                     QPageSize::FuzzyMatch);
}

/// Bins as the print service names them. Bin 7 is whatever the queue has set.
constexpr std::int16_t bin_as_set = 7;
constexpr std::array<std::pair<std::int16_t, const char*>, 8> bins{{{1, "top"},
                                                                    {2, "bottom"},
                                                                    {3, "middle"},
                                                                    {4, "manual"},
                                                                    {5, "envelope"},
                                                                    {11, "large-capacity"},
                                                                    {14, "main"},
                                                                    {15, "auto"}}};

const char* bin_name(std::int16_t code) {
    const auto* const found =
        std::find_if(bins.begin(), bins.end(), [&](const auto& bin) { return bin.first == code; });
    return found == bins.end() ? nullptr : found->second;
}

/// The paper of a code; invalid if there is none.
QPageSize paper_of(std::int16_t code) {
    if (const auto known = paper_of_code(code); known && code >= first_large_format) {
        return large_format(*known);
    }
    const QPageSize::PageSizeId id = QPageSize::id(code);
    return id == QPageSize::Custom ? QPageSize() : QPageSize(id);
}

std::int16_t code_of(const QPageSize& paper) {
    if (paper.id() == QPageSize::Custom) {
        return user_defined_paper_code;
    }
    if (const int code = paper.windowsId(); code > 0) {
        return static_cast<std::int16_t>(code);
    }
    for (const PaperCode& known : known_papers()) {
        if (known.code >= first_large_format && large_format(known).id() == paper.id()) {
            return known.code;
        }
    }
    return user_defined_paper_code;
}

QPageSize user_paper(const QSizeF& millimetres) {
    return QPageSize(millimetres, QPageSize::Millimeter, QString(), QPageSize::ExactMatch);
}

/// Where a print engine takes options for the print service, as names and values in turn. The
/// toolkit's own print dialog uses the same place.
constexpr auto service_options = static_cast<QPrintEngine::PrintEnginePropertyKey>(0xfe00);

}  // namespace

QtQueue::QtQueue(const QString& name, TextMeasurer& measurer) : name_(name), measurer_(measurer) {
    info_ = QPrinterInfo::printerInfo(name);
    forget_settings();
}

void QtQueue::fail(const std::string& reason) const {
    throw PrinterError(name_.toStdString() + ": " + reason);
}

void QtQueue::require_reachable() {
    if (seen_.isValid() && seen_.elapsed() < sight_lasts) {
        return;
    }
    const QPrinterInfo now = QPrinterInfo::printerInfo(name_);
    seen_.invalidate();
    if (now.isNull()) {
        fail("Drucker ist nicht erreichbar");
    }
    info_ = now;
    seen_.start();
}

void QtQueue::forget_settings() {
    paper_ = info_.defaultPageSize();
    if (!paper_.isValid()) {
        paper_ = QPageSize(QPageSize::A4);
    }
    bin_ = bin_as_set;
    colour_mode_ = info_.defaultColorMode() == QPrinter::Color ? print_colour : print_monochrome;
    sheet_.reset();
}

void QtQueue::set_Orientation(std::int16_t orientation) {
    require_reachable();
    if (orientation == hochformat || orientation == querformat) {
        orientation_ = orientation;
        sheet_.reset();
    }
}

std::int16_t QtQueue::PaperSize() {
    return code_of(paper_);
}

bool QtQueue::offers(const QPageSize& size) const {
    const QList<QPageSize> offered = info_.supportedPageSizes();
    return offered.isEmpty() || std::any_of(offered.begin(), offered.end(), [&](const auto& one) {
               return one.isEquivalentTo(size);
           });
}

void QtQueue::set_PaperSize(std::int16_t code) {
    if (code == PaperSize()) {
        return;
    }
    if (code == user_defined_paper_code) {
        if (info_.supportsCustomPageSizes()) {
            set_user_size({sheet().paper.width(), sheet().paper.height()});
        }
        return;
    }
    const QPageSize wanted = paper_of(code);
    if (wanted.isValid() && offers(wanted)) {
        paper_ = wanted;
        sheet_.reset();
    }
}

void QtQueue::set_PaperBin(std::int16_t code) {
    if (code == bin_as_set || bin_name(code) != nullptr) {
        bin_ = code;
    }
}

void QtQueue::set_ColorMode(std::int16_t mode) {
    const bool has_colour = info_.supportedColorModes().contains(QPrinter::Color);
    colour_mode_ = mode == print_colour && has_colour ? print_colour : print_monochrome;
}

/// Takes a size as the paper lies; the paper itself is stored upright.
void QtQueue::set_user_size(const QSizeF& as_it_lies) {
    constexpr double smallest = 10;
    constexpr double largest = 5080;  // beyond, documents need another unit
    const QSizeF upright = lying() ? as_it_lies.transposed() : as_it_lies;
    paper_ = user_paper({std::clamp(upright.width(), smallest, largest),
                         std::clamp(upright.height(), smallest, largest)});
    sheet_.reset();
}

float QtQueue::Width() {
    return static_cast<float>(sheet().paper.width() * twips_per_millimetre);
}

float QtQueue::Height() {
    return static_cast<float>(sheet().paper.height() * twips_per_millimetre);
}

void QtQueue::set_Width(float twips) {
    if (PaperSize() == user_defined_paper_code && info_.supportsCustomPageSizes()) {
        set_user_size({static_cast<double>(twips) / twips_per_millimetre, sheet().paper.height()});
    }
}

void QtQueue::set_Height(float twips) {
    if (PaperSize() == user_defined_paper_code && info_.supportsCustomPageSizes()) {
        set_user_size({sheet().paper.width(), static_cast<double>(twips) / twips_per_millimetre});
    }
}

QPageLayout QtQueue::layout() const {
    QPageLayout layout(paper_, lying() ? QPageLayout::Landscape : QPageLayout::Portrait, {});
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

std::unique_ptr<QPrinter> QtQueue::make_printer() const {
    auto printer = std::make_unique<QPrinter>(info_, QPrinter::HighResolution);
    printer->setFullPage(true);
    printer->setPageSize(paper_);
    printer->setColorMode(colour_mode_ == print_colour ? QPrinter::Color : QPrinter::GrayScale);
    printer->setCopyCount(1);
    return printer;
}

/// Margins are known of the upright paper. A lying one may have been turned either way, so it has
/// the larger one on both sides.
const QtQueue::Sheet& QtQueue::sheet() {
    if (!sheet_) {
        const QMarginsF points = make_printer()->pageLayout().minimumMargins();
        QMarginsF margins = points * millimetres_per_point;
        QSizeF paper = paper_.size(QPageSize::Millimeter);
        if (lying()) {
            const double across = std::max(margins.top(), margins.bottom());
            const double along = std::max(margins.left(), margins.right());
            margins = {across, along, across, along};
            paper.transpose();
        }
        sheet_ = Sheet{paper, margins};
    }
    return *sheet_;
}

float QtQueue::ScaleWidth(std::int16_t scale_mode) {
    const Sheet& known = sheet();
    const double width = known.paper.width() - known.margins.left() - known.margins.right();
    return static_cast<float>(scale_mode == scale_twips ? width * twips_per_millimetre : width);
}

float QtQueue::ScaleHeight(std::int16_t scale_mode) {
    const Sheet& known = sheet();
    const double height = known.paper.height() - known.margins.top() - known.margins.bottom();
    return static_cast<float>(scale_mode == scale_twips ? height * twips_per_millimetre : height);
}

/// Pens are as wide as those of the built-in device unless the queue tells its resolution. The
/// toolkit tells 72 for one that it does not know.
double QtQueue::pixels_per_inch() const {
    constexpr int least_credible = 150;
    const QList<int> resolutions = info_.supportedResolutions();
    const auto finest = std::max_element(resolutions.begin(), resolutions.end());
    return finest != resolutions.end() && *finest >= least_credible
               ? *finest
               : PdfPrinter::standard_resolution;
}

bool QtQueue::begin_job(const JobTitle& title) {
    end_job();
    seen_.invalidate();
    require_reachable();
    job_file_ = std::exchange(output_file_, {});
    job_ = make_printer();
    job_->setDocName(to_qstring(title.titel));
    job_->setCreator(QStringLiteral("VELDRA"));
    if (!job_file_.empty()) {
        begin_output_file();
        return true;
    }
    QStringList options{QStringLiteral("print-scaling"), QStringLiteral("none")};
    if (const char* bin = bin_name(bin_)) {
        options << QStringLiteral("media-source") << QString::fromLatin1(bin);
    }
    job_->printEngine()->setProperty(service_options, options);
    return true;
}

/// The toolkit writes into a file as it goes on. It gets one of its own, so that the file named is
/// the old or the new one.
void QtQueue::begin_output_file() {
    try {
        const ReplacedFile probe(job_file_);  // what cannot be written is told before all the work
        job_folder_ = std::make_unique<TemporaryFolder>();
    } catch (const FatalError& error) {
        job_.reset();
        fail(error.what());
    }
    job_spool_ = job_folder_->path() + "/plot.pdf";
    job_->setOutputFileName(path_text(job_spool_));
}

void QtQueue::begin_sheet(const SheetTitle& /*title*/) {
    if (!job_) {
        fail("kein Druckauftrag");
    }
    page_.reset();
    const Sheet& known = sheet();
    job_->setPageSize(paper_);
    job_->setPageOrientation(layout().orientation());
    if (!painter_) {
        auto painter = std::make_unique<QPainter>();
        if (!painter->begin(job_.get())) {
            fail(job_file_.empty() ? "Drucker ist nicht erreichbar"
                                   : job_file_ + " kann nicht geschrieben werden");
        }
        painter_ = std::move(painter);
    } else if (!job_->newPage()) {
        fail("neues Blatt nicht möglich");
    }
    const double unit = job_->resolution() / millimetres_per_inch;
    PainterArea area;
    area.area =
        QRectF(known.margins.left() * unit, known.margins.top() * unit,
               (known.paper.width() - known.margins.left() - known.margins.right()) * unit,
               (known.paper.height() - known.margins.top() - known.margins.bottom()) * unit);
    area.units_per_millimetre = unit;
    area.units_per_pen_pixel = job_->resolution() / pixels_per_inch();
    page_ = std::make_unique<PainterTarget>(*painter_, area, PainterTarget::Labels::print);
    page_->scale_millimetres();
}

void QtQueue::check_output_file() const {
    constexpr qint64 longest_end = 32;
    QFile file(path_text(job_spool_));
    if (!file.open(QIODevice::ReadOnly) ||
        !file.seek(std::max<qint64>(file.size() - longest_end, 0)) ||
        !file.readAll().contains("%%EOF")) {
        fail(job_file_ + " ist nicht vollständig geschrieben");
    }
}

void QtQueue::deliver_output_file() const {
    constexpr std::size_t piece = std::size_t{1} << 18U;
    try {
        InputFile from(job_spool_);
        ReplacedFile to(job_file_);
        std::string bytes(piece, '\0');
        for (std::size_t count = from.read(bytes.data(), piece); count > 0;
             count = from.read(bytes.data(), piece)) {
            to.write(std::string_view(bytes).substr(0, count));
        }
        to.commit();
    } catch (const FatalError& error) {
        fail(error.what());
    }
}

void QtQueue::end_job() {
    page_.reset();
    const std::unique_ptr<TemporaryFolder> folder = std::move(job_folder_);
    const std::unique_ptr<QPrinter> job = std::move(job_);
    const std::unique_ptr<QPainter> painter = std::move(painter_);
    if (!painter) {
        return;
    }
    const bool ended = painter->end();
    if (!ended || job->printerState() == QPrinter::Error) {
        fail("Druckauftrag ist nicht angenommen worden");
    }
    if (!job_file_.empty()) {
        check_output_file();
        deliver_output_file();
        return;
    }
    // The toolkit does not tell whether the service has taken the document; without the service it
    // has not.
    seen_.invalidate();
    require_reachable();
}

void QtQueue::abort_job() noexcept {
    page_.reset();
    if (job_ && painter_) {
        // The toolkit sends off whatever has been drawn. The service refuses an order of no copies,
        // and so gets nothing of it.
        job_->printEngine()->setProperty(
            service_options, QStringList{QStringLiteral("copies"), QStringLiteral("0")});
        painter_->end();
    }
    painter_.reset();
    job_.reset();
    job_folder_.reset();
}

void QtQueue::EndDoc() {
    if (painter_) {
        end_job();
    }
    forget_settings();
}

}  // namespace veldra
