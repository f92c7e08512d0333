#include "batch/plot_file.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "batch/batch_session.h"
#include "batch/ground_commands.h"
#include "batch/output.h"
#include "commands/plot_job.h"
#include "plot/application_printer.h"
#include "plot/job_size.h"
#include "plot/legend_place.h"
#include "plot/paper_codes.h"
#include "plot/printer_adapters.h"
#include "plot/sheet_content.h"
#include "plot/sheet_division.h"
#include "reference/reference_system.h"
#include "text/codepage.h"
#include "text/fatal_error.h"

namespace veldra::batch {

namespace {

constexpr std::int16_t unset = -99;
constexpr float twips_per_millimetre = 1440.0F / 25.4F;

/// Keeps the reason for which a plot was given up.
class ReasonKeeper final : public UserInterface {
 public:
    bool message_box(MessageStyle /*style*/, const std::string& /*title*/,
                     const std::string& text) override {
        // Behind the first line, which is the same for all failures, stand device and reason.
        const std::size_t first_end = text.find('\n');
        reason_ = first_end == std::string::npos ? text : text.substr(first_end + 1);
        return true;
    }
    void set_mouse_pointer(int /*pointer*/) override {}

    [[nodiscard]] const std::string& reason() const { return reason_; }

 private:
    std::string reason_;
};

/// A driver may know a paper by another code, so what counts is the size that it then has.
void choose_paper(Printer& printer, const PaperChoice& paper) {
    constexpr float tolerance = 20;  // twips: drivers count in points
    // Whole twips, since a size that is carried across the end of a document is one of whole twips:
    // so it is the same before and after.
    const float width = std::nearbyint(static_cast<float>(paper.width) * twips_per_millimetre);
    const float height = std::nearbyint(static_cast<float>(paper.height) * twips_per_millimetre);
    printer.set_PaperSize(paper.code);
    printer.set_Orientation(hochformat);
    if (paper.code == user_defined_paper_code) {
        printer.set_Width(width);
        printer.set_Height(height);
    }
    if (std::abs(printer.Width() - width) > tolerance ||
        std::abs(printer.Height() - height) > tolerance) {
        throw FatalError(fmt::format("{}: das Papier {} x {} mm ist nicht möglich",
                                     printer.DeviceName(), paper.width, paper.height));
    }
}

/// Drops the document unless it was ended.
class Document {
 public:
    explicit Document(Printer& printer) : printer_(printer) {}
    ~Document() { printer_.abort_job(); }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    void begin(const Session& session) {
        if (!printer_.begin_job({session.titel[0].getTitelText()})) {
            throw FatalError(printer_.DeviceName() + ": Druckauftrag nicht begonnen");
        }
    }
    void end() { printer_.end_job(); }

 private:
    Printer& printer_;
};

class FilePlot {
 public:
    FilePlot(const PlotTask& task, Printer& printer)
        : task_(task),
          printer_(printer),
          desk_{printer.measurer(), ui_, [] {}, &printer},
          selection_(selection_change(task.file)) {}

    PlottedFile run() {
        prepare();
        const std::vector<std::int32_t> parts = wanted_parts();
        PlottedFile file;
        std::vector<PlottedPart>& plotted = file.parts;
        plotted.resize(parts.size());
        if (task_.with_protocol) {
            file.ledger = ledger_of(working_path(session_));
        }
        settle_new_parts(parts, plotted);
        survey(parts, plotted);
        Document document(printer_);
        document.begin(session_);
        for (int copy = 1; copy <= task_.copies; ++copy) {
            for (std::size_t i = 0; i < parts.size(); ++i) {
                plot_part(parts[i], copy == 1, plotted[i]);
            }
        }
        document.end();
        return file;
    }

 private:
    void prepare() {
        prepare_session(session_, task_.file);
        take_printer(session_, &printer_);
        if (session_.printer.drucker_ok != table_true) {
            throw FatalError(printer_.DeviceName() + ": der Drucker ist nicht verfügbar");
        }
        if (task_.choice.paper) {
            choose_paper(printer_, *task_.choice.paper);
        }
        if (task_.grey) {
            // The layers make grey what they can do without colour; the rest is left to the device.
            session_.printer.drucker_farbe = print_monochrome;
            printer_.set_ColorMode(print_monochrome);
        }
        session_.printer.ohne_leere = task_.without_empty ? table_true : table_false;
        read_head(session_, task_.file);
    }

    [[nodiscard]] std::vector<std::int32_t> wanted_parts() const {
        std::vector<std::int32_t> parts;
        if (task_.all_parts) {
            for (std::int32_t i = 1; i <= session_.netz.count(); ++i) {
                parts.push_back(i);
            }
        }
        for (const std::string& name : task_.parts) {
            parts.push_back(part_number(session_, name));
        }
        if (parts.empty()) {
            parts.push_back(session_.netz_aktuell);
        }
        return parts;
    }

    /// Opens a part; one whose sheets cannot be counted gets its reason instead.
    void try_part(std::int32_t part, PlottedPart& result) {
        try {
            open_part(part);
            result.empty = nothing_to_plot();
        } catch (const SheetOverflow& overflow) {
            opened_ = -1;
            result.name = part > 0 ? to_utf8(session_.netz[part].netz_name) : std::string();
            result.failure = one_line(overflow.what());
        }
    }

    /// Choosing scale or orientation resets the printer, which would end an open document.
    void settle_new_parts(const std::vector<std::int32_t>& parts,
                          std::vector<PlottedPart>& plotted) {
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (parts[i] == 0 || session_.netz[parts[i]].netz_ausrichtung == unset) {
                try_part(parts[i], plotted[i]);
            }
        }
    }

    /// Counts the sheets before anything is written. Throws FatalError if they are too many, or if
    /// there are none.
    void survey(const std::vector<std::int32_t>& parts, std::vector<PlottedPart>& plotted) {
        JobSize size;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (plotted[i].failure.empty()) {
                try_part(parts[i], plotted[i]);
            }
            if (plotted[i].failure.empty() && !plotted[i].empty) {
                size.add_part(session_, desk_, task_.copies);
            }
        }
        if (size.sheets() == 0) {
            refuse_nothing(plotted);
        }
        if (size.sheets() > task_.most_sheets) {
            throw FatalError(fmt::format(
                "{}: {} Blätter, höchstens {} (--hoechstens); am weitesten außen liegt {}",
                session_.graphikdatei, size.sheets(), task_.most_sheets,
                size.farthest_out(session_)));
        }
        if (size.sheets() > announced_sheets) {
            remark(fmt::format("{}: {} Blätter; am weitesten außen liegt {}", session_.graphikdatei,
                               size.sheets(), size.farthest_out(session_)));
        }
    }

    [[noreturn]] void refuse_nothing(const std::vector<PlottedPart>& plotted) const {
        for (const PlottedPart& part : plotted) {
            if (!part.failure.empty()) {
                throw FatalError(part.failure);
            }
        }
        throw FatalError(session_.graphikdatei + ": es gibt nichts zu plotten");
    }

    [[nodiscard]] bool nothing_to_plot() const {
        return session_.pu.count() < 1 && session_.lin.count() < 1;
    }

    /// Each part is read once for a copy; one that is open already is not read again.
    void open_part(std::int32_t part) {
        if (opened_ != part) {
            opened_ = part;
            read_part(part);
        }
    }

    void plot_part(std::int32_t part, bool first_copy, PlottedPart& result) {
        if (!result.failure.empty()) {
            return;
        }
        open_part(part);
        const bool empty = nothing_to_plot();
        if (!empty) {
            std::int16_t abbruch = 0;
            PlotNetworkPart(session_, printer_, desk_, abbruch);
            if (abbruch != 0) {
                throw FatalError(ui_.reason());
            }
        }
        if (first_copy) {
            describe_part(empty, result);
        }
    }

    void read_part(std::int32_t part) {
        session_.netz_aktuell = part;
        if (part > 0) {
            load_plot_settings(session_);
        }
        netzteil_daten_lesen(session_, selection_);
        if (!nothing_to_plot()) {
            settle_plot();
            if (part > 0) {
                store_plot_settings(session_);
            }
            ResolveSystem(session_);
            load_boundaries(session_);
        }
    }

    void settle_plot() {
        PlotSettings& plot = session_.plot;
        const PlotChoice& choice = task_.choice;
        const bool never_plotted = plot.plot_ausrichtung == unset;
        if (choice.denominator) {
            plot.plot_massstab = 1 / *choice.denominator;
        }
        const bool scale_stands = plot.plot_massstab > 0;
        ComputeSheetDivision(session_, desk_);
        if (choice.orientation) {
            plot.plot_ausrichtung = *choice.orientation;
        }
        if (never_plotted) {
            plot.plot_heftrand =
                plot.plot_ausrichtung == querformat ? heftrand_oben : heftrand_links;
        }
        plot.plot_heftrand = choice.margin.value_or(plot.plot_heftrand);
        if (never_plotted && (choice.orientation || choice.margin)) {
            fit_to_paper(scale_stands);
        }
        plot.plot_legendenlage = choice.legend.value_or(plot.plot_legendenlage);
        if (choice.zero) {
            plot.plot_null_rechts = choice.zero->rechts;
            plot.plot_null_hoch = choice.zero->hoch;
        }
        if (choice.sheets) {
            plot.plot_blatt_auto = table_false;
            plot.plot_blatt_rechts = choice.sheets->columns;
            plot.plot_blatt_hoch = choice.sheets->rows;
        }
        ComputeSheetDivision(session_, desk_);
        if (never_plotted && !choice.legend) {
            choose_legend_place(session_, desk_, session_.sheet);
        }
        if (choice.paper && !leaves_room(session_.sheet)) {
            throw FatalError(fmt::format(
                "--papier {} x {} mm: von den Blättern bleiben ohne Ränder weniger als 50 mm",
                choice.paper->width, choice.paper->height));
        }
    }

    /// A part without settings of its own is fitted to the paper as it is asked for.
    void fit_to_paper(bool scale_stands) {
        if (scale_stands) {
            ComputeExtents(session_, desk_);
        } else {
            choose_plot_scale(session_, desk_);
        }
        session_.plot.plot_null_rechts = session_.extents.gesamt_rw_min;
        session_.plot.plot_null_hoch = session_.extents.gesamt_hw_min;
    }

    void describe_part(bool empty, PlottedPart& result) {
        if (session_.netz_aktuell > 0) {
            result.name = to_utf8(session_.netz[session_.netz_aktuell].netz_name);
        }
        result.empty = empty;
        if (empty) {
            remark(fmt::format("{}: Netzteil \"{}\" enthält keine darzustellenden Objekte",
                               session_.graphikdatei, result.name));
        } else {
            result.sheets = {session_.plot.plot_blatt_rechts, session_.plot.plot_blatt_hoch};
            // The scale is kept as 1/M; a millionth is beyond what a denominator is given to.
            constexpr double precision = 1e6;
            result.denominator = std::round(precision / session_.plot.plot_massstab) / precision;
        }
        if (task_.with_protocol) {
            PaperFonts fonts;
            if (!empty) {
                const PartOnPaper part = prepare_part(session_, printer_, desk_);
                fonts = part.fonts;
                result.empty_sheets = count_empty_sheets(part);
            }
            result.protocol = count_part(session_, fonts, printer_.measurer());
        }
    }

    std::int64_t count_empty_sheets(const PartOnPaper& part) {
        std::int64_t empty = 0;
        SheetPlace place{1, session_.plot.plot_blatt_rechts, 1, session_.plot.plot_blatt_hoch};
        for (int column = 1; column <= place.columns; ++column) {
            for (int row = 1; row <= place.rows; ++row) {
                place.column = static_cast<std::int16_t>(column);
                place.row = static_cast<std::int16_t>(row);
                empty += shows_anything(session_, part, place, printer_.measurer()) ? 0 : 1;
            }
        }
        return empty;
    }

    const PlotTask& task_;
    Printer& printer_;
    ReasonKeeper ui_;
    Desk desk_;
    SelectionChange selection_;
    Session session_;
    std::int32_t opened_ = -1;
};

}  // namespace

PlottedFile plot_file(const PlotTask& task, Printer& printer) {
    try {
        return FilePlot(task, printer).run();
    } catch (const PrinterError& error) {
        throw FatalError(error.what());
    }
}

}  // namespace veldra::batch
