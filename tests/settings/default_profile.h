#pragma once

#include <string>

namespace veldra::testing_support {

// The profile of the defaults, section by section, as a new file has it.

constexpr const char* default_bezpun =
    "[BEZPUN]\r\n"
    "punsigscr_0=60\r\npunsigscr_1=60\r\npunsigscr_2=30\r\npunsigscr_3=15\r\n"
    "pubgrascr=10\r\n"
    "punsigplo_0=2.0\r\npunsigplo_1=2.0\r\npunsigplo_2=1.0\r\npunsigplo_3=0.5\r\n"
    "pubsizplo=2.5\r\npubfon=Arial\r\npubbol=False\r\npubita=False\r\npubund=False\r\n"
    "pubcolor=0000000000\r\nstanplt=60.0\r\nstanptp=0.0\r\n"
    // The colour is 128 red.
    "nubgrascr=10\r\nnubsizplo=2.5\r\nnubfon=Arial\r\nnubbol=False\r\nnubita=False\r\n"
    "nubund=False\r\nnubcolor=0000000128\r\n";

constexpr const char* default_beobac =
    "[BEOBAC]\r\n"
    "Stquerscr=200\r\nStkreuscr=200\r\nlenoriscr=2000\r\n"
    "Stquerplo=5.0\r\nStkreuplo=5.0\r\nlenoriplo=35.0\r\nfaktorStrich=1\r\n";

// 64 + 64 * 65536 = 4194368, 255 * 256 = 65280, 255 + 255 * 256 = 65535, 255 + 128 * 256 = 33023.
constexpr const char* default_states =
    "[STATES]\r\n"
    "stnddrw=1\r\nstndrgb=0004194368\r\nstndwert=0.5\r\n"
    "stevdrw_1=2\r\nstevrgb_1=0000065280\r\nstevwert_1=10.0\r\n"
    "stevdrw_2=5\r\nstevrgb_2=0000000255\r\n"
    "stnvdrw_1=2\r\nstnvrgb_1=0000065280\r\nstnvwert_1=1.0\r\n"
    "stnvdrw_2=3\r\nstnvrgb_2=0000065535\r\nstnvwert_2=2.0\r\n"
    "stnvdrw_3=4\r\nstnvrgb_3=0000033023\r\nstnvwert_3=3.3\r\n"
    "stnvdrw_4=5\r\nstnvrgb_4=0000000255\r\n"
    "stepdrw_1=2\r\nsteprgb_1=0000065280\r\nstepwert_1=2.0\r\n"
    "stepdrw_2=3\r\nsteprgb_2=0000065535\r\nstepwert_2=3.0\r\n"
    "stepdrw_3=5\r\nsteprgb_3=0000000255\r\n";

// 128 * 256 + 255 * 65536 = 16744448, 128 + 64 * 256 = 16512, 64 * 256 = 16384.
constexpr const char* default_vektor =
    "[VEKTOR]\r\n"
    "vektAdrw_1=3\r\nvektArgb_1=0016744448\r\nvektNdrw_1=2\r\nvektNrgb_1=0000000255\r\n"
    "vektAdrw_2=3\r\nvektArgb_2=0016744448\r\nvektNdrw_2=2\r\nvektNrgb_2=0000000255\r\n"
    "vektAdrw_3=1\r\nvektArgb_3=0000016512\r\nvektNdrw_3=1\r\nvektNrgb_3=0000016512\r\n"
    "vektAdrw_4=3\r\nvektArgb_4=0016744448\r\nvektNdrw_4=2\r\nvektNrgb_4=0000000255\r\n"
    "vektAdrw_5=3\r\nvektArgb_5=0016744448\r\nvektNdrw_5=2\r\nvektNrgb_5=0000000255\r\n"
    "vektAdrw_6=3\r\nvektArgb_6=0000016384\r\nvektNdrw_6=3\r\nvektNrgb_6=0000016384\r\n";

constexpr const char* default_verwgr_file =
    "[VERWGR]\r\n"
    "Datei=verwgrenz.dat\r\nEllipsoid=1\r\nAbbildung=1\r\n"
    "DHDN=0.0 0.0 0.0 0.0 0.0\r\n"
    "ETRS 89=-4.3598 1.0986 -0.4115 -0.5387 -1.4848\r\n"
    "Andere=0.0 0.0 0.0 0.0 0.0\r\n";

// 255 + 201 * 256 + 255 * 65536 = 16763391.
constexpr const char* default_verwgr_lines =
    "grenzdrw_1=6\r\ngrenzdrw_2=5\r\ngrenzdrw_3=4\r\ngrenzdrw_4=3\r\n"
    "grenzdrw_5=2\r\ngrenzdrw_6=2\r\ngrenzdrw_7=2\r\n"
    "grenzrgb_1=0016763391\r\ngrenzrgb_2=0016763391\r\ngrenzrgb_3=0016763391\r\n"
    "grenzrgb_4=0016763391\r\ngrenzrgb_5=0016763391\r\ngrenzrgb_6=0016763391\r\n"
    "grenzrgb_7=0016763391\r\n";

constexpr const char* default_numbez =
    "[NUMBEZ]\r\n"
    "DHDN=0.0 0.0 0.0 0.0 0.0\r\n"
    "ETRS 89=-4.3598 1.0986 -0.4115 -0.5387 -1.4848\r\n"
    "Andere=0.0 0.0 0.0 0.0 0.0\r\n";

constexpr const char* default_legende =
    "[LEGENDE]\r\n"
    "TitelSize_1=3.5\r\nTitelFont_1=Arial\r\nTitelBold_1=False\r\nTitelItal_1=False\r\n"
    "TitelUndr_1=False\r\n"
    "TitelSize_2=3.0\r\nTitelFont_2=Arial\r\nTitelBold_2=False\r\nTitelItal_2=False\r\n"
    "TitelUndr_2=False\r\n"
    "TitelSize_3=3.0\r\nTitelFont_3=Arial\r\nTitelBold_3=False\r\nTitelItal_3=False\r\n"
    "TitelUndr_3=False\r\n"
    "TitelSize_4=3.0\r\nTitelFont_4=Arial\r\nTitelBold_4=False\r\nTitelItal_4=False\r\n"
    "TitelUndr_4=False\r\n";

constexpr const char* default_settings[] = {
    default_bezpun,      default_beobac,       default_states, default_vektor,
    default_verwgr_file, default_verwgr_lines, default_numbez, default_legende};

/// The whole profile.
inline std::string default_profile() {
    std::string bytes;
    for (const char* section : default_settings) {
        bytes += section;
    }
    return bytes;
}

}  // namespace veldra::testing_support
