#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "commands/lifecycle.h"
#include "model/session.h"

namespace veldra {

// What the dialog frmPlotten does, without its window. It edits the live plot settings of the
// current part; OK keeps them, Abbrechen puts those of the last division into sheets back.
//
// A change after which the sheets could not be counted in 16 bits is refused: the functions that
// return false have changed nothing, and the dialog answers with `plot_scale_title` and
// `plot_scale_text`.

constexpr std::string_view plot_scale_title = "Maßstabsvorgabe";
constexpr std::string_view plot_scale_text =
    "Bitte überprüfen Sie die angegebene Grundriss-Maßstabszahl";

/// What the dialog holds beside the settings of the session. Texts are those of the controls.
struct PlotOptions {
    std::string massstab;          ///< `cbo_grundriss_mass` as it stands for the scale in force
    bool blatt_auto = true;        ///< `chk_format_blatt`
    bool null_anpassen = false;    ///< `chk_plotternull`
    bool ohne_leere = false;       ///< `chk_ohne_leere`: jobs leave out empty sheets
    std::string blatt_rechts;      ///< `txt_format_rechts`
    std::string blatt_hoch;        ///< `txt_format_hoch`
    bool netzteil_offen = false;   ///< there is a part that can be marked
    bool netzteil_plotten = true;  ///< `opt_netzteil`: 0 is true, 1 false
};

/// Opens the dialog: tries the printer, measures its paper, counts the sheets. What can be undone
/// before cannot be undone any more.
[[nodiscard]] PlotOptions open_plot_options(Session& session, const Desk& desk);

/// A scale denominator as the dialog shows it; "" for a ratio that is no scale.
[[nodiscard]] std::string plot_scale_denominator(double plot_massstab);
/// Counts in brackets, as `lbl_format_autorechts` shows them.
[[nodiscard]] std::string bracketed_count(std::int16_t count);

/// Takes a typed denominator: scale, extents and counts follow. False for one of 0 or less.
[[nodiscard]] bool choose_plot_scale(Session& session, const Desk& desk, PlotOptions& options,
                                     std::string_view text);
/// 0 Hochformat, 1 Querformat.
[[nodiscard]] bool choose_plot_format(Session& session, const Desk& desk, PlotOptions& options,
                                      std::int16_t format);
/// 1 oben, 2 links, 3 kein Heftrand.
[[nodiscard]] bool choose_binding_margin(Session& session, const Desk& desk, PlotOptions& options,
                                         std::int16_t margin);
/// Whether the sheets are counted by the program.
[[nodiscard]] bool choose_auto_sheets(Session& session, PlotOptions& options, bool automatic);
/// Whether OK moves the plotter zero point to the lower left of the extents.
[[nodiscard]] bool choose_zero_point(Session& session, PlotOptions& options, bool adapt);

/// OK. `massstab` is the text of the scale box. False if it is wrong; the settings then stay
/// without OK. The viewport is fitted anew; drawing is left to the caller.
[[nodiscard]] bool accept_plot_options(Session& session, const Desk& desk, PlotOptions& options,
                                       std::string_view massstab);
/// Abbrechen.
void reject_plot_options(Session& session, const Desk& desk);

/// The text is a number of sheets that can be set by hand, 1 to 32767.
[[nodiscard]] bool is_sheet_count(std::string_view text);

}  // namespace veldra
