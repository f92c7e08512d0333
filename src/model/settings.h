#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace veldra {

/// A colour as 0x00BBGGRR, the value that the profile file holds.
[[nodiscard]] constexpr std::int32_t rgb(int red, int green, int blue) {
    return red + green * 256 + blue * 65536;
}

/// Five numbers of a datum transition, in the order of their text.
struct DatumRow {
    double dphi0 = 0;  ///< shift in latitude, seconds of arc
    double dlam0 = 0;  ///< shift in longitude, seconds of arc
    double sphi = 0;   ///< scale of latitude difference, seconds of arc per degree
    double slam = 0;   ///< scale of longitude, seconds of arc per degree
    double rot = 0;    ///< rotation, seconds of arc

    bool operator==(const DatumRow&) const = default;
};

/// From DHDN (Bessel) to ETRS 89 (GRS 80): the five parameters that come nearest to the seven of
/// EPSG 1777 on a grid over Germany, by least squares in metres (tools/datumfit). On that grid they
/// are wrong by 6.25 m at most and 1.55 m on average; docs/reference.md says where.
constexpr DatumRow dhdn_to_etrs89_row{
    .dphi0 = -4.3598, .dlam0 = 1.0986, .sphi = -0.4115, .slam = -0.5387, .rot = -1.4848};

/// Everything the user may set about the look of things, named as the keys of the profile file.
/// Arrays are indexed by the number in the key; an element 0 of keys that count from 1 is unused.
/// Booleans hold 0 or -1. Texts are Windows-1252.
struct Settings {
    // Section BEZPUN. Screen sizes in twips, plot sizes in millimetres of paper.
    std::array<float, 4> punsigscr{60, 60, 30, 15};
    std::int16_t pubgrascr = 10;
    std::array<float, 4> punsigplo{2.0F, 2.0F, 1.0F, 0.5F};
    float pubsizplo = 2.5F;
    std::string pubfon = "Arial";
    std::int16_t pubbol = 0;
    std::int16_t pubita = 0;
    std::int16_t pubund = 0;
    std::int32_t pubcolor = rgb(0, 0, 0);
    double stanplt = 60.0;
    double stanptp = 0.0;
    std::int16_t nubgrascr = 10;
    float nubsizplo = 2.5F;
    std::string nubfon = "Arial";
    std::int16_t nubbol = 0;
    std::int16_t nubita = 0;
    std::int16_t nubund = 0;
    std::int32_t nubcolor = rgb(128, 0, 0);

    // The small dot of points without signature. No keys of the profile: fixed for a run.
    std::int16_t punkt_breite = 1;
    std::int32_t punkt_farbe = rgb(0, 0, 0);
    double punkt_klein = 15.0;      ///< radius on screen, twips
    double punkt_klein_plot = 0.5;  ///< radius in the plot, millimetres

    // Section BEOBAC.
    double Stquerscr = 200;
    double Stkreuscr = 200;
    double lenoriscr = 2000;
    double Stquerplo = 5.0;
    double Stkreuplo = 5.0;
    double lenoriplo = 35.0;
    std::int16_t faktorStrich = 1;

    // Section STATES: width, colour and limit of the test classes.
    std::int16_t stnddrw = 1;
    std::int32_t stndrgb = rgb(64, 0, 64);
    double stndwert = 0.5;  ///< also ev_grenze: an EV below it hides NV, EP and EH
    std::array<std::int16_t, 3> stevdrw{0, 2, 5};
    std::array<std::int32_t, 3> stevrgb{0, rgb(0, 255, 0), rgb(255, 0, 0)};
    std::array<double, 2> stevwert{0, 10.0};
    std::array<std::int16_t, 5> stnvdrw{0, 2, 3, 4, 5};
    std::array<std::int32_t, 5> stnvrgb{0, rgb(0, 255, 0), rgb(255, 255, 0), rgb(255, 128, 0),
                                        rgb(255, 0, 0)};
    std::array<double, 4> stnvwert{0, 1.0, 2.0, 3.3};
    std::array<std::int16_t, 4> stepdrw{0, 2, 3, 5};
    std::array<std::int32_t, 4> steprgb{0, rgb(0, 255, 0), rgb(255, 255, 0), rgb(255, 0, 0)};
    std::array<double, 3> stepwert{0, 2.0, 3.0};

    // Section VEKTOR: the six value slots, AP and NP. A width below 1 switches the group off.
    std::array<std::int16_t, 7> vektAdrw{0, 3, 3, 1, 3, 3, 3};
    std::array<std::int32_t, 7> vektArgb{0,
                                         rgb(0, 128, 255),
                                         rgb(0, 128, 255),
                                         rgb(128, 64, 0),
                                         rgb(0, 128, 255),
                                         rgb(0, 128, 255),
                                         rgb(0, 64, 0)};
    std::array<std::int16_t, 7> vektNdrw{0, 2, 2, 1, 2, 2, 3};
    std::array<std::int32_t, 7> vektNrgb{0,
                                         rgb(255, 0, 0),
                                         rgb(255, 0, 0),
                                         rgb(128, 64, 0),
                                         rgb(255, 0, 0),
                                         rgb(255, 0, 0),
                                         rgb(0, 64, 0)};

    // Section VERWGR. The three datum rows stand for obj_bezu 1, 2, 3.
    std::string verw_datei = "verwgrenz.dat";
    std::int32_t verw_elli = 1;
    std::int32_t verw_abbi = 1;
    std::array<DatumRow, 3> verw_datum{DatumRow{}, dhdn_to_etrs89_row, DatumRow{}};
    std::array<std::int16_t, 8> grenzdrw{0, 6, 5, 4, 3, 2, 2, 2};
    std::array<std::int32_t, 8> grenzrgb{0,
                                         rgb(255, 201, 255),
                                         rgb(255, 201, 255),
                                         rgb(255, 201, 255),
                                         rgb(255, 201, 255),
                                         rgb(255, 201, 255),
                                         rgb(255, 201, 255),
                                         rgb(255, 201, 255)};

    // Section NUMBEZ.
    std::array<DatumRow, 3> numbez_datum{DatumRow{}, dhdn_to_etrs89_row, DatumRow{}};

    bool operator==(const Settings&) const = default;
};

}  // namespace veldra
