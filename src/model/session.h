#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "model/layer_memory.h"
#include "model/part.h"
#include "model/settings.h"
#include "model/settings_twins.h"
#include "model/window_state.h"
#include "os/file_identity.h"

namespace veldra {

class LongWork;
class TemporaryFolder;

/// The ground that the picture shows.
struct Viewport {
    double ansicht_rw_min = 0;  ///< easting of the left edge, metres
    double ansicht_hw_min = 0;  ///< northing of the bottom edge
    double ansicht_rw_max = 0;
    double ansicht_hw_max = 0;
    double ansicht_masseinheit = 1;  ///< metres of ground a twip
};

/// Size of the picture, in twips.
struct PictureSize {
    double width = 15000;
    double height = 9000;
};

/// State of the application printer. It lives as long as the run; no profile keeps it.
struct PrinterState {
    std::int16_t drucker_ok = table_false;  ///< -1: there is a printer that works
    std::string drucker_name;               ///< of the application printer, UTF-8
    std::string drucker_start;              ///< the system's default printer at the start, UTF-8
    std::int16_t drucker_farbe = 2;         ///< 1 monochrome, 2 colour
    std::int16_t druck_in_datei = table_false;
    std::int16_t exemplare = 1;  ///< copies of a job, 1 to 100
    /// -1: a job leaves out sheets that would show nothing of the network
    std::int16_t ohne_leere = table_false;
    // Values to return to when the printer dialog is cancelled.
    std::int16_t drucker_farbe_merk = 2;
    std::int16_t druck_in_datei_merk = table_false;
    std::int16_t exemplare_merk = 1;
    // Paper that is carried across the end of a document; sizes in twips.
    std::int16_t merk_schacht = 0;
    std::int16_t merk_format = 0;
    float merk_breite = 0;
    float merk_hoehe = 0;
};

/// Ground of the sheet being plotted, without its margins.
struct SheetWindow {
    double blatt_rw_min = 0;
    double blatt_hw_min = 0;
    double blatt_rw_max = 0;
    double blatt_hw_max = 0;
};

/// Ground beneath the legend.
struct LegendBox {
    double legende_rw_min = 0;
    double legende_hw_min = 0;
    double legende_rw_max = 0;
    double legende_hw_max = 0;
};

/// A line of text in the legend of the preview, placed as a label.
struct LegendText {
    Label label;
    FontSpec font;
};

/// A working copy that this session has written, as it left it.
struct OwnCopy {
    std::string path;
    FileIdentity identity;
};

/// Everything the program knows while it runs: the open file, its part in view, the viewport, the
/// settings. There is no other state; two sessions never touch each other.
struct Session {
    // The file. Paths are the system's bytes; titles and tables hold Windows-1252.
    std::string graphikdatei;
    std::string arbeitsdatei_suffix;  ///< "", "_1" or "_2"
    /// Working copies are this path and the suffix; usually the graphic file itself.
    std::string arbeitsdatei_basis;
    std::vector<OwnCopy> arbeitskopien;  ///< those there are; graphikdatei/working_copies.h
    /// Where the working copies lie if not beside their file; goes with the open file.
    std::shared_ptr<const TemporaryFolder> arbeitsordner;
    /// Files that the user lets become their own when they are written.
    std::vector<std::string> besitz_geht_ueber;
    std::int16_t datei_geladen = 0;
    std::array<std::string, 5> zuletzt_datei;  ///< recent files, 1 to 4, most recent first
    std::string bestaetigung;  ///< "N": the logo of the start closes by itself; else ""

    RowTable<NetworkPartRow> netz;
    Part part;  ///< the part in view
    std::array<double, 7> vektor_massstab{0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5};
    std::array<double, 7> vektor_massstab_plot{0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5};
    std::array<Maximum, 7> max_ap;
    std::array<Maximum, 7> max_np;
    /// Box of the legend in the preview; shown while `window.lbl_legende_visible`.
    Label lbl_legende;
    std::vector<LegendText> legende_texte;

    // Reference data of the last drawing: `district_cache()`, `boundary_cache()`.
    LayerMemory districts;
    LayerMemory boundaries;

    // The view.
    Viewport view;
    PictureSize picture;
    std::int16_t plotmodus = 0;

    Settings settings;
    SettingsTwins twins;
    /// The profile is there but could not be read: its settings, its recent files. What was not
    /// read is not written.
    bool profil_ungelesen = false;
    bool start_ungelesen = false;
    PrinterState printer;
    SheetWindow blatt;
    LegendBox legende;
    WindowState window;
    /// Follows the work that is being done; null: nobody does.
    LongWork* work = nullptr;
};

/// The path that the readers read: the working copy if there is one, else the graphic file.
[[nodiscard]] std::string working_path(const Session& session);

/// The plot settings that a row of the part table holds.
[[nodiscard]] PlotSettings plot_settings_of(const NetworkPartRow& row);
/// Loads the row of `netz_aktuell` into the current plot settings.
void load_plot_settings(Session& session);
/// Stores the current plot settings in the row of `netz_aktuell`.
void store_plot_settings(Session& session);
/// Code 2 saves seven of the nine plot settings, code 3 restores them; the zero point is not among
/// them.
void plot_merken(Session& session, int code);
/// Sets the six vector scales to 0.5 in both arrays.
void vektor_standard(Session& session);

}  // namespace veldra
