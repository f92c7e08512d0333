#include "drawing/title.h"

#include <array>
#include <string_view>

#include "text/codepage.h"
#include "text/numbers.h"

namespace veldra {

namespace {

using Names = std::array<std::string_view, 4>;

constexpr Names observation_names{"", "Lagebeobachtungen", "Höhenbeobachtungen",
                                  "GPS-Raumvektoren"};
constexpr Names position_value_names{"", "Lageänderungen", "Lagerestklaffungen",
                                     "Lagefehlerellipsen"};
constexpr Names height_value_names{"", "Höhenänderungen", "Höhenrestklaffungen", "Höhenfehler"};
constexpr Names position_tests{"", ", EV", ", NV", ", EP"};
constexpr Names height_tests{"", ", EV", ", NV", ", EH"};
constexpr std::int16_t residuals = 2;

std::string_view chosen(const Names& names, std::int16_t choice) {
    return choice >= 0 && choice <= 3 ? names[static_cast<std::size_t>(choice)] : "";
}

void append_name(std::string& title, std::int16_t choice, std::string_view name) {
    if (choice != 0 && !title.empty()) {
        title += ", ";
    }
    title += name;
}

/// "1: " and the denominator of a scale.
std::string scale_text(double massstab) {
    std::string text = "1: " + zahl_text(1 / massstab, "####0.#", "");
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

std::string object_summary(const Session& session, bool with_scales) {
    const ObjectSelection& obj = session.obj;
    std::string title(chosen(observation_names, obj.obj_beob));
    if (!title.empty() && obj.obj_test_beob == table_true) {
        title += chosen(obj.obj_beob == 1 ? position_tests : height_tests, obj.obj_test);
    }
    append_name(title, obj.obj_wert_lage, chosen(position_value_names, obj.obj_wert_lage));
    if (obj.obj_wert_lage == residuals && obj.obj_test_restkl == table_true) {
        title += chosen(position_tests, obj.obj_test);
    }
    if (with_scales && obj.obj_wert_lage >= 1) {
        title +=
            " " + scale_text(session.vektor_massstab[static_cast<std::size_t>(obj.obj_wert_lage)]);
    }
    append_name(title, obj.obj_wert_hoehe, chosen(height_value_names, obj.obj_wert_hoehe));
    if (obj.obj_wert_hoehe == residuals && obj.obj_test_restkl == table_true) {
        title += chosen(height_tests, obj.obj_test);
    }
    if (with_scales && obj.obj_wert_hoehe >= 1) {
        title +=
            " " +
            scale_text(session.vektor_massstab[static_cast<std::size_t>(obj.obj_wert_hoehe) + 3]);
    }
    return from_utf8(title);
}

}  // namespace

std::string BuildTitle(const Session& session, int code) {
    switch (code) {
        case title_code::legend_line_3: {
            const std::string objects = object_summary(session, true);
            return session.netz.count() > 0
                       ? session.netz[session.netz_aktuell].netz_name + ": " + objects
                       : objects;
        }
        case title_code::legend_line_4:
            return "Grundriss " + scale_text(session.plot.plot_massstab);
        default:
            return object_summary(session, code == title_code::objects_with_scales);
    }
}

}  // namespace veldra
