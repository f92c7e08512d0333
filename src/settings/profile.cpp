#include "settings/profile.h"

#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "model/session.h"
#include "settings/defaults.h"
#include "settings/profile_file.h"
#include "settings/profile_values.h"

namespace veldra {

namespace {

struct Key {
    std::string name;
    std::function<std::string(const Session&)> text;
    std::function<void(Session&, std::string_view, const ErrorPlace&)> take;
};

using DefaultHelper = void (*)(Session&, int);

struct Section {
    std::string_view name;
    std::vector<Key> keys;
    std::vector<DefaultHelper> helpers;  ///< save the section's values once it has been read
};

/// A key whose value is a part of the settings that `access` gives.
template <typename Access, typename Form>
Key key(std::string name, Access access, Form form) {
    return {std::move(name),
            [access, form](const Session& session) { return form.text(access(session.settings)); },
            [access, form](Session& session, std::string_view text, const ErrorPlace& place) {
                form.take(text, place, access(session.settings));
            }};
}

template <typename Value, typename Form>
Key member_key(std::string name, Value Settings::*member, Form form) {
    return key(
        std::move(name), [member](auto& settings) -> auto& { return settings.*member; }, form);
}

/// The key of one element; its name ends in the index.
template <typename Array, typename Form>
Key element_key(std::string_view stem, Array Settings::*member, std::size_t index, Form form) {
    return key(
        std::string(stem) + std::to_string(index),
        [ member, index ](auto& settings) -> auto& { return (settings.*member)[index]; }, form);
}

template <typename Array, typename Form>
void add_elements(std::vector<Key>& keys, std::string_view stem, Array Settings::*member,
                  std::size_t first, Form form) {
    for (std::size_t index = first; index < Array{}.size(); ++index) {
        keys.push_back(element_key(stem, member, index, form));
    }
}

template <typename Value, typename Argument, typename Form>
Key title_key(std::string_view stem, std::size_t line, Value (Titelzeile::*get)() const,
              void (Titelzeile::*set)(Argument), Form form) {
    const std::size_t index = line - 1;
    return {
        std::string(stem) + std::to_string(line),
        [index, get, form](const Session& session) {
            return form.text((session.titel[index].*get)());
        },
        [index, get, set, form](Session& session, std::string_view text, const ErrorPlace& place) {
            Titelzeile& zeile = session.titel[index];
            Argument value = (zeile.*get)();
            form.take(text, place, value);
            (zeile.*set)(std::move(value));
        }};
}

// Masks of the numbers.
constexpr NumberForm whole5{"####0"};
constexpr NumberForm whole6{"#####0"};
constexpr NumberForm whole2{"#0"};
constexpr NumberForm tenths5{"####0.0"};
constexpr NumberForm tenths6{"#####0.0"};
constexpr NumberForm colour{"0000000000"};
constexpr BooleanForm boolean;
constexpr TextForm any_text;
constexpr DatumForm datum;

Section bezpun() {
    Section section{"BEZPUN", {}, {standard_punkt_screen, standard_punkt_plot}};
    std::vector<Key>& keys = section.keys;
    add_elements(keys, "punsigscr_", &Settings::punsigscr, 0, whole5);
    keys.push_back(member_key("pubgrascr", &Settings::pubgrascr, whole5));
    add_elements(keys, "punsigplo_", &Settings::punsigplo, 0, tenths5);
    keys.push_back(member_key("pubsizplo", &Settings::pubsizplo, tenths5));
    keys.push_back(member_key("pubfon", &Settings::pubfon, any_text));
    keys.push_back(member_key("pubbol", &Settings::pubbol, boolean));
    keys.push_back(member_key("pubita", &Settings::pubita, boolean));
    keys.push_back(member_key("pubund", &Settings::pubund, boolean));
    keys.push_back(member_key("pubcolor", &Settings::pubcolor, colour));
    keys.push_back(member_key("stanplt", &Settings::stanplt, tenths5));
    keys.push_back(member_key("stanptp", &Settings::stanptp, tenths5));
    keys.push_back(member_key("nubgrascr", &Settings::nubgrascr, whole5));
    keys.push_back(member_key("nubsizplo", &Settings::nubsizplo, tenths5));
    keys.push_back(member_key("nubfon", &Settings::nubfon, any_text));
    keys.push_back(member_key("nubbol", &Settings::nubbol, boolean));
    keys.push_back(member_key("nubita", &Settings::nubita, boolean));
    keys.push_back(member_key("nubund", &Settings::nubund, boolean));
    keys.push_back(member_key("nubcolor", &Settings::nubcolor, colour));
    return section;
}

Section beobac() {
    return {"BEOBAC",
            {member_key("Stquerscr", &Settings::Stquerscr, whole6),
             member_key("Stkreuscr", &Settings::Stkreuscr, whole6),
             member_key("lenoriscr", &Settings::lenoriscr, whole6),
             member_key("Stquerplo", &Settings::Stquerplo, tenths6),
             member_key("Stkreuplo", &Settings::Stkreuplo, tenths6),
             member_key("lenoriplo", &Settings::lenoriplo, tenths6),
             member_key("faktorStrich", &Settings::faktorStrich, whole2)},
            {standard_beob_screen, standard_beob_plot}};
}

/// The keys of the classes of one test value; the last class has no limit.
template <typename Widths, typename Colours, typename Limits>
void add_classes(std::vector<Key>& keys, const std::string& stem, Widths widths, Colours colours,
                 Limits limits) {
    const std::size_t last = (Settings{}.*widths).size() - 1;
    for (std::size_t index = 1; index <= last; ++index) {
        keys.push_back(element_key(stem + "drw_", widths, index, whole6));
        keys.push_back(element_key(stem + "rgb_", colours, index, colour));
        if (index < last) {
            keys.push_back(element_key(stem + "wert_", limits, index, tenths5));
        }
    }
}

Section states() {
    Section section{"STATES", {}, {standard_test}};
    std::vector<Key>& keys = section.keys;
    keys.push_back(member_key("stnddrw", &Settings::stnddrw, whole6));
    keys.push_back(member_key("stndrgb", &Settings::stndrgb, colour));
    keys.push_back(member_key("stndwert", &Settings::stndwert, tenths5));
    add_classes(keys, "stev", &Settings::stevdrw, &Settings::stevrgb, &Settings::stevwert);
    add_classes(keys, "stnv", &Settings::stnvdrw, &Settings::stnvrgb, &Settings::stnvwert);
    add_classes(keys, "step", &Settings::stepdrw, &Settings::steprgb, &Settings::stepwert);
    return section;
}

Section vektor() {
    Section section{"VEKTOR", {}, {standard_vektor_lage, standard_vektor_hoehe}};
    for (std::size_t slot = 1; slot <= 6; ++slot) {
        section.keys.push_back(element_key("vektAdrw_", &Settings::vektAdrw, slot, whole6));
        section.keys.push_back(element_key("vektArgb_", &Settings::vektArgb, slot, colour));
        section.keys.push_back(element_key("vektNdrw_", &Settings::vektNdrw, slot, whole6));
        section.keys.push_back(element_key("vektNrgb_", &Settings::vektNrgb, slot, colour));
    }
    return section;
}

template <typename Rows>
void add_datum_rows(std::vector<Key>& keys, Rows rows) {
    std::size_t index = 0;
    for (const char* name : {"DHDN", "ETRS 89", "Andere"}) {
        keys.push_back(key(
            name, [ rows, index ](auto& settings) -> auto& { return (settings.*rows)[index]; },
            datum));
        ++index;
    }
}

Section verwgr() {
    Section section{"VERWGR", {}, {standard_grenzen}};
    std::vector<Key>& keys = section.keys;
    keys.push_back(member_key("Datei", &Settings::verw_datei, any_text));
    keys.push_back(member_key("Ellipsoid", &Settings::verw_elli, whole2));
    keys.push_back(member_key("Abbildung", &Settings::verw_abbi, whole2));
    add_datum_rows(keys, &Settings::verw_datum);
    add_elements(keys, "grenzdrw_", &Settings::grenzdrw, 1, whole6);
    add_elements(keys, "grenzrgb_", &Settings::grenzrgb, 1, colour);
    return section;
}

Section numbez() {
    Section section{"NUMBEZ", {}, {}};
    add_datum_rows(section.keys, &Settings::numbez_datum);
    return section;
}

Section legende() {
    Section section{"LEGENDE", {}, {}};
    std::vector<Key>& keys = section.keys;
    for (std::size_t line = 1; line <= 4; ++line) {
        keys.push_back(title_key("TitelSize_", line, &Titelzeile::getTitelSize,
                                 &Titelzeile::setTitelSize, tenths5));
        keys.push_back(title_key("TitelFont_", line, &Titelzeile::getTitelFont,
                                 &Titelzeile::setTitelFont, any_text));
        keys.push_back(title_key("TitelBold_", line, &Titelzeile::getTitelBold,
                                 &Titelzeile::setTitelBold, boolean));
        keys.push_back(title_key("TitelItal_", line, &Titelzeile::getTitelItal,
                                 &Titelzeile::setTitelItal, boolean));
        keys.push_back(title_key("TitelUndr_", line, &Titelzeile::getTitelUndr,
                                 &Titelzeile::setTitelUndr, boolean));
    }
    return section;
}

/// The sections with their keys, in the order of reading and writing. They are made anew each time:
/// what is kept for the whole run may be gone when the profile is written while the process ends.
std::vector<Section> profile_sections() {
    return {bezpun(), beobac(), states(), vektor(), verwgr(), numbez(), legende()};
}

void read_section(Session& session, const ProfileFile& file, const std::string& path,
                  const Section& section) {
    for (const Key& entry : section.keys) {
        const std::string value = file.get(section.name, entry.name);
        if (!value.empty()) {
            const ErrorPlace place{path, file.line_number(section.name, entry.name),
                                   std::string(section.name) + "/" + entry.name};
            entry.take(session, value, place);
        }
    }
    constexpr int save = 2;
    for (const DefaultHelper helper : section.helpers) {
        helper(session, save);
    }
}

}  // namespace

void profil_lesen(Session& session, const std::string& path) {
    const ProfileFile file = ProfileFile::load(path, session.profil_ungelesen);
    for (const Section& section : profile_sections()) {
        read_section(session, file, path, section);
    }
}

void profil_schreiben(const Session& session, const std::string& path) {
    if (session.profil_ungelesen) {
        throw unread_profile(path);
    }
    ProfileFile file = ProfileFile::load_for_update(path);
    for (const Section& section : profile_sections()) {
        for (const Key& entry : section.keys) {
            file.set(section.name, entry.name, entry.text(session));
        }
    }
    file.save(path);
}

}  // namespace veldra
