#include "dialogs/plot_options.h"

#include <algorithm>
#include <limits>

#include "dialogs/display_options.h"
#include "model/hourglass.h"
#include "plot/application_printer.h"
#include "plot/printer_adapters.h"
#include "plot/sheet_division.h"
#include "text/fatal_error.h"
#include "text/numbers.h"
#include "text/text_forms.h"
#include "view/viewport.h"

namespace veldra {

namespace {

constexpr std::string_view count_mask = "####0";

std::string count_text(std::int16_t count) {
    return zahl_text(count, count_mask, "");
}

constexpr double most_sheets = std::numeric_limits<std::int16_t>::max();

/// A typed number of sheets; at least one, at most what the settings can hold.
std::int16_t typed_count(std::string_view text) {
    return to_int16(std::clamp(zahl_wert(text), 1.0, most_sheets)).value_or(1);
}

void RefreshSheetCounts(Session& session, PlotOptions& options, const WorldPoint& from,
                        const WorldPoint& to) {
    SheetGeometry& sheet = session.sheet;
    PlotSettings& plot = session.plot;
    sheet.plot_auto_rechts =
        sheet_count(session, to.rechts - from.rechts, sheet.papier_breite, "plot_auto_rechts");
    sheet.plot_auto_hoch =
        sheet_count(session, to.hoch - from.hoch, sheet.papier_hoehe, "plot_auto_hoch");
    if (options.blatt_auto) {
        plot.plot_blatt_rechts = sheet.plot_auto_rechts;
        plot.plot_blatt_hoch = sheet.plot_auto_hoch;
        options.blatt_rechts = count_text(plot.plot_blatt_rechts);
        options.blatt_hoch = count_text(plot.plot_blatt_hoch);
    }
}

/// Counts from the zero point that OK would leave behind.
void refresh(Session& session, PlotOptions& options) {
    if (part_is_empty(session)) {
        return;
    }
    const Extents& extents = session.extents;
    const PlotSettings& plot = session.plot;
    const WorldPoint from = options.null_anpassen
                                ? WorldPoint{extents.gesamt_rw_min, extents.gesamt_hw_min}
                                : WorldPoint{plot.plot_null_rechts, plot.plot_null_hoch};
    RefreshSheetCounts(session, options, from, {extents.gesamt_rw_max, extents.gesamt_hw_max});
}

/// Runs a change; if it leads to more sheets than can be counted, all is as it was before.
template <typename Change>
bool attempt(Session& session, PlotOptions& options, Change&& change) {
    const PlotSettings plot = session.plot;
    const SheetGeometry sheet = session.sheet;
    const Extents extents = session.extents;
    const PlotOptions shown = options;
    try {
        change();
        refresh(session, options);
        return true;
    } catch (const FatalError&) {
        session.plot = plot;
        session.sheet = sheet;
        session.extents = extents;
        options = shown;
        return false;
    }
}

void turn_paper(Session& session, const Desk& desk) {
    if (session.printer.drucker_ok == table_true && desk.printer != nullptr) {
        ResetPrinter(session, *desk.printer);
    }
    ComputePaperArea(session, desk);
}

bool has_open_part(const Session& session) {
    return session.datei_geladen == 1 && session.netz_aktuell >= 1 &&
           session.netz_aktuell <= session.netz.count();
}

}  // namespace

bool is_sheet_count(std::string_view text) {
    const double typed = zahl_wert(text);
    return typed >= 1 && typed <= most_sheets;
}

std::string plot_scale_denominator(double plot_massstab) {
    if (!(plot_massstab > 0)) {
        return {};
    }
    return GroupDigits(zahl_text(1 / plot_massstab, "########0", "")).grouped;
}

std::string bracketed_count(std::int16_t count) {
    return "(" + zahl_text(count, "###0", "") + ")";
}

PlotOptions open_plot_options(Session& session, const Desk& desk) {
    clear_undo(session.window);
    CheckPrinter(session, desk.printer);
    ComputePaperArea(session, desk);
    const PlotSettings& plot = session.plot;
    PlotOptions options;
    options.massstab = plot_scale_denominator(plot.plot_massstab);
    options.blatt_auto = plot.plot_blatt_auto == table_true;
    options.ohne_leere = session.printer.ohne_leere != table_false;
    options.blatt_rechts = count_text(plot.plot_blatt_rechts);
    options.blatt_hoch = count_text(plot.plot_blatt_hoch);
    options.netzteil_offen = has_open_part(session);
    if (options.netzteil_offen) {
        options.netzteil_plotten = session.netz[session.netz_aktuell].netz_plotmarke != table_false;
    }
    // Counts that cannot be told now stay as they are until there is another scale.
    static_cast<void>(attempt(session, options, [] {}));
    return options;
}

bool choose_plot_scale(Session& session, const Desk& desk, PlotOptions& options,
                       std::string_view text) {
    const ScaleEntry entry = ground_scale_entry(text);
    return entry.valid && attempt(session, options, [&] {
               session.plot.plot_massstab = 1 / entry.value;
               ComputeExtents(session, desk);
               options.massstab = entry.text;
           });
}

bool choose_plot_format(Session& session, const Desk& desk, PlotOptions& options,
                        std::int16_t format) {
    const bool taken = attempt(session, options, [&] {
        session.plot.plot_ausrichtung = static_cast<std::int16_t>(format + 1);
        turn_paper(session, desk);
    });
    if (!taken) {
        turn_paper(session, desk);  // the printer has been turned too
    }
    return taken;
}

bool choose_binding_margin(Session& session, const Desk& desk, PlotOptions& options,
                           std::int16_t margin) {
    return attempt(session, options, [&] {
        session.plot.plot_heftrand = margin;
        ComputePaperArea(session, desk);
    });
}

bool choose_auto_sheets(Session& session, PlotOptions& options, bool automatic) {
    return attempt(session, options, [&] { options.blatt_auto = automatic; });
}

bool choose_zero_point(Session& session, PlotOptions& options, bool adapt) {
    return attempt(session, options, [&] { options.null_anpassen = adapt; });
}

bool accept_plot_options(Session& session, const Desk& desk, PlotOptions& options,
                         std::string_view massstab) {
    if (!choose_plot_scale(session, desk, options, massstab)) {
        return false;
    }
    const Hourglass hourglass(session, desk.ui);
    PlotSettings& plot = session.plot;
    if (options.blatt_auto) {
        plot.plot_blatt_auto = table_true;
        plot.plot_blatt_rechts = session.sheet.plot_auto_rechts;
        plot.plot_blatt_hoch = session.sheet.plot_auto_hoch;
    } else {
        plot.plot_blatt_auto = table_false;
        plot.plot_blatt_rechts = typed_count(options.blatt_rechts);
        plot.plot_blatt_hoch = typed_count(options.blatt_hoch);
    }
    session.printer.ohne_leere = options.ohne_leere ? table_true : table_false;
    plot_merken(session, 2);
    ComputeExtents(session, desk);
    if (options.null_anpassen) {
        plot.plot_null_rechts = session.extents.gesamt_rw_min;
        plot.plot_null_hoch = session.extents.gesamt_hw_min;
    }
    const Viewport view = session.view;
    FitView(session, view.ansicht_rw_min, view.ansicht_hw_min, view.ansicht_rw_max,
            view.ansicht_hw_max, 0);
    if (options.netzteil_offen) {
        session.netz[session.netz_aktuell].netz_plotmarke =
            options.netzteil_plotten ? table_true : table_false;
    }
    return true;
}

void reject_plot_options(Session& session, const Desk& desk) {
    plot_merken(session, 3);
    ComputePaperArea(session, desk);
    ComputeExtents(session, desk);
}

}  // namespace veldra
