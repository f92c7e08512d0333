#pragma once

#include <QElapsedTimer>
#include <QMarginsF>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <memory>
#include <optional>
#include <string>

#include "os/files.h"
#include "plot/single_printer.h"
#include "windows/qt/painter_target.h"

namespace veldra {

/// One queue of the system's print service as the only printer of a collection. Its papers,
/// margins and colour are those that the toolkit knows of it. Jobs are sent with the request not to
/// scale them.
class QtQueue final : public SinglePrinter {
 public:
    QtQueue(const QString& name, TextMeasurer& measurer);

    [[nodiscard]] std::string DeviceName(std::int32_t /*index*/) override { return DeviceName(); }
    void assign(std::int32_t /*index*/) override {}

    [[nodiscard]] std::string DeviceName() override { return name_.toStdString(); }
    void set_Orientation(std::int16_t orientation) override;
    [[nodiscard]] std::int16_t PaperSize() override;
    void set_PaperSize(std::int16_t code) override;
    void set_PaperBin(std::int16_t code) override;
    [[nodiscard]] float Width() override;
    void set_Width(float twips) override;
    [[nodiscard]] float Height() override;
    void set_Height(float twips) override;
    [[nodiscard]] float ScaleWidth(std::int16_t scale_mode) override;
    [[nodiscard]] float ScaleHeight(std::int16_t scale_mode) override;
    void set_ColorMode(std::int16_t mode) override;
    [[nodiscard]] TextMeasurer& measurer() override { return measurer_; }

    bool begin_job(const JobTitle& title) override;
    void begin_sheet(const SheetTitle& title) override;
    [[nodiscard]] PageTarget& page() override { return *page_; }
    void NewPage() override { page_.reset(); }
    void end_job() override;
    void abort_job() noexcept override;
    void EndDoc() override;

    /// The next job goes into this file, as PDF; "": to the queue.
    void set_output_file(const std::string& path) { output_file_ = path; }

 private:
    /// A paper's size or its printable area, millimetres as the paper lies.
    struct Sheet {
        QSizeF paper;
        QMarginsF margins;
    };

    [[noreturn]] void fail(const std::string& reason) const;
    /// Throws PrinterError unless the print service still has the queue.
    void require_reachable();
    void forget_settings();
    [[nodiscard]] bool offers(const QPageSize& size) const;
    [[nodiscard]] std::unique_ptr<QPrinter> make_printer() const;
    [[nodiscard]] const Sheet& sheet();
    [[nodiscard]] QPageLayout layout() const;
    void set_user_size(const QSizeF& as_it_lies);
    [[nodiscard]] double pixels_per_inch() const;
    void begin_output_file();
    void check_output_file() const;
    void deliver_output_file() const;

    QString name_;
    TextMeasurer& measurer_;
    QPrinterInfo info_;
    QElapsedTimer seen_;  ///< since the queue was last found

    QPageSize paper_;
    std::optional<Sheet> sheet_;

    std::string output_file_;  ///< of the next job
    std::string job_file_;
    std::string job_spool_;  ///< what the toolkit writes for it
    std::unique_ptr<TemporaryFolder> job_folder_;
    std::unique_ptr<QPrinter> job_;
    std::unique_ptr<QPainter> painter_;
    std::unique_ptr<PainterTarget> page_;
};

}  // namespace veldra
