#include "plot/sheet_division.h"

#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <tuple>

#include "plot/application_printer.h"
#include "plot/far_point.h"
#include "plot/printer.h"
#include "text/fatal_error.h"
#include "text/text_forms.h"
#include "view/extents.h"

namespace veldra {

namespace {

constexpr double schmaler_rand = 0.0005;
constexpr double binding_rand = 0.015;
constexpr double fuss_rand = 0.012;

bool within_16_bits(double value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return value >= Limits::min() && value <= Limits::max();
}

/// Sheets on one axis before they are a number of 16 bits.
double sheets_on_axis(const Session& session, double extent, double net) {
    return std::trunc(extent * session.plot.plot_massstab / net) + 1;
}

std::int16_t narrow_or_overflow(const Session& session, double value, const char* field) {
    if (!within_16_bits(value)) {
        const FatalError overflow = runtime_error_at(6, {session.graphikdatei, 0, field});
        const auto farthest = point_farthest_out(session);
        throw SheetOverflow(
            overflow.what() +
            (farthest ? "\nAm weitesten außen: " + describe(session, *farthest) : std::string()));
    }
    return static_cast<std::int16_t>(value);
}

/// The printable area while there is a printer that works. One that fails here counts as gone.
std::optional<PrintableArea> area_of_printer(Session& session, SheetPrinter* printer) {
    if (session.printer.drucker_ok != table_true || printer == nullptr) {
        return std::nullopt;
    }
    try {
        return printer->printable_area(session.plot.plot_ausrichtung);
    } catch (const PrinterError&) {
        mark_printer_unavailable(session);
        return std::nullopt;
    }
}

class SheetDivision {
 public:
    SheetDivision(Session& session, PaperTextSize& paper_text, SheetPrinter* printer)
        : session_(session), plot_(session.plot), paper_text_(paper_text), printer_(printer) {}

    /// Gives the paper of the orientation taken.
    SheetGeometry run() {
        if (part_is_empty(session_)) {
            compute_extents();
        } else if (plot_.plot_ausrichtung != -99) {
            keep_settings();
        } else {
            if (plot_.plot_massstab <= 0) {
                choose_scale();
            } else {
                choose_orientation();
            }
            plot_.plot_null_rechts = session_.extents.gesamt_rw_min;
            plot_.plot_null_hoch = session_.extents.gesamt_hw_min;
            plot_.plot_blatt_auto = table_true;
            count_sheets();
        }
        plot_merken(session_, 2);
        return plot_.plot_ausrichtung == querformat && tried_landscape_ ? *tried_landscape_
                                                                        : session_.sheet;
    }

    void choose_scale_of_orientation() { largest_fitting_scale(bare_span(session_)); }

 private:
    void set_landscape() {
        plot_.plot_ausrichtung = querformat;
        plot_.plot_heftrand = heftrand_oben;
    }

    void set_portrait() {
        plot_.plot_ausrichtung = hochformat;
        plot_.plot_heftrand = heftrand_links;
    }

    void reset_printer() {
        if (printer_ != nullptr) {
            printer_->ResetPrinter();
        }
    }

    void compute_extents() { ComputeExtents(session_, paper_text_); }

    /// Extents at the scale of a list index. They do not depend on the orientation, so each scale
    /// is computed once for both.
    void compute_extents_at(std::size_t index) {
        std::optional<Extents>& known = extents_at_[index];
        if (!known) {
            compute_extents();
            known = session_.extents;
        }
        session_.extents = *known;
    }

    [[nodiscard]] double width() const {
        return session_.extents.gesamt_rw_max - session_.extents.gesamt_rw_min;
    }
    [[nodiscard]] double height() const {
        return session_.extents.gesamt_hw_max - session_.extents.gesamt_hw_min;
    }

    void set_scale(std::size_t index) {
        plot_.plot_massstab = 1 / GroupDigits(ApplyScaleList()[index]).value;
    }

    /// Index of the largest scale at which the part fits on one sheet, 0 if none does. Scales at
    /// which the bare coordinates alone are too wide are passed over without measuring labels.
    std::size_t largest_fitting_scale(const BareSpan& bare) {
        ComputePaperArea(session_, printer_);
        const SheetGeometry& sheet = session_.sheet;
        for (std::size_t index = ApplyScaleList().size() - 1;; --index) {
            set_scale(index);
            const double s = plot_.plot_massstab;
            if (index > 0 &&
                (bare.rechts * s > sheet.papier_breite || bare.hoch * s > sheet.papier_hoehe)) {
                continue;
            }
            compute_extents_at(index);
            if (index == 0 ||
                (width() * s <= sheet.papier_breite && height() * s <= sheet.papier_hoehe)) {
                return index;
            }
        }
    }

    /// Neither scale nor orientation is known. Leaves `papier_*` at those of the portrait sheet.
    void choose_scale() {
        const BareSpan bare = bare_span(session_);
        set_landscape();
        const std::size_t landscape = largest_fitting_scale(bare);
        tried_landscape_ = session_.sheet;
        reset_printer();
        set_portrait();
        const std::size_t portrait = largest_fitting_scale(bare);
        reset_printer();
        if (portrait < landscape) {
            set_landscape();
            set_scale(landscape);
            compute_extents_at(landscape);
        }
    }

    std::int16_t sheets_of_extents() {
        ComputePaperArea(session_, printer_);
        const SheetGeometry& sheet = session_.sheet;
        const int across = sheet_count(session_, width(), sheet.papier_breite, "plot_auto_rechts");
        const int up = sheet_count(session_, height(), sheet.papier_hoehe, "plot_auto_hoch");
        reset_printer();
        return narrow_or_overflow(session_, across * up, "plot_auto_rechts");
    }

    /// The scale stands; the orientation with fewer sheets is taken, upright on a tie. Leaves
    /// `papier_*` at those of the portrait sheet. The extents depend on neither.
    void choose_orientation() {
        compute_extents();
        set_landscape();
        const std::int16_t landscape = sheets_of_extents();
        tried_landscape_ = session_.sheet;
        set_portrait();
        const std::int16_t portrait = sheets_of_extents();
        if (portrait > landscape) {
            set_landscape();
        }
    }

    void keep_settings() {
        ComputePaperArea(session_, printer_);
        compute_extents();
        count_sheets();
    }

    void count_sheets() {
        SheetGeometry& sheet = session_.sheet;
        const Extents& extents = session_.extents;
        sheet.plot_auto_rechts =
            sheet_count(session_, extents.gesamt_rw_max - plot_.plot_null_rechts,
                        sheet.papier_breite, "plot_auto_rechts");
        sheet.plot_auto_hoch = sheet_count(session_, extents.gesamt_hw_max - plot_.plot_null_hoch,
                                           sheet.papier_hoehe, "plot_auto_hoch");
        if (plot_.plot_blatt_auto == table_true) {
            plot_.plot_blatt_rechts = sheet.plot_auto_rechts;
            plot_.plot_blatt_hoch = sheet.plot_auto_hoch;
        }
    }

    Session& session_;
    PlotSettings& plot_;
    PaperTextSize& paper_text_;
    SheetPrinter* printer_;
    std::array<std::optional<Extents>, std::tuple_size_v<ScaleList>> extents_at_;
    std::optional<SheetGeometry> tried_landscape_;  ///< ahead of the upright sheet
};

}  // namespace

void ComputePaperArea(Session& session, SheetPrinter* printer) {
    SheetGeometry& sheet = session.sheet;
    const std::int16_t ausrichtung = session.plot.plot_ausrichtung;
    if (const auto area = area_of_printer(session, printer)) {
        sheet.papier_breite = static_cast<double>(area->breite) * 0.001;
        sheet.papier_hoehe = static_cast<double>(area->hoehe) * 0.001;
    } else if (ausrichtung == hochformat) {
        sheet.papier_breite = 0.1967;
        sheet.papier_hoehe = 0.2852;
    } else if (ausrichtung == querformat) {
        sheet.papier_breite = 0.2864;
        sheet.papier_hoehe = 0.1986;
    }
    take_off_margins(sheet, session.plot.plot_heftrand);
}

void take_off_margins(SheetGeometry& sheet, std::int16_t heftrand) {
    sheet.rand_rechts = schmaler_rand;
    sheet.rand_unten = fuss_rand;
    sheet.rand_links = heftrand == heftrand_links ? binding_rand : schmaler_rand;
    sheet.rand_oben = heftrand == heftrand_oben ? binding_rand : schmaler_rand;
    sheet.papier_breite = sheet.papier_breite - sheet.rand_links - sheet.rand_rechts;
    sheet.papier_hoehe = sheet.papier_hoehe - sheet.rand_oben - sheet.rand_unten;
}

std::int16_t sheet_count(const Session& session, double extent, double net, const char* field) {
    const std::int16_t count =
        narrow_or_overflow(session, sheets_on_axis(session, extent, net), field);
    return count < 1 ? std::int16_t{1} : count;
}

bool sheets_can_be_counted(const Session& session) {
    const Extents& extents = session.extents;
    const PlotSettings& plot = session.plot;
    const SheetGeometry& sheet = session.sheet;
    const double across = extents.gesamt_rw_max - plot.plot_null_rechts;
    const double up = extents.gesamt_hw_max - plot.plot_null_hoch;
    return within_16_bits(sheets_on_axis(session, across, sheet.papier_breite)) &&
           within_16_bits(sheets_on_axis(session, up, sheet.papier_hoehe));
}

SheetGeometry ComputeSheetDivision(Session& session, PaperTextSize& paper_text,
                                   SheetPrinter* printer) {
    return SheetDivision(session, paper_text, printer).run();
}

void choose_plot_scale(Session& session, PaperTextSize& paper_text, SheetPrinter* printer) {
    SheetDivision(session, paper_text, printer).choose_scale_of_orientation();
}

void ComputeSheetDivision(Session& session, TextMeasurer& measurer) {
    EstimatedTextSize estimate(measurer);
    ComputeSheetDivision(session, estimate, nullptr);
}

}  // namespace veldra
