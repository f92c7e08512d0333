#include "plot/application_printer.h"

#include <cmath>

#include "model/paper_text.h"
#include "plot/printer.h"
#include "plot/trapped_call.h"

namespace veldra {

namespace {

constexpr std::int16_t user_defined_paper = 256;
constexpr const char* measured_digits = "1234";

bool works(const Session& session) {
    return session.printer.drucker_ok == table_true;
}

bool takes_orientation(Printer& printer, std::int16_t orientation) {
    printer.set_Orientation(orientation);
    return printer.Orientation() == orientation;
}

bool passes_check(Session& session, Printer& printer) {
    bool passed = false;
    trapped([&] {
        if (printer.Count() <= 0 || !takes_orientation(printer, hochformat)) {
            return;
        }
        ResetPrinter(session, printer);
        passed = takes_orientation(printer, querformat);
    });
    return passed;
}

float whole(float twips) {
    return std::nearbyintf(twips);
}

std::string file_message(const std::string& wanted) {
    return "Zur Ausgabe der Druckbefehle in eine Datei müssen Sie\n"
           "im folgenden Formular den gewünschten Drucker (" +
           wanted +
           ")\n"
           "als Standarddrucker einstellen und nach OK den Dateinamen eingeben.\n"
           "Die erzeugte Datei können Sie ausdrucken, indem Sie im DOS-Fenster eingeben\n"
           "PRINT dateiname bzw. TYPE dateiname > \"" +
           wanted + "\"";
}

/// The printer follows the system's default printer as long as this lives.
class Tracking {
 public:
    explicit Tracking(Printer& printer) : printer_(printer) { printer_.set_TrackDefault(true); }
    ~Tracking() {
        trapped([this] { printer_.set_TrackDefault(false); });
    }
    Tracking(const Tracking&) = delete;
    Tracking& operator=(const Tracking&) = delete;

 private:
    Printer& printer_;
};

}  // namespace

void mark_printer_unavailable(Session& session) {
    session.printer.drucker_ok = table_false;
    MenuItemState& item = session.window[MenuItem::m_optionen_drucker];
    item.caption = "Druckertreiber nicht verfügbar";
    item.enabled = false;
}

void name_printer_in_menu(Session& session, Printer& printer) {
    std::string name;
    trapped([&] { name = printer.DeviceName(); });
    session.window[MenuItem::m_optionen_drucker].caption = "&Anwendungsdrucker: " + name;
}

void CheckPrinter(Session& session, Printer* printer) {
    if (printer != nullptr && passes_check(session, *printer)) {
        ResetPrinter(session, *printer);
        session.printer.drucker_ok = table_true;
        session.window[MenuItem::m_optionen_drucker].enabled = true;
        name_printer_in_menu(session, *printer);
        return;
    }
    if (printer != nullptr) {
        trapped([&] { printer->EndDoc(); });
    }
    mark_printer_unavailable(session);
}

void CheckPrinterColour(Session& session, Printer& printer) {
    if (!works(session)) {
        return;
    }
    session.printer.drucker_farbe = print_colour;
    std::int16_t taken = 0;
    trapped([&] { printer.set_ColorMode(print_monochrome); });
    trapped([&] { printer.set_ColorMode(print_colour); });
    trapped([&] { taken = printer.ColorMode(); });
    if (taken != print_colour) {
        session.printer.drucker_farbe = print_monochrome;
    }
    ResetPrinter(session, printer);
}

void ResetPrinter(Session& session, Printer& printer) {
    if (!works(session)) {
        return;
    }
    PrinterState& state = session.printer;
    // Each call is tried whatever became of the one before.
    trapped([&] { state.merk_schacht = printer.PaperBin(); });
    trapped([&] { state.merk_format = printer.PaperSize(); });
    trapped([&] { state.merk_breite = printer.Width(); });
    trapped([&] { state.merk_hoehe = printer.Height(); });
    trapped([&] { printer.EndDoc(); });
    trapped([&] { printer.set_PaperBin(state.merk_schacht); });
    trapped([&] { printer.set_PaperSize(state.merk_format); });
    std::int16_t format = 0;
    trapped([&] { format = printer.PaperSize(); });
    if (format == user_defined_paper) {
        trapped([&] { printer.set_Width(whole(state.merk_breite)); });
        trapped([&] { printer.set_Height(whole(state.merk_hoehe)); });
    }
}

void take_printer(Session& session, Printer* printer) {
    PrinterState& state = session.printer;
    trapped([&] {
        if (printer != nullptr && printer->Count() > 0) {
            state.drucker_start = printer->DeviceName();
        }
    });
    CheckPrinter(session, printer);
    if (printer != nullptr) {
        CheckPrinterColour(session, *printer);
    }
    state.drucker_farbe_merk = state.drucker_farbe;
    state.druck_in_datei = table_false;
    state.druck_in_datei_merk = table_false;
    state.exemplare = 1;
    state.exemplare_merk = 1;
}

std::int32_t find_printer(Printer& printer, const std::string& name) {
    std::int32_t found = -1;
    const std::int32_t count = printer.Count();
    for (std::int32_t i = 0; i < count; ++i) {
        if (printer.DeviceName(i) == name) {
            found = i;
        }
    }
    return found;
}

void PreparePrintToFile(Session& session, Printer& printer, UserInterface& ui,
                        PrintDialog& dialog) {
    std::int16_t& druck_in_datei = session.printer.druck_in_datei;
    if (druck_in_datei == table_false) {
        return;
    }
    const std::string wanted = printer.DeviceName();
    const std::int32_t index = find_printer(printer, wanted);
    const std::string message = file_message(wanted);
    const Tracking tracking(printer);
    std::string current;
    while (wanted != current && druck_in_datei != table_false) {
        ui.message_box(MessageStyle::information, "Ausgabe in Datei", message);
        const std::int32_t flags =
            dialog.ShowPrinter(PrintDialog::print_to_file | PrintDialog::no_selection);
        printer.set_Copies(1);
        current = printer.DeviceName();
        druck_in_datei = (flags & PrintDialog::print_to_file) != 0 ? table_true : table_false;
    }
    if (druck_in_datei == table_false && index >= 0) {
        printer.assign(index);
    }
}

void ask_for_default_printer(const Session& session, Printer& printer, UserInterface& ui,
                             PrintDialog& dialog) {
    trapped([&] {
        if (printer.Count() <= 0) {
            return;
        }
        const Tracking tracking(printer);
        if (printer.DeviceName() != session.printer.drucker_start &&
            ui.message_box(MessageStyle::question_yes_no, "Druckerauswahl",
                           "Sie haben im Laufe der Bearbeitung Ihren Standarddrucker verändert.\n"
                           "Wollen Sie ihn jetzt erneut auswählen?")) {
            dialog.ShowPrinter(PrintDialog::printer_setup);
        }
    });
}

void FitPrinterFont(const Session& session, Printer& printer, float size, const FontSpec& font,
                    std::int16_t& points) {
    constexpr std::int16_t smallest = 7;
    constexpr std::int16_t last_tried = 2160;
    if (!works(session)) {
        return;
    }
    const auto target =
        static_cast<float>((static_cast<double>(size) + 0.05) * line_height_per_digit);
    FontSpec tried = font;
    const auto height_above = [&](std::int16_t at) {
        tried.points = at + 1;
        return printer.TextHeight(measured_digits, tried);
    };
    std::int16_t fitting = smallest;
    while (fitting <= last_tried && !(height_above(fitting) > static_cast<double>(target))) {
        ++fitting;
    }
    points = fitting;
}

void SetPrinterFont(const Session& session, Printer& printer, const FontSpec& font, float& size) {
    if (session.printer.drucker_ok == table_false) {
        return;
    }
    size = static_cast<float>(printer.TextHeight(measured_digits, font) / line_height_per_digit);
}

}  // namespace veldra
