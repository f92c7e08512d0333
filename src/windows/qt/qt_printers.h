#pragma once

#include <QElapsedTimer>
#include <QStringList>
#include <map>
#include <memory>
#include <string>

#include "plot/printer.h"
#include "windows/qt/qt_queue.h"

namespace veldra {

/// The printers of this computer: the queues of the system's print service and, always last, the
/// built-in device. The current one is at first the system's default queue, or the built-in device
/// if there is none. Needs a running QGuiApplication.
class QtPrinters final : public Printer {
 public:
    /// `file_device` is the built-in device, a collection of one; null switches it off. Queues
    /// measure texts as it does; `measurer` serves while it is switched off.
    QtPrinters(std::unique_ptr<Printer> file_device, TextMeasurer& measurer);

    [[nodiscard]] std::int32_t Count() override;
    [[nodiscard]] std::string DeviceName(std::int32_t index) override;
    /// Each printer keeps its paper while another one is the current one.
    void assign(std::int32_t index) override;

    [[nodiscard]] std::string DeviceName() override { return current().DeviceName(); }
    [[nodiscard]] std::int16_t Orientation() override { return current().Orientation(); }
    void set_Orientation(std::int16_t value) override { current().set_Orientation(value); }
    [[nodiscard]] std::int16_t PaperSize() override { return current().PaperSize(); }
    void set_PaperSize(std::int16_t code) override { current().set_PaperSize(code); }
    [[nodiscard]] std::int16_t PaperBin() override { return current().PaperBin(); }
    void set_PaperBin(std::int16_t code) override { current().set_PaperBin(code); }
    [[nodiscard]] float Width() override { return current().Width(); }
    void set_Width(float twips) override { current().set_Width(twips); }
    [[nodiscard]] float Height() override { return current().Height(); }
    void set_Height(float twips) override { current().set_Height(twips); }
    [[nodiscard]] float ScaleWidth(std::int16_t mode) override {
        return current().ScaleWidth(mode);
    }
    [[nodiscard]] float ScaleHeight(std::int16_t mode) override {
        return current().ScaleHeight(mode);
    }
    [[nodiscard]] std::int16_t ColorMode() override { return current().ColorMode(); }
    void set_ColorMode(std::int16_t mode) override { current().set_ColorMode(mode); }
    void set_Copies(std::int16_t copies) override { current().set_Copies(copies); }
    void set_TrackDefault(bool track) override;

    [[nodiscard]] double TextWidth(std::string_view text, const FontSpec& font) override {
        return current().TextWidth(text, font);
    }
    [[nodiscard]] double TextHeight(std::string_view text, const FontSpec& font) override {
        return current().TextHeight(text, font);
    }
    [[nodiscard]] TextMeasurer& measurer() override { return current().measurer(); }

    bool begin_job(const JobTitle& title) override;
    void begin_sheet(const SheetTitle& title) override { current().begin_sheet(title); }
    [[nodiscard]] PageTarget& page() override { return current().page(); }
    void NewPage() override { current().NewPage(); }
    void end_job() override { current().end_job(); }
    void abort_job() noexcept override;
    void EndDoc() override { current().EndDoc(); }

    // For the print dialog.

    /// Index of the default printer.
    [[nodiscard]] std::int32_t default_printer();
    /// Makes a printer the default one of this run; the system keeps its own.
    void choose_default(std::int32_t index);
    /// Whether this is a queue, and not the built-in device.
    [[nodiscard]] bool is_queue(std::int32_t index) const { return index < queues_.size(); }
    /// The next job of the current queue goes into a file.
    void set_output_file(const std::string& path);
    /// The next job ends before it has begun.
    void cancel_next_job() { job_cancelled_ = true; }

 private:
    void refresh();
    void leave_for(QtQueue* queue);
    [[nodiscard]] Printer& current() const;
    void require_index(std::int32_t index) const;

    std::unique_ptr<Printer> file_device_;
    TextMeasurer& measurer_;
    QStringList queues_;
    QElapsedTimer listed_;                                      ///< since the queues were asked for
    std::map<QString, std::unique_ptr<QtQueue>> known_queues_;  ///< those that were current once
    QtQueue* queue_ = nullptr;  ///< the current one; null: the built-in device
    bool tracks_default_ = false;
    bool job_cancelled_ = false;
    std::string chosen_default_;
};

}  // namespace veldra
