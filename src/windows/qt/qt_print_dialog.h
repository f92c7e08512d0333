#pragma once

#include <QString>
#include <QWidget>
#include <functional>

#include "plot/application_printer.h"
#include "windows/qt/qt_printers.h"

namespace veldra {

/// Asks for the PDF file that takes a plot; "" if the user does not want one after all. `proposed`
/// and `folder` are those of `ask_for_new_file`.
[[nodiscard]] QString ask_for_output_file(QWidget* window, const QString& proposed,
                                          QString& folder);

/// The common print dialog: a list of the printers and, in the print form, the box for printing to
/// a file. A file that is wanted for a queue is asked for behind OK; the built-in device asks for
/// its own. Leaving the print form by Abbrechen unticks the box and cancels the job.
class QtPrintDialog final : public PrintDialog {
 public:
    /// `printers` and `window` outlive the dialog.
    QtPrintDialog(QtPrinters& printers, QWidget* window);

    std::int32_t ShowPrinter(std::int32_t flags) override;

    /// Asks for the file that takes the output; "" if there is none. Tests put an answer in its
    /// place.
    std::function<QString(QWidget*)> choose_file;

 private:
    class Form;
    /// False if the form is to be shown once more.
    bool take_print(Form& form, std::int32_t& flags);

    QtPrinters& printers_;
    QWidget* window_;
};

}  // namespace veldra
