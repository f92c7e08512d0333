#include "windows/qt/qt_printers.h"

#include <QPrinterInfo>

namespace veldra {

namespace {
/// The list of queues is asked for anew after this many milliseconds.
constexpr qint64 list_lasts = 5000;
}  // namespace

QtPrinters::QtPrinters(std::unique_ptr<Printer> file_device, TextMeasurer& measurer)
    : file_device_(std::move(file_device)),
      measurer_(file_device_ ? file_device_->measurer() : measurer) {
    refresh();
    if (Count() > 0) {
        assign(default_printer());
    }
}

void QtPrinters::refresh() {
    queues_ = QPrinterInfo::availablePrinterNames();
    listed_.start();
}

std::int32_t QtPrinters::Count() {
    if (listed_.elapsed() > list_lasts) {
        refresh();
    }
    return static_cast<std::int32_t>(queues_.size()) + (file_device_ ? 1 : 0);
}

void QtPrinters::require_index(std::int32_t index) const {
    if (index < 0 || index > queues_.size() || (index == queues_.size() && !file_device_)) {
        throw PrinterError("Drucker " + std::to_string(index) + " ist nicht vorhanden");
    }
}

std::string QtPrinters::DeviceName(std::int32_t index) {
    require_index(index);
    return is_queue(index) ? queues_.at(index).toStdString() : file_device_->DeviceName(0);
}

void QtPrinters::assign(std::int32_t index) {
    require_index(index);
    tracks_default_ = false;
    if (!is_queue(index)) {
        leave_for(nullptr);
        return;
    }
    std::unique_ptr<QtQueue>& queue = known_queues_[queues_.at(index)];
    if (!queue) {
        queue = std::make_unique<QtQueue>(queues_.at(index), measurer_);
    }
    leave_for(queue.get());
}

/// Makes a queue, or with null the built-in device, the current printer.
void QtPrinters::leave_for(QtQueue* queue) {
    if (queue_ != nullptr && queue_ != queue) {
        queue_->set_output_file("");
    }
    queue_ = queue;
}

Printer& QtPrinters::current() const {
    if (queue_ != nullptr) {
        return *queue_;
    }
    if (!file_device_) {
        throw PrinterError("kein Drucker vorhanden");
    }
    return *file_device_;
}

std::int32_t QtPrinters::default_printer() {
    const std::int32_t count = Count();
    for (const std::string& wanted :
         {chosen_default_, QPrinterInfo::defaultPrinterName().toStdString()}) {
        for (std::int32_t i = 0; i < count; ++i) {
            if (!wanted.empty() && DeviceName(i) == wanted) {
                return i;
            }
        }
    }
    return file_device_ ? count - 1 : 0;
}

void QtPrinters::choose_default(std::int32_t index) {
    chosen_default_ = DeviceName(index);
    if (tracks_default_) {
        set_TrackDefault(true);
    }
}

void QtPrinters::set_TrackDefault(bool track) {
    if (track && Count() > 0) {
        assign(default_printer());
    }
    tracks_default_ = track;
}

void QtPrinters::set_output_file(const std::string& path) {
    if (queue_ != nullptr) {
        queue_->set_output_file(path);
    }
}

bool QtPrinters::begin_job(const JobTitle& title) {
    if (job_cancelled_) {
        job_cancelled_ = false;
        return false;
    }
    return current().begin_job(title);
}

void QtPrinters::abort_job() noexcept {
    if (queue_ != nullptr) {
        queue_->abort_job();
    } else if (file_device_) {
        file_device_->abort_job();
    }
}

}  // namespace veldra
