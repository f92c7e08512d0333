#include "commands/plot_job.h"

#include <exception>
#include <functional>
#include <optional>
#include <set>

#include "commands/file_watch.h"
#include "commands/write_back.h"
#include "drawing/fonts.h"
#include "graphikdatei/observation_pass.h"
#include "graphikdatei/point_pass.h"
#include "graphikdatei/value_pass.h"
#include "graphikdatei/writer.h"
#include "model/former_part.h"
#include "model/hourglass.h"
#include "plot/application_printer.h"
#include "plot/fitted_font.h"
#include "plot/job_size.h"
#include "plot/plot_page.h"
#include "plot/printer.h"
#include "plot/printer_adapters.h"
#include "plot/sheet_content.h"
#include "plot/sheet_division.h"
#include "plot/trapped_call.h"
#include "reference/reference_system.h"
#include "text/fatal_error.h"
#include "view/viewport.h"

namespace veldra {

namespace {

constexpr float twips_per_millimetre = 1440.0F / 25.4F;

/// Runs calls on the printer. One that fails is reported and sets `abbruch`.
template <typename Calls>
void trap_printer(UserInterface& ui, std::int16_t& abbruch, Calls&& calls) {
    try {
        calls();
    } catch (const PrinterError& error) {
        report_printer_failure(ui, error);
        abbruch = 1;
    }
}

std::int16_t fitted_points(const Session& session, Printer& printer, const FontSpec& font,
                           float size) {
    return static_cast<std::int16_t>(fitted_font(session, printer, font, size).points);
}

/// Name of the current part, for a reader of the document.
std::string part_name(const Session& session) {
    return session.netz.count() > 0 ? session.netz[session.part.netz_aktuell].netz_name
                                    : std::string();
}

void plot_sheets(Session& session, Printer& printer, UserInterface& ui, const PartOnPaper& part) {
    SheetPlace place;
    place.columns = session.part.plot.plot_blatt_rechts;
    place.rows = session.part.plot.plot_blatt_hoch;
    for (int column = 1; column <= place.columns; ++column) {
        for (int row = 1; row <= place.rows; ++row) {
            place.column = static_cast<std::int16_t>(column);
            place.row = static_cast<std::int16_t>(row);
            if (session.printer.ohne_leere != table_false &&
                !shows_anything(session, part, place, printer.measurer())) {
                continue;
            }
            printer.begin_sheet({part_name(session), sheet_title(place)});
            PlotPage(session, printer, ui, part, place);
            printer.NewPage();
        }
    }
}

/// The tables as the file holds them; selection and titles as the part's records tell.
void read_part(Session& session) {
    punkt_lesen(session);
    beob_lesen(session);
    wert_lesen(session);
}

void make_current(Session& session, std::int32_t part) {
    session.part.netz_aktuell = part;
    load_plot_settings(session);
}

void divide_and_resolve(Session& session, const Desk& desk) {
    ComputeSheetDivision(session, desk);
    ResolveSystem(session);
}

/// Calls `visit` for each marked part.
template <typename Visit>
void visit_marked(Session& session, Visit&& visit) {
    for (std::int32_t part = 1; part <= session.netz.count(); ++part) {
        if (session.netz[part].netz_plotmarke == table_true) {
            visit(part);
        }
    }
}

/// The marked parts of a job, which begins with reading them for their sheets and ends with the
/// part in view as it was before.
class MarkedParts {
 public:
    MarkedParts(Session& session, const Desk& desk) : session_(session), desk_(desk) {}

    /// Settles the parts and counts their sheets. Parts whose sheets cannot be counted are told
    /// and left out of the job.
    JobSize survey() {
        {
            const Hourglass hourglass(session_, desk_.ui);
            arbeitskopie_schreiben(session_);
        }
        store_plot_settings(session_);
        in_view_.emplace(session_, FormerPart::Points::moved, session_.part.obj);
        selection_ = session_.part.obj;
        JobSize size;
        keep_file_whole([&] {
            const Hourglass hourglass(session_, desk_.ui);
            visit([&](std::int32_t part) { survey_part(part, size); });
        });
        session_.part.obj = selection_;
        return size;
    }

    void plot(Printer& printer, std::int16_t& abbruch) {
        keep_file_whole([&] {
            trap_printer(desk_.ui, abbruch, [&] {
                for (int copy = 1; copy <= session_.printer.exemplare && abbruch == 0; ++copy) {
                    visit([&](std::int32_t part) {
                        if (abbruch == 0) {
                            plot_part(printer, part, abbruch);
                        }
                    });
                }
            });
        });
    }

    /// Nothing if survey() has not begun.
    void restore() {
        if (in_view_) {
            in_view_.reset();
            load_plot_settings(session_);
        }
    }

 private:
    /// When `work` fails, the part in view is the session's again; all that the user has moved was
    /// written.
    template <typename Work>
    void keep_file_whole(Work&& work) {
        try {
            work();
        } catch (const FatalError& error) {
            in_view_.reset();
            throw abandon_file(session_, desk_, error.what(), WorkingCopy::written);
        }
    }

    /// Calls `to_do` for each marked part that can be plotted.
    template <typename ToDo>
    void visit(ToDo&& to_do) {
        visit_marked(session_, [&](std::int32_t part) {
            if (!overflowing_.contains(part)) {
                to_do(part);
            }
        });
    }

    [[nodiscard]] bool is_empty() const {
        return session_.part.pu.count() < 1 && session_.part.lin.count() < 1;
    }

    /// Parts that have never been plotted get their settings.
    void survey_part(std::int32_t part, JobSize& size) {
        make_current(session_, part);
        try {
            if (session_.netz[part].netz_ausrichtung == -99) {
                netzteil_lesen(session_, desk_);
                store_plot_settings(session_);
                selection_ = session_.part.obj;
            } else {
                read(part);
            }
            if (!is_empty()) {
                size.add_part(session_, desk_, session_.printer.exemplare);
            }
        } catch (const SheetOverflow& overflow) {
            overflowing_.insert(part);
            desk_.ui.message_box(MessageStyle::critical, "Netzteil(e) plotten", overflow.what());
        }
    }

    void read(std::int32_t part) {
        make_current(session_, part);
        clear_part_titles(session_.part);
        read_part(session_);
        divide_and_resolve(session_, desk_);
    }

    void plot_part(Printer& printer, std::int32_t part, std::int16_t& abbruch) {
        read(part);
        if (is_empty()) {
            session_.netz[part].netz_plotmarke = table_false;
            return;
        }
        PlotNetworkPart(session_, printer, desk_, abbruch);
    }

    Session& session_;
    const Desk& desk_;
    /// Put aside whole while the session has a part of the job; comes back as it was.
    std::optional<FormerPart> in_view_;
    /// The one that parts without a record of their own begin with; counting leaves no trace in it.
    ObjectSelection selection_;
    std::set<std::int32_t> overflowing_;
};

/// Drops the document unless it was ended.
class Document {
 public:
    explicit Document(Printer& printer) : printer_(printer) {}
    ~Document() {
        if (open_) {
            printer_.abort_job();
        }
    }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    bool begin(const Session& session) {
        open_ = printer_.begin_job({session.part.titel[0].getTitelText()});
        return open_;
    }
    void end() {
        printer_.end_job();
        open_ = false;
    }

 private:
    Printer& printer_;
    bool open_ = false;
};

/// Another device takes the place of the application printer as long as this lives.
class StandIn {
 public:
    explicit StandIn(Session& session)
        : session_(session),
          printer_(session.printer),
          plot_(session.part.plot),
          sheet_(session.part.sheet) {
        constexpr std::int16_t colours = 2;
        session.printer.drucker_ok = table_true;
        session.printer.drucker_farbe = colours;
    }
    ~StandIn() {
        session_.printer = printer_;
        session_.part.plot = plot_;
        session_.part.sheet = sheet_;
    }
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;

 private:
    Session& session_;
    PrinterState printer_;
    PlotSettings plot_;
    SheetGeometry sheet_;
};

/// What both commands do around the plotting itself, if `confirm` lets it begin.
bool run_job(Session& session, const Desk& desk, const std::function<bool()>& confirm,
             const std::function<void(Printer&, std::int16_t&)>& plot) {
    if (desk.printer == nullptr) {
        report_printer_failure(desk.ui, PrinterError(""));
        return false;
    }
    Printer& printer = *desk.printer;
    std::int16_t abbruch = 0;
    bool begun = false;
    ResetPrinter(session, printer);
    {
        Document document(printer);
        trap_printer(desk.ui, abbruch, [&] {
            if (!confirm()) {
                return;
            }
            if (desk.print_dialog != nullptr) {
                PreparePrintToFile(session, printer, desk.ui, *desk.print_dialog);
            }
            begun = document.begin(session);
        });
        if (begun) {
            plot(printer, abbruch);
        }
        if (begun && abbruch == 0) {
            trap_printer(desk.ui, abbruch, [&] { document.end(); });
        }
    }
    ResetPrinter(session, printer);
    if (begun) {
        desk.redraw();
        clear_undo(session.window);
    }
    return begun && abbruch == 0;
}

}  // namespace

PartOnPaper prepare_part(Session& session, Printer& printer, const Desk& desk) {
    ComputePaperArea(session, desk);
    printer.set_Orientation(printer.Orientation());
    const Settings& settings = session.settings;
    PartOnPaper part;
    part.fonts.point_labels =
        fitted_points(session, printer, point_label_font(settings), settings.pubsizplo);
    part.fonts.district_labels =
        fitted_points(session, printer, district_label_font(settings), settings.nubsizplo);
    PaperTextOnDesk text(session, desk.measurer, desk.printer);
    part.legend = ComputeLegendSize(session, text);
    count_plot_sheets(session);
    return part;
}

void PlotNetworkPart(Session& session, Printer& printer, const Desk& desk, std::int16_t& abbruch) {
    const Hourglass hourglass(session, desk.ui);
    trap_printer(desk.ui, abbruch, [&] {
        const PartOnPaper part = prepare_part(session, printer, desk);
        plot_sheets(session, printer, desk.ui, part);
    });
}

bool plotten_aktuell(Session& session, const Desk& desk) {
    const auto confirm = [&] {
        JobSize size;
        size.add_part(session, desk, session.printer.exemplare);
        return confirm_job(session, desk.ui, size);
    };
    return run_job(session, desk, confirm, [&](Printer& printer, std::int16_t& abbruch) {
        for (int copy = 1; copy <= session.printer.exemplare && abbruch == 0; ++copy) {
            PlotNetworkPart(session, printer, desk, abbruch);
        }
    });
}

void plot_on_device(Session& session, Printer& device, const Desk& desk) {
    JobSize size;
    size.add_part(session, desk, 1);
    if (!confirm_job(session, desk.ui, size)) {
        return;
    }
    Document document(device);
    if (!document.begin(session)) {
        return;
    }
    std::exception_ptr failure;
    try {
        const Hourglass hourglass(session, desk.ui);
        const StandIn stand_in(session);
        Desk with_device = desk;
        with_device.printer = &device;
        const PartOnPaper part = prepare_part(session, device, with_device);
        plot_sheets(session, device, desk.ui, part);
        document.end();
    } catch (...) {
        failure = std::current_exception();
    }
    desk.redraw();
    clear_undo(session.window);
    if (failure) {
        std::rethrow_exception(failure);
    }
}

PlotPaper plot_paper(Session& session, const Desk& desk) {
    constexpr std::int16_t a4 = 9;
    constexpr float a4_short = 210 * twips_per_millimetre;
    constexpr float a4_long = 297 * twips_per_millimetre;
    const bool lying = session.part.plot.plot_ausrichtung == querformat;
    PlotPaper paper{a4, lying ? a4_long : a4_short, lying ? a4_short : a4_long, 0, 0};
    ComputePaperArea(session, desk);
    if (session.printer.drucker_ok == table_true && desk.printer != nullptr) {
        trapped([&] {
            Printer& printer = *desk.printer;
            paper = {printer.PaperSize(), printer.Width(), printer.Height(), 0, 0};
        });
    }
    const SheetGeometry& sheet = session.part.sheet;
    paper.printable_width = (sheet.papier_breite + sheet.rand_links + sheet.rand_rechts) * 1000;
    paper.printable_height = (sheet.papier_hoehe + sheet.rand_oben + sheet.rand_unten) * 1000;
    return paper;
}

bool plotten_alle(Session& session, const Desk& desk) {
    if (!desk.ui.message_box(MessageStyle::question_yes_no, "Plotten",
                             "Sollen wirklich alle gekennzeichneten\nNetzteile geplottet "
                             "werden?")) {
        return false;
    }
    if (desk.watch != nullptr) {
        desk.watch->read_only().note_changes(session);
    }
    MarkedParts parts(session, desk);
    bool begun = false;
    const auto confirm = [&] { return confirm_job(session, desk.ui, parts.survey()); };
    const bool plotted =
        run_job(session, desk, confirm, [&](Printer& printer, std::int16_t& abbruch) {
            begun = true;
            parts.plot(printer, abbruch);
            parts.restore();
        });
    if (!begun) {
        parts.restore();
    }
    if (desk.watch != nullptr) {
        // The settings that parts without any have got are nobody's change.
        desk.watch->read_only().take_as_read(session);
    }
    return plotted;
}

}  // namespace veldra
