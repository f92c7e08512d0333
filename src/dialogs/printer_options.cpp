#include "dialogs/printer_options.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "plot/application_printer.h"
#include "plot/paper_codes.h"
#include "plot/trapped_call.h"
#include "text/length_units.h"
#include "text/numbers.h"

namespace veldra {

namespace {

constexpr int most_copies = 100;

// The list of papers: codes 1 to 41, codes of large formats from 268 on, the user's own size.
constexpr std::int32_t large_paper_index = 41;
constexpr std::int16_t large_paper_code = 268;
constexpr std::int32_t user_paper_index = 50;
constexpr std::int32_t unknown_paper_index = 51;

constexpr std::array<std::string_view, 51> papers{
    "US Letter, 8 1/2 x 11 Zoll",
    "US Letter Small, 8 1/2 x 11 Zoll",
    "US Tabloid, 11 x 17 Zoll",
    "US Ledger, 17 x 11 Zoll",
    "US Legal, 8 1/2 x 14 Zoll.",
    "US Statement, 5 1/2 x 8 1/2 Zoll",
    "Executive, 7 1/2 x 10 ½ Zoll",
    "DIN A3, 297 x 420 mm",
    "DINA4, 210 x 297 mm",
    "DIN A4 Small, 210 x 297 mm",
    "DIN A5, 148 x 210 mm",
    "DIN B4, 250 x 354 mm",
    "DIN B5, 182 x 257 mm",
    "Folio, 8 1/2 x 13 Zoll",
    "Quarto, 215 x 275 mm",
    "10 x 14 Zoll",
    "11 x 17 Zoll",
    "US Note, 8 1/2 x 11 Zoll",
    "Umschlag 9, 3 7/8 x 8 7/8 Zoll",
    "Umschlag 10, 4 1/8 x 9 1/2 Zoll",
    "Umschlag 11, 4 1/2 x 10 3/8 Zoll",
    "Umschlag 12, 4 1/2 x 11 Zoll",
    "Umschlag 14, 5 x 11 1/2 Zoll",
    "Blatt in C-Größe",
    "Blatt in D-Größe",
    "Blatt in E-Größe",
    "Umschlag DL, 110 x 220 mm",
    "Umschlag C5, 162 x 229 mm",
    "Umschlag C3, 324 x 458 mm",
    "Umschlag C4, 229 x 324 mm",
    "Umschlag C6, 114 x 162 mm",
    "Umschlag C65, 114 x 229 mm",
    "Umschlag B4, 250 x 353 mm",
    "Umschlag B5, 176 x 250 mm",
    "Umschlag B6, 176 x 125 mm",
    "Umschlag, 110 x 230 mm",
    "Umschlag Monarch, 3 7/8 x 7 1/2 Zoll",
    "Umschlag, 3 5/8 x 6 1/2 Zoll",
    "U.S. Standard Fanfold, 14 7/8 x 11 Zoll",
    "Deutsch Standard-Durchschlag, 8 1/2 x 12 Zoll",
    "Deutsch Legal-Durchschlag, 8 1/2 x 13 Zoll",
    "DIN A4 (auf HP DesignJet)",
    "DIN A3 (auf HP DesignJet)",
    "DIN A2 (auf HP DesignJet)",
    "DIN A1 (auf HP DesignJet)",
    "DIN A0 (auf HP DesignJet)",
    "DIN B4 (auf HP DesignJet)",
    "DIN B3 (auf HP DesignJet)",
    "DIN B2 (auf HP DesignJet)",
    "DIN B1 (auf HP DesignJet)",
    "Benutzerdefiniert",
};

constexpr std::array<std::string_view, 15> bins{
    "oberer Papierschacht",
    "unterer Papierschacht",
    "mittlerer Papierschacht",
    "manuelle Papierzufuhr",
    "Umschlagspapiereinzug",
    "Umschlagspapiereinzug manuelles",
    "aktuelle Voreingestellung",
    "Traktor-Einzug",
    "kleiner Papierbehälter",
    "großer Papierbehälter",
    "Einzug mit großen Papiervorrat",
    "nicht definiert",
    "nicht definiert",
    "angehängte Kassetten-Cartridge",
    "automatisch auswählen",
};

/// A value of the printer, or the empty one if it cannot be read.
template <typename Value>
Value read(Printer& printer, Value (Printer::*member)()) {
    Value value{};
    trapped([&] { value = (printer.*member)(); });
    return value;
}

PaperState read_paper(Printer& printer) {
    return {read(printer, &Printer::PaperBin), read(printer, &Printer::PaperSize),
            read(printer, &Printer::Width), read(printer, &Printer::Height),
            read(printer, &Printer::Orientation)};
}

/// The size of a paper holds for the way it lies, so the paper is turned first.
void write_paper(Printer& printer, const PaperState& paper) {
    trapped([&] { printer.set_PaperBin(paper.bin); });
    trapped([&] { printer.set_PaperSize(paper.paper); });
    choose_orientation(printer, paper.orientation);
    if (paper.paper == user_defined_paper_code) {
        trapped([&] { printer.set_Width(paper.width); });
        trapped([&] { printer.set_Height(paper.height); });
    }
}

/// Runs a change of the printer after which the paper lies as before.
template <typename Change>
void keeping_orientation(Printer& printer, Change&& change) {
    const std::int16_t orientation = read(printer, &Printer::Orientation);
    change();
    choose_orientation(printer, orientation);
}

/// Units of the printer in a millimetre, told by its printable area; twips if it has none.
struct PaperUnits {
    double across = twips_per_millimetre;
    double up = twips_per_millimetre;
};

PaperUnits paper_units(Printer& printer) {
    PaperUnits units;
    trapped([&] {
        const auto ratio = [](float in_twips, float in_millimetres) {
            const double value =
                static_cast<double>(in_twips) / static_cast<double>(in_millimetres);
            return std::isfinite(value) && value > 0 ? value : twips_per_millimetre;
        };
        const float width = printer.ScaleWidth(scale_millimetres);
        const float height = printer.ScaleHeight(scale_millimetres);
        units = {ratio(printer.ScaleWidth(scale_twips), width),
                 ratio(printer.ScaleHeight(scale_twips), height)};
    });
    return units;
}

std::string netto_text(std::string_view name, float length) {
    return std::string(name) + ": " + zahl_text(static_cast<double>(length), "####0.0", " ") +
           " mm";
}

std::int32_t take_current_index(Printer& printer) {
    std::int32_t index = -1;
    trapped([&] { index = find_printer(printer, printer.DeviceName()); });
    return index;
}

}  // namespace

std::span<const std::string_view> paper_texts() {
    return papers;
}

std::span<const std::string_view> paper_bin_texts() {
    return bins;
}

std::string unknown_paper_text(std::int16_t code) {
    return "(unbekanntes Format: " + std::to_string(code) + ")";
}

PrinterOptions open_printer_options(Printer* printer) {
    PrinterOptions options;
    if (printer != nullptr && read(*printer, &Printer::Count) > 0) {
        options.printer_index = take_current_index(*printer);
        options.paper = read_paper(*printer);
    }
    return options;
}

std::int32_t paper_index(PrinterOptions& options, std::int16_t code) {
    if (code >= large_paper_code &&
        code < large_paper_code + user_paper_index - large_paper_index) {
        return code - large_paper_code + large_paper_index;
    }
    if (code == user_defined_paper_code) {
        return user_paper_index;
    }
    if (code > large_paper_index) {
        options.unknown_paper = code;
        return unknown_paper_index;
    }
    return std::max(code - 1, -1);
}

std::int16_t paper_code(const PrinterOptions& options, std::int32_t index) {
    if (index == unknown_paper_index && options.unknown_paper) {
        return *options.unknown_paper;
    }
    if (index == user_paper_index) {
        return user_defined_paper_code;
    }
    return static_cast<std::int16_t>(
        index >= large_paper_index ? index - large_paper_index + large_paper_code : index + 1);
}

std::int32_t paper_bin_index(std::int16_t bin) {
    return bin >= 1 && static_cast<std::size_t>(bin) <= bins.size() ? bin - 1 : -1;
}

PaperView view_paper(Printer& printer) {
    const PaperState state = read_paper(printer);
    const PaperUnits units = paper_units(printer);
    float width = 0;
    float height = 0;
    trapped([&] { width = printer.ScaleWidth(scale_millimetres); });
    trapped([&] { height = printer.ScaleHeight(scale_millimetres); });
    PaperView view;
    view.paper = state.paper;
    view.bin = state.bin;
    view.orientation = state.orientation;
    view.user_defined = state.paper == user_defined_paper_code;
    view.lbl_quer_netto = netto_text("quer", width);
    view.lbl_hoch_netto = netto_text("hoch", height);
    view.txt_quer = zahl_text(static_cast<double>(state.width) / units.across, "####0", "");
    view.txt_hoch = zahl_text(static_cast<double>(state.height) / units.up, "####0", "");
    return view;
}

std::int32_t choose_printer(Session& session, Printer& printer, PrinterOptions& options,
                            std::int32_t index) {
    options.unknown_paper.reset();
    keeping_orientation(printer, [&] {
        trapped([&] { printer.assign(index); });
        CheckPrinterColour(session, printer);
        session.printer.druck_in_datei = table_false;
    });
    bool taken = false;
    trapped([&] { taken = printer.DeviceName(index) == printer.DeviceName(); });
    return taken ? index : take_current_index(printer);
}

std::int32_t choose_standard_printer(Session& session, Printer& printer, PrinterOptions& options) {
    options.unknown_paper.reset();
    keeping_orientation(printer, [&] {
        trapped([&] { printer.EndDoc(); });
        trapped([&] { printer.set_TrackDefault(true); });
        options.printer_index = take_current_index(printer);
        CheckPrinterColour(session, printer);
        session.printer.druck_in_datei = table_false;
    });
    return options.printer_index;
}

bool choose_paper(Printer& printer, std::int16_t code) {
    keeping_orientation(printer, [&] { trapped([&] { printer.set_PaperSize(code); }); });
    return read(printer, &Printer::PaperSize) == code;
}

bool choose_paper_bin(Printer& printer, std::int16_t bin) {
    keeping_orientation(printer, [&] { trapped([&] { printer.set_PaperBin(bin); }); });
    return read(printer, &Printer::PaperBin) == bin;
}

void choose_orientation(Printer& printer, std::int16_t orientation) {
    trapped([&] { printer.set_Orientation(orientation); });
}

bool set_user_paper(Printer& printer, std::string_view across, std::string_view up) {
    const PaperUnits units = paper_units(printer);
    const auto width = to_int32(zahl_wert(across) * units.across);
    const auto height = to_int32(zahl_wert(up) * units.up);
    if (width && *width > 0) {
        trapped([&] { printer.set_Width(static_cast<float>(*width)); });
    }
    if (height && *height > 0) {
        trapped([&] { printer.set_Height(static_cast<float>(*height)); });
    }
    const auto has = [](float taken, std::string_view wanted, double unit) {
        constexpr double rounding = 0.5;  // millimetres
        return std::fabs(static_cast<double>(taken) / unit - zahl_wert(wanted)) <= rounding;
    };
    return has(read(printer, &Printer::Width), across, units.across) &&
           has(read(printer, &Printer::Height), up, units.up);
}

std::int16_t limited_copies(int copies) {
    return static_cast<std::int16_t>(std::clamp(copies, 1, most_copies));
}

std::int16_t copies_of_text(std::string_view text) {
    const double typed = std::clamp(zahl_wert(text), 1.0, static_cast<double>(most_copies));
    return to_int16(typed).value_or(1);
}

bool are_copies(std::string_view text) {
    const double typed = zahl_wert(text);
    return typed >= 1 && typed <= static_cast<double>(most_copies);
}

void accept_printer_options(Session& session, Printer& printer, PrinterOptions& options,
                            std::string_view copies) {
    options.printer_index = take_current_index(printer);
    options.paper = read_paper(printer);
    trapped([&] { printer.EndDoc(); });
    write_paper(printer, options.paper);
    PrinterState& state = session.printer;
    state.exemplare = copies_of_text(copies);
    state.exemplare_merk = state.exemplare;
    state.drucker_farbe_merk = state.drucker_farbe;
    state.druck_in_datei_merk = state.druck_in_datei;
    if (state.drucker_ok == table_true) {
        name_printer_in_menu(session, printer);
    }
}

void reject_printer_options(Session& session, Printer* printer, const PrinterOptions& options) {
    if (printer != nullptr && read(*printer, &Printer::Count) > 0) {
        if (options.printer_index >= 0) {
            trapped([&] { printer->assign(options.printer_index); });
        }
        // The end of the document comes first: a driver forgets its paper with it.
        trapped([&] { printer->EndDoc(); });
        if (options.printer_index >= 0) {
            write_paper(*printer, options.paper);
        }
    }
    PrinterState& state = session.printer;
    state.exemplare = state.exemplare_merk;
    state.drucker_farbe = state.drucker_farbe_merk;
    state.druck_in_datei = state.druck_in_datei_merk;
}

}  // namespace veldra
