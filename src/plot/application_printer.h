#pragma once

#include <cstdint>
#include <string>

#include "model/session.h"
#include "plot/printer.h"
#include "text/user_interface.h"

namespace veldra {

/// The common print dialog of the desktop.
class PrintDialog {
 public:
    static constexpr std::int32_t no_selection = 4;
    static constexpr std::int32_t print_to_file = 32;
    static constexpr std::int32_t printer_setup = 64;

    virtual ~PrintDialog() = default;
    /// Shows the form that `flags` ask for and waits: with 64 the printer setup, otherwise the
    /// print form (4: without the choice of a selection, 32: its box for printing to a file is
    /// ticked). What the user chooses becomes the default printer. The result is `flags` with bit
    /// 32 as the user has left the box.
    virtual std::int32_t ShowPrinter(std::int32_t flags) = 0;
};

/// Tries out whether the application printer works, which takes a driver that accepts both
/// orientations, and brings `drucker_ok` and the entry `m_optionen_drucker` into line. A printer
/// that passes is left in landscape. Null stands for a system without printers. Never throws
/// PrinterError.
void CheckPrinter(Session& session, Printer* printer);

/// Finds out by experiment whether the printer has colour (`drucker_farbe`). Nothing happens
/// without a working printer; errors are ignored.
void CheckPrinterColour(Session& session, Printer& printer);

/// Ends the document and carries the paper across, which the driver would forget with it. Nothing
/// happens without a working printer; errors are ignored.
void ResetPrinter(Session& session, Printer& printer);

/// State of the printer at the start of the program: the default printer's name, whether the
/// printer works and has colour, no output to a file, one copy. Null stands for a system without
/// printers.
void take_printer(Session& session, Printer* printer);

/// Index of the last printer of this name (UTF-8), -1 if there is none.
[[nodiscard]] std::int32_t find_printer(Printer& printer, const std::string& name);

/// Head of a plot job while `druck_in_datei` is set: asks the user to choose the application
/// printer once more, as the default printer, with its output going to a file, until he does or
/// unticks the box. Throws PrinterError.
void PreparePrintToFile(Session& session, Printer& printer, UserInterface& ui, PrintDialog& dialog);

/// At the end of the program: if the system has another default printer than at the start, the
/// user is asked, and on Yes may choose one again. Errors of the printer are ignored.
void ask_for_default_printer(const Session& session, Printer& printer, UserInterface& ui,
                             PrintDialog& dialog);

/// Largest whole size in points, from 7 to 2161, at which digits have the height `size` (mm of
/// paper, with 0.05 mm of tolerance). The size of `font` does not matter. Without a working printer
/// `points` stays. Throws PrinterError.
void FitPrinterFont(const Session& session, Printer& printer, float size, const FontSpec& font,
                    std::int16_t& points);

/// Height of digits in mm of paper at the size of `font`. Without a working printer `size` stays.
/// Throws PrinterError.
void SetPrinterFont(const Session& session, Printer& printer, const FontSpec& font, float& size);

/// The entry `m_optionen_drucker` bears the name of the application printer.
void name_printer_in_menu(Session& session, Printer& printer);

/// The application printer counts as not available; the menu says so.
void mark_printer_unavailable(Session& session);

}  // namespace veldra
