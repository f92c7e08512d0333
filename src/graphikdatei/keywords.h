#pragma once

#include <array>
#include <string_view>

/// Keywords of the graphic file in upper case, as Windows-1252 bytes.
namespace veldra::keyword {

inline constexpr std::string_view netzteil = "NETZTEIL";
inline constexpr std::string_view verfahrenlegende = "VERFAHRENLEGENDE";
inline constexpr std::string_view massstabgrundriss = "MA\xDFSTABGRUNDRISS";
inline constexpr std::string_view massstabvektoren = "MA\xDFSTABVEKTOREN";
inline constexpr std::string_view titel1 = "TITEL1";
inline constexpr std::string_view titel2 = "TITEL2";
inline constexpr std::string_view titel3 = "TITEL3";
inline constexpr std::string_view titel4 = "TITEL4";
inline constexpr std::string_view objekte = "OBJEKTE";
inline constexpr std::string_view punktsignatur = "PUNKTSIGNATUR";
inline constexpr std::string_view numbezoffset = "NUMBEZOFFSET";
inline constexpr std::string_view distanz = "DISTANZ";
inline constexpr std::string_view gps_strecke = "GPS-STRECKE";
inline constexpr std::string_view richtung = "RICHTUNG";
inline constexpr std::string_view gps_richtung = "GPS-RICHTUNG";
inline constexpr std::string_view orientierungsrichtung = "ORIENTIERUNGSRICHTUNG";
inline constexpr std::string_view zenitwinkel = "ZENITWINKEL";
inline constexpr std::string_view hoehenunterschied = "H\xD6HENUNTERSCHIED";
inline constexpr std::string_view gps_hoehenunterschied = "GPS-H\xD6HENUNTERSCHIED";
inline constexpr std::string_view gps_raumvektor = "GPS-RAUMVEKTOR";
inline constexpr std::string_view lageaenderung = "LAGE\xC4NDERUNG";
inline constexpr std::string_view hoehenaenderung = "H\xD6HEN\xC4NDERUNG";
inline constexpr std::string_view naechsteepoche =
    "N\xC4"
    "CHSTEEPOCHE";
inline constexpr std::string_view lagerestklaffungen = "LAGERESTKLAFFUNGEN";
inline constexpr std::string_view hoehenrestklaffungen = "H\xD6HENRESTKLAFFUNGEN";
inline constexpr std::string_view lagefehlerellipse = "LAGEFEHLERELLIPSE";
inline constexpr std::string_view hoehenfehler = "H\xD6HENFEHLER";

/// Every keyword that a pass knows.
inline constexpr std::array all{netzteil,
                                verfahrenlegende,
                                massstabgrundriss,
                                massstabvektoren,
                                titel1,
                                titel2,
                                titel3,
                                titel4,
                                objekte,
                                punktsignatur,
                                numbezoffset,
                                distanz,
                                gps_strecke,
                                richtung,
                                gps_richtung,
                                orientierungsrichtung,
                                zenitwinkel,
                                hoehenunterschied,
                                gps_hoehenunterschied,
                                gps_raumvektor,
                                lageaenderung,
                                hoehenaenderung,
                                naechsteepoche,
                                lagerestklaffungen,
                                hoehenrestklaffungen,
                                lagefehlerellipse,
                                hoehenfehler};

}  // namespace veldra::keyword
