#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "batch/options.h"

namespace veldra::batch {

/// Sheets of a job above which it is refused unless told otherwise.
inline constexpr std::int64_t default_most_sheets = 2000;

/// What `plot` is asked for, as typed (UTF-8; paths are the system's bytes).
struct PlotArguments {
    std::vector<std::string> files;
    std::vector<std::string> parts;                  ///< --netzteil
    bool all_parts = false;                          ///< --alle
    std::string scale;                               ///< --massstab M
    std::string orientation;                         ///< --ausrichtung hoch|quer
    std::string margin;                              ///< --heftrand oben|links|kein
    std::string legend;                              ///< --legende 1 to 4
    std::string sheets;                              ///< --blaetter RxH
    std::string zero;                                ///< --null RW,HW
    std::string paper;                               ///< --papier NAME or BxH
    int copies = 1;                                  ///< --exemplare
    bool grey = false;                               ///< --grau
    bool without_empty = false;                      ///< --ohne-leere
    std::string profile;                             ///< --profil
    std::vector<std::string> objects;                ///< --obj
    std::string printer;                             ///< --drucker
    std::string output;                              ///< -o
    int jobs = 1;                                    ///< --jobs
    std::string protocol;                            ///< --protokoll
    std::int64_t most_sheets = default_most_sheets;  ///< --hoechstens
};

/// A size of paper as it stands upright.
struct PaperChoice {
    std::int16_t code = 0;  ///< 256: the size counts
    double width = 0;       ///< millimetres
    double height = 0;
};

struct SheetCounts {
    std::int16_t columns = 1;
    std::int16_t rows = 1;
};

struct ZeroPoint {
    double rechts = 0;  ///< metres
    double hoch = 0;
};

/// Plot settings that take the place of those of the parts.
struct PlotChoice {
    std::optional<double> denominator;
    std::optional<std::int16_t> orientation;  ///< 1 Hochformat, 2 Querformat
    std::optional<std::int16_t> margin;       ///< 1 oben, 2 links, 3 kein Heftrand
    std::optional<std::int16_t> legend;       ///< 1 to 4
    std::optional<SheetCounts> sheets;
    std::optional<ZeroPoint> zero;
    std::optional<PaperChoice> paper;
};

/// Whether sheets have a net area of at least 50 mm on each side.
[[nodiscard]] bool leaves_room(const SheetGeometry& sheet);

/// Throws UsageError, in German, for what cannot be understood or is out of its range.
[[nodiscard]] PlotChoice parse_plot_choice(const PlotArguments& arguments);

}  // namespace veldra::batch
