#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "model/session.h"
#include "plot/printer.h"

namespace veldra {

// What the dialog frmDrucker does, without its window. It works on the printer itself: each choice
// is written to it at once, and what the driver made of it is read back. No call here throws
// PrinterError; a driver that fails keeps what it has.

/// Texts of the list of papers, UTF-8, by list index from 0.
[[nodiscard]] std::span<const std::string_view> paper_texts();
/// Texts of the list of paper bins, UTF-8; list index i is paper bin i + 1.
[[nodiscard]] std::span<const std::string_view> paper_bin_texts();
/// Text of the item that stands for a code outside the list of papers.
[[nodiscard]] std::string unknown_paper_text(std::int16_t code);

/// Paper settings of a printer; sizes in twips, as the paper lies.
struct PaperState {
    std::int16_t bin = 0;
    std::int16_t paper = 0;
    float width = 0;
    float height = 0;
    std::int16_t orientation = 0;
};

/// What the dialog remembers while it is open.
struct PrinterOptions {
    std::int32_t printer_index = -1;  ///< printer to return to
    PaperState paper;                 ///< and its paper
    /// A code outside the list of papers, which then has one item more. It stays while other papers
    /// of the same printer are chosen, so that the user can return to it.
    std::optional<std::int16_t> unknown_paper;
};

/// Remembers the printer and its paper. Null stands for a system without printers.
[[nodiscard]] PrinterOptions open_printer_options(Printer* printer);

/// List index of a paper code, -1 if there is none; remembers a code outside the list.
std::int32_t paper_index(PrinterOptions& options, std::int16_t code);
/// Paper code of a list index; that of the last item is the remembered one.
[[nodiscard]] std::int16_t paper_code(const PrinterOptions& options, std::int32_t index);
/// List index of a paper bin, -1 if the list does not have it.
[[nodiscard]] std::int32_t paper_bin_index(std::int16_t bin);

/// What the printer has now, in the dialog's texts.
struct PaperView {
    std::int16_t paper = 0;
    std::int16_t bin = 0;
    std::int16_t orientation = 0;
    bool user_defined = false;   ///< the size of the paper can be set
    std::string lbl_quer_netto;  ///< printable area
    std::string lbl_hoch_netto;
    std::string txt_quer;  ///< whole paper, millimetres
    std::string txt_hoch;
};
[[nodiscard]] PaperView view_paper(Printer& printer);

/// Makes printer `index` the application printer; the orientation stays if its driver takes it, and
/// output to a file is off. The result is the index of the printer that is the current one now.
std::int32_t choose_printer(Session& session, Printer& printer, PrinterOptions& options,
                            std::int32_t index);
/// Makes the system's default printer the application printer, also the one to return to. The
/// result is its index.
std::int32_t choose_standard_printer(Session& session, Printer& printer, PrinterOptions& options);

/// Writes a paper code or bin; the orientation stays. False if the printer has another one then.
bool choose_paper(Printer& printer, std::int16_t code);
bool choose_paper_bin(Printer& printer, std::int16_t bin);
/// 1 Hochformat, 2 Querformat.
void choose_orientation(Printer& printer, std::int16_t orientation);
/// Sets the size of a user-defined paper from two typed texts, millimetres as the paper lies. A
/// side that is not above 0, or beyond 32 bits of twips, is not written. False if the printer has
/// another size then, by more than the half millimetre that its texts are rounded by.
bool set_user_paper(Printer& printer, std::string_view across, std::string_view up);

/// A typed number of copies, 1 to 100; what is no number counts as 1.
[[nodiscard]] std::int16_t copies_of_text(std::string_view text);
/// The text is a number within these limits.
[[nodiscard]] bool are_copies(std::string_view text);
/// A number of copies brought into 1 to 100.
[[nodiscard]] std::int16_t limited_copies(int copies);

/// OK: ends the document without losing the paper, takes the copies from their text, and makes all
/// that is set what a later Abbrechen returns to.
void accept_printer_options(Session& session, Printer& printer, PrinterOptions& options,
                            std::string_view copies);
/// Abbrechen: the remembered printer, its paper, copies, colour and output are back.
void reject_printer_options(Session& session, Printer* printer, const PrinterOptions& options);

}  // namespace veldra
