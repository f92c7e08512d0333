#include "windows/qt/qt_print_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "windows/qt/qt_user_interface.h"

namespace veldra {

QString ask_for_output_file(QWidget* window, const QString& proposed, QString& folder) {
    return ask_for_new_file(
        window,
        {QStringLiteral("dlg_torvel_speichern"), QStringLiteral("Ausgabe in Datei"),
         "PDF-Dateien (*.pdf)|*.pdf|Alle Dateien (*.*)|*.*"},
        proposed, folder);
}

class QtPrintDialog::Form {
 public:
    Form(QtPrinters& printers, QWidget* window, std::int32_t flags) : dialog_(window) {
        const bool setup = (flags & printer_setup) != 0;
        dialog_.setObjectName(QStringLiteral("dlg_torvel_drucken"));
        dialog_.setWindowTitle(setup ? QStringLiteral("Druckereinrichtung")
                                     : QStringLiteral("Drucken"));
        names_ = new QComboBox(&dialog_);
        names_->setObjectName(QStringLiteral("cbo_standarddrucker"));
        for (std::int32_t i = 0; i < printers.Count(); ++i) {
            names_->addItem(QString::fromStdString(printers.DeviceName(i)));
        }
        names_->setCurrentIndex(printers.default_printer());
        to_file_ = new QCheckBox(QStringLiteral("Ausgabe in &Datei"), &dialog_);
        to_file_->setObjectName(QStringLiteral("chk_ausgabe_datei"));
        to_file_->setChecked((flags & print_to_file) != 0);
        to_file_->setVisible(!setup);
        auto* caption = new QLabel(QStringLiteral("&Standarddrucker:"), &dialog_);
        caption->setBuddy(names_);
        auto* buttons =
            new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog_);
        buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("OK"));
        buttons->button(QDialogButtonBox::Ok)->setEnabled(names_->count() > 0);
        buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Abbrechen"));
        QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog_, &QDialog::accept);
        QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog_, &QDialog::reject);
        auto* layout = new QVBoxLayout(&dialog_);
        layout->addWidget(caption);
        layout->addWidget(names_);
        layout->addWidget(to_file_);
        layout->addWidget(buttons);
        layout->setSizeConstraint(QLayout::SetFixedSize);
    }

    [[nodiscard]] bool run() { return dialog_.exec() == QDialog::Accepted; }
    [[nodiscard]] std::int32_t chosen() const { return names_->currentIndex(); }
    [[nodiscard]] bool to_file() const { return to_file_->isChecked(); }
    [[nodiscard]] QWidget* window() { return &dialog_; }

 private:
    QDialog dialog_;
    QComboBox* names_ = nullptr;
    QCheckBox* to_file_ = nullptr;
};

QtPrintDialog::QtPrintDialog(QtPrinters& printers, QWidget* window)
    : choose_file([folder = QString()](QWidget* parent) mutable {
          return ask_for_output_file(parent, {}, folder);
      }),
      printers_(printers),
      window_(window) {}

bool QtPrintDialog::take_print(Form& form, std::int32_t& flags) {
    std::string file;
    if (form.to_file() && printers_.is_queue(form.chosen())) {
        file = system_path(choose_file(form.window()));
        if (file.empty()) {
            return false;
        }
    }
    printers_.choose_default(form.chosen());
    printers_.set_output_file(file);
    flags = form.to_file() ? flags | print_to_file : flags & ~print_to_file;
    return true;
}

std::int32_t QtPrintDialog::ShowPrinter(std::int32_t flags) {
    Form form(printers_, window_, flags);
    const bool setup = (flags & printer_setup) != 0;
    while (form.run()) {
        if (setup) {
            printers_.choose_default(form.chosen());
            return flags;
        }
        if (take_print(form, flags)) {
            return flags;
        }
    }
    if (setup) {
        return flags;
    }
    printers_.cancel_next_job();
    return flags & ~print_to_file;
}

}  // namespace veldra
