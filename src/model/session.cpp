#include "model/session.h"

namespace veldra {

std::string working_path(const Session& session) {
    return session.arbeitsdatei_suffix.empty()
               ? session.graphikdatei
               : session.arbeitsdatei_basis + session.arbeitsdatei_suffix;
}

PlotSettings plot_settings_of(const NetworkPartRow& row) {
    PlotSettings plot;
    plot.plot_massstab = row.netz_massstab;
    plot.plot_ausrichtung = row.netz_ausrichtung;
    plot.plot_heftrand = row.netz_heftrand;
    plot.plot_legendenlage = row.netz_legendenlage;
    plot.plot_blatt_auto = row.netz_blatt_auto;
    plot.plot_blatt_rechts = static_cast<std::int16_t>(row.netz_blatt_rechts);
    plot.plot_blatt_hoch = static_cast<std::int16_t>(row.netz_blatt_hoch);
    plot.plot_null_rechts = row.netz_null_rechts;
    plot.plot_null_hoch = row.netz_null_hoch;
    return plot;
}

void load_plot_settings(Session& session) {
    session.plot = plot_settings_of(session.netz[session.netz_aktuell]);
}

void store_plot_settings(Session& session) {
    NetworkPartRow& row = session.netz[session.netz_aktuell];
    const PlotSettings& plot = session.plot;
    row.netz_massstab = plot.plot_massstab;
    row.netz_ausrichtung = plot.plot_ausrichtung;
    row.netz_heftrand = plot.plot_heftrand;
    row.netz_legendenlage = plot.plot_legendenlage;
    row.netz_blatt_auto = plot.plot_blatt_auto;
    row.netz_blatt_rechts = plot.plot_blatt_rechts;
    row.netz_blatt_hoch = plot.plot_blatt_hoch;
    row.netz_null_rechts = plot.plot_null_rechts;
    row.netz_null_hoch = plot.plot_null_hoch;
}

void plot_merken(Session& session, int code) {
    constexpr int save = 2;
    PlotSettings& to = code == save ? session.plot_merk : session.plot;
    const PlotSettings& from = code == save ? session.plot : session.plot_merk;
    to.plot_massstab = from.plot_massstab;
    to.plot_ausrichtung = from.plot_ausrichtung;
    to.plot_heftrand = from.plot_heftrand;
    to.plot_legendenlage = from.plot_legendenlage;
    to.plot_blatt_auto = from.plot_blatt_auto;
    to.plot_blatt_rechts = from.plot_blatt_rechts;
    to.plot_blatt_hoch = from.plot_blatt_hoch;
}

void vektor_standard(Session& session) {
    session.vektor_massstab.fill(0.5);
    session.vektor_massstab_plot.fill(0.5);
}

}  // namespace veldra
