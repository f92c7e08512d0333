#include "settings/defaults.h"

#include <array>
#include <cstddef>

#include "model/session.h"

namespace veldra {

namespace {

/// Applies a code to one group of values. `copy(from, to)` copies the group from one set of values
/// to another and leaves what else the sets hold.
template <typename Values, typename Copy>
void apply(int code, const Values& defaults, Values& live, Values& twins, Copy copy) {
    if (code == 0 || code == 1) {
        copy(defaults, live);
    }
    if (code == 0 || code == 2) {
        copy(live, twins);
    }
    if (code == 3) {
        copy(twins, live);
    }
}

/// Applies a code to the given members of the settings.
template <typename... Members>
void apply_members(Session& session, int code, Members... members) {
    apply(
        code, Settings{}, session.settings, session.twins.settings,
        [members...](const Settings& from, Settings& to) { ((to.*members = from.*members), ...); });
}

/// Applies a code to three vector slots.
void apply_slots(Session& session, int code, std::size_t first) {
    const auto copy_slots = [first](const auto& from, auto& to) {
        for (std::size_t slot = first; slot < first + 3; ++slot) {
            to[slot] = from[slot];
        }
    };
    apply(code, Settings{}, session.settings, session.twins.settings,
          [copy_slots](const Settings& from, Settings& to) {
              copy_slots(from.vektAdrw, to.vektAdrw);
              copy_slots(from.vektArgb, to.vektArgb);
              copy_slots(from.vektNdrw, to.vektNdrw);
              copy_slots(from.vektNrgb, to.vektNrgb);
          });
    const SettingsTwins defaults;
    apply(code, defaults.vektor_massstab, session.vektor_massstab, session.twins.vektor_massstab,
          copy_slots);
    apply(code, defaults.vektor_massstab_plot, session.vektor_massstab_plot,
          session.twins.vektor_massstab_plot, copy_slots);
}

}  // namespace

void standard_beob_screen(Session& session, int code) {
    apply_members(session, code, &Settings::Stquerscr, &Settings::Stkreuscr, &Settings::lenoriscr);
}

void standard_beob_plot(Session& session, int code) {
    apply_members(session, code, &Settings::Stquerplo, &Settings::Stkreuplo, &Settings::lenoriplo,
                  &Settings::faktorStrich);
}

void standard_vektor_lage(Session& session, int code) {
    apply_slots(session, code, 1);
}

void standard_vektor_hoehe(Session& session, int code) {
    apply_slots(session, code, 4);
}

void standard_test(Session& session, int code) {
    apply_members(session, code, &Settings::stnddrw, &Settings::stndrgb, &Settings::stndwert,
                  &Settings::stevdrw, &Settings::stevrgb, &Settings::stevwert, &Settings::stnvdrw,
                  &Settings::stnvrgb, &Settings::stnvwert, &Settings::stepdrw, &Settings::steprgb,
                  &Settings::stepwert);
}

void standard_punkt_screen(Session& session, int code) {
    apply_members(session, code, &Settings::punsigscr, &Settings::pubgrascr, &Settings::pubfon,
                  &Settings::pubbol, &Settings::pubita, &Settings::pubund, &Settings::pubcolor,
                  &Settings::stanplt, &Settings::stanptp, &Settings::nubgrascr, &Settings::nubfon,
                  &Settings::nubbol, &Settings::nubita, &Settings::nubund, &Settings::nubcolor);
}

void standard_punkt_plot(Session& session, int code) {
    apply_members(session, code, &Settings::punsigplo, &Settings::pubsizplo, &Settings::nubsizplo);
}

void standard_grenzen(Session& session, int code) {
    apply_members(session, code, &Settings::grenzdrw, &Settings::grenzrgb);
}

void standard_legende(Session& session) {
    constexpr float first_size = 3.5F;
    const Titelzeile standard;
    for (Titelzeile& zeile : session.titel) {
        const bool first = &zeile == session.titel.data();
        zeile.setTitelSize(first ? first_size : standard.getTitelSize());
        zeile.setTitelFont(standard.getTitelFont());
        zeile.setTitelBold(standard.getTitelBold());
        zeile.setTitelItal(standard.getTitelItal());
        zeile.setTitelUndr(standard.getTitelUndr());
    }
}

void standard_alle(Session& session) {
    constexpr int set_and_save = 0;
    for (const auto helper :
         {standard_test, standard_grenzen, standard_vektor_lage, standard_vektor_hoehe,
          standard_beob_screen, standard_beob_plot, standard_punkt_screen, standard_punkt_plot}) {
        helper(session, set_and_save);
    }
    standard_legende(session);
}

}  // namespace veldra
