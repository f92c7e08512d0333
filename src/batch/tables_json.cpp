#include <nlohmann/json.hpp>

#include "batch/json_output.h"
#include "text/codepage.h"

namespace veldra::batch {

namespace {

using Json = nlohmann::ordered_json;

Json row_json(const NetworkPartRow& row) {
    return {{"netz_name", to_utf8(row.netz_name)},        {"netz_massstab", row.netz_massstab},
            {"netz_ausrichtung", row.netz_ausrichtung},   {"netz_heftrand", row.netz_heftrand},
            {"netz_legendenlage", row.netz_legendenlage}, {"netz_blatt_auto", row.netz_blatt_auto},
            {"netz_blatt_rechts", row.netz_blatt_rechts}, {"netz_blatt_hoch", row.netz_blatt_hoch},
            {"netz_null_rechts", row.netz_null_rechts},   {"netz_null_hoch", row.netz_null_hoch},
            {"netz_plotmarke", row.netz_plotmarke}};
}

Json row_json(const PointRow& row) {
    return {{"pu_rechts", row.pu_rechts},       {"pu_hoch", row.pu_hoch},
            {"pu_signatur", row.pu_signatur},   {"pu_art_lage", row.pu_art_lage},
            {"pu_art_hoehe", row.pu_art_hoehe}, {"pu_bez", to_utf8(row.pu_bez)},
            {"pu_bez_hoch", row.pu_bez_hoch},   {"pu_bez_rechts", row.pu_bez_rechts},
            {"pu_wert_lage", row.pu_wert_lage}, {"pu_wert_hoehe", row.pu_wert_hoehe},
            {"pu_epoche", row.pu_epoche},       {"pu_wert_rechts", row.pu_wert_rechts},
            {"pu_wert_hoch", row.pu_wert_hoch}, {"pu_wert_dh", row.pu_wert_dh},
            {"pu_ev_lage", row.pu_ev_lage},     {"pu_nv_lage", row.pu_nv_lage},
            {"pu_ep_lage", row.pu_ep_lage},     {"pu_ev_hoehe", row.pu_ev_hoehe},
            {"pu_nv_hoehe", row.pu_nv_hoehe},   {"pu_eh_hoehe", row.pu_eh_hoehe}};
}

Json row_json(const LineRow& row) {
    return {{"lin_schluessel", row.lin_schluessel.text()},
            {"lin_typ_hin", row.lin_typ_hin},
            {"lin_ev_hin", row.lin_ev_hin},
            {"lin_nv_hin", row.lin_nv_hin},
            {"lin_ep_hin", row.lin_ep_hin},
            {"lin_typ_seite", row.lin_typ_seite},
            {"lin_ev_seite", row.lin_ev_seite},
            {"lin_nv_seite", row.lin_nv_seite},
            {"lin_ep_seite", row.lin_ep_seite},
            {"lin_typ_rueck", row.lin_typ_rueck},
            {"lin_ev_rueck", row.lin_ev_rueck},
            {"lin_nv_rueck", row.lin_nv_rueck},
            {"lin_ep_rueck", row.lin_ep_rueck},
            {"lin_fernziel", to_utf8(row.lin_fernziel.view())},
            {"lin_klasse_von", row.lin_klasse_von},
            {"lin_klasse_nach", row.lin_klasse_nach}};
}

Json row_json(const NubezOffsetRow& row) {
    return {{"nuoff_bez", to_utf8(row.nuoff_bez)},
            {"nuoff_rechts", row.nuoff_rechts},
            {"nuoff_hoch", row.nuoff_hoch}};
}

template <typename Row>
Json rows_json(const RowTable<Row>& table) {
    Json rows = Json::array();
    for (std::int32_t i = 1; i <= table.count(); ++i) {
        rows.push_back(row_json(table[i]));
    }
    return rows;
}

Json plot_json(const PlotSettings& plot) {
    return {
        {"plot_massstab", plot.plot_massstab},     {"plot_ausrichtung", plot.plot_ausrichtung},
        {"plot_heftrand", plot.plot_heftrand},     {"plot_legendenlage", plot.plot_legendenlage},
        {"plot_blatt_auto", plot.plot_blatt_auto}, {"plot_blatt_rechts", plot.plot_blatt_rechts},
        {"plot_blatt_hoch", plot.plot_blatt_hoch}, {"plot_null_rechts", plot.plot_null_rechts},
        {"plot_null_hoch", plot.plot_null_hoch}};
}

Json slots_json(const std::array<double, 7>& slots) {
    return Json(std::vector<double>(slots.begin() + 1, slots.end()));
}

Json maxima_json(const std::array<Maximum, 7>& maxima) {
    Json slots = Json::array();
    for (std::size_t slot = 1; slot < maxima.size(); ++slot) {
        const Maximum& maximum = maxima[slot];
        slots.push_back(Json{{"wert", maximum.wert},
                             {"rechts", maximum.rechts},
                             {"hoch", maximum.hoch},
                             {"bez", to_utf8(maximum.bez)},
                             {"epoche", to_utf8(maximum.epoche)}});
    }
    return slots;
}

/// Ellipsoid and mapping are 0 until something sets them.
Json or_null(std::int32_t value) {
    return value == 0 ? Json(nullptr) : Json(value);
}

Json selection_json(const ObjectSelection& obj) {
    return {{"obj_pube", obj.obj_pube},
            {"obj_pusi", obj.obj_pusi},
            {"obj_puwe", obj.obj_puwe},
            {"obj_wert_lage", obj.obj_wert_lage},
            {"obj_wert_hoehe", obj.obj_wert_hoehe},
            {"obj_epbe", obj.obj_epbe},
            {"obj_test_restkl", obj.obj_test_restkl},
            {"obj_nube", obj.obj_nube},
            {"obj_nbez", obj.obj_nbez},
            {"obj_beob", obj.obj_beob},
            {"obj_test_beob", obj.obj_test_beob},
            {"obj_test", obj.obj_test},
            {"obj_verw", obj.obj_verw},
            {"obj_bezu", obj.obj_bezu},
            {"obj_bezu_elli", or_null(obj.obj_bezu_elli)},
            {"obj_bezu_abbi", or_null(obj.obj_bezu_abbi)},
            {"obj_nube_meridian", obj.obj_nube_meridian}};
}

}  // namespace

std::string tables_json(const Session& session) {
    Json tables;
    tables["graphikdatei"] = session.graphikdatei;
    tables["netz_anzahl"] = session.netz.count();
    tables["netz_aktuell"] = session.netz_aktuell;
    tables["netz"] = rows_json(session.netz);
    tables["plot"] = plot_json(session.plot);
    tables["vektor_massstab"] = slots_json(session.vektor_massstab);
    tables["vektor_massstab_plot"] = slots_json(session.vektor_massstab_plot);
    tables["max_ap"] = maxima_json(session.max_ap);
    tables["max_np"] = maxima_json(session.max_np);
    tables["titel"] = Json::array();
    for (const Titelzeile& line : session.titel) {
        tables["titel"].push_back(to_utf8(line.getTitelText()));
    }
    tables["obj"] = selection_json(session.obj);
    tables["pu_anzahl"] = session.pu.count();
    tables["pu_anzahl_signatur"] = session.pu.pu_anzahl_signatur;
    tables["pu"] = rows_json(session.pu);
    tables["lin_anzahl"] = session.lin.count();
    tables["fernziel_anzahl"] = session.lin.fernziel_anzahl;
    tables["lin"] = rows_json(session.lin);
    tables["nuoff_anzahl"] = session.nuoff.count();
    tables["nuoff"] = rows_json(session.nuoff);
    return tables.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace veldra::batch
