#include "drawing/district_grid.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "text/numbers.h"

namespace veldra {

namespace {

/// Least and greatest value of both coordinates.
struct Range {
    double x_min = std::numeric_limits<double>::max();
    double x_max = std::numeric_limits<double>::lowest();
    double y_min = std::numeric_limits<double>::max();
    double y_max = std::numeric_limits<double>::lowest();

    void widen(double x, double y) {
        x_min = std::min(x_min, x);
        x_max = std::max(x_max, x);
        y_min = std::min(y_min, y);
        y_max = std::max(y_max, y);
    }
};

/// Calls `take` for the four corners of the view.
template <typename Take>
void visit_corners(const std::array<double, 4>& view, Take&& take) {
    for (const std::size_t x : {0U, 2U}) {
        for (const std::size_t y : {1U, 3U}) {
            take(PlanePoint{view[x], view[y]});
        }
    }
}

/// Columns and rows of tiles.
struct TileRange {
    std::int64_t first_column = 0;
    std::int64_t last_column = -1;
    std::int64_t first_row = 0;
    std::int64_t last_row = -1;
};

/// None if there are no tiles or too many.
bool set_size(DistrictGrid& grid, const TileRange& tiles) {
    const std::int64_t columns = tiles.last_column - tiles.first_column + 1;
    const std::int64_t rows = tiles.last_row - tiles.first_row + 1;
    if (columns < 1 || rows < 1 || columns > most_nodes || rows > most_nodes / columns) {
        return false;
    }
    grid.grid_spalten = static_cast<std::int32_t>(columns);
    grid.grid_zeilen = static_cast<std::int32_t>(rows);
    grid.grid_zu_gross = columns * rows > most_numbered_nodes;
    const auto nodes = static_cast<std::size_t>(columns * rows) + 1;
    grid.grid_rechts.assign(nodes, 0);
    grid.grid_hoch.assign(nodes, 0);
    grid.valid.assign(nodes, false);
    if (!grid.grid_zu_gross) {
        grid.grid_bez.assign(nodes, {});
        grid.grid_bez_ecke.assign(nodes, {});
    }
    return true;
}

void set_node(DistrictGrid& grid, std::size_t node, const std::optional<PlanePoint>& place) {
    if (place) {
        grid.grid_rechts[node] = place->rechts;
        grid.grid_hoch[node] = place->hoch;
        grid.valid[node] = true;
    }
}

/// Places the nodes; `place(column, row)` gives their coordinates.
template <typename Place>
void set_nodes(DistrictGrid& grid, const TileRange& tiles, Place&& place) {
    std::size_t node = 1;
    for (std::int64_t column = tiles.first_column; column <= tiles.last_column; ++column) {
        for (std::int64_t row = tiles.first_row; row <= tiles.last_row; ++row) {
            set_node(grid, node++, place(column, row));
        }
    }
}

/// The numbers of the four tiles around a node.
struct TileNumbers {
    std::string north_west;
    std::string north_east;
    std::string south_west;
    std::string south_east;
};

std::string around_node(const TileNumbers& tiles, const std::string& prefix) {
    return " " + prefix + tiles.north_west + " | " + prefix + tiles.north_east + " \r\n  " +
           prefix + tiles.south_west + " | " + prefix + tiles.south_east + " ";
}

constexpr const char* no_digits = "..";

std::string two_digits(std::int64_t value) {
    return zahl_text(static_cast<double>(value), "#0", "0");
}

std::string four_digits(std::int64_t value) {
    return zahl_text(static_cast<double>(value), "0000", "0");
}

std::string format_00(std::int64_t value) {
    return zahl_text(static_cast<double>(value), "00", "0");
}

/// A pair of digits for the tiles on both sides of a grid line.
struct SideDigits {
    std::string ahead;   ///< to the north or east
    std::string behind;  ///< to the south or west
};

/// Sheet rows are counted from the north down to 46° (row 99) and up to 56°.
SideDigits row_digits(std::int64_t row, std::int64_t f) {
    const std::int64_t minutes = row * f * 6;
    SideDigits digits{no_digits, no_digits};
    if (minutes >= 2760 && minutes < 3360) {
        digits.ahead = two_digits(559 - row * f);
    }
    // The upper test subtracts the step of the other axis and the lower one nothing; the numbers on
    // the edge of a plot have always been made this way.
    if (minutes - 10 * f <= 3360 && minutes > 2760) {
        digits.behind = two_digits(559 - (row - 1) * f);
    }
    return digits;
}

/// Sheet columns are counted from 5°40' to the east.
SideDigits column_digits(std::int64_t column, std::int64_t f) {
    const std::int64_t minutes = column * f * 10;
    SideDigits digits{no_digits, no_digits};
    if (minutes >= 340 && minutes < 1340) {
        digits.ahead = two_digits(column * f - 34);
    }
    // The step of the other axis here too.
    if (minutes - 6 * f > 340 && minutes - 6 * f <= 1340) {
        digits.behind = two_digits((column - 1) * f - 34);
    }
    return digits;
}

void number_sheets(DistrictGrid& grid, const TileRange& tiles, std::int16_t obj_nube) {
    const std::int64_t f = sheet_factor(obj_nube);
    const std::string prefix = sheet_prefix(obj_nube);
    std::vector<SideDigits> rows;
    for (std::int64_t row = tiles.first_row; row <= tiles.last_row; ++row) {
        rows.push_back(row_digits(row, f));
    }
    std::size_t node = 0;
    for (std::int64_t column = tiles.first_column; column <= tiles.last_column; ++column) {
        const SideDigits c = column_digits(column, f);
        for (const SideDigits& r : rows) {
            ++node;
            if (r.ahead == no_digits && c.ahead == no_digits) {
                continue;
            }
            const TileNumbers numbers{r.ahead + c.behind, r.ahead + c.ahead, r.behind + c.behind,
                                      r.behind + c.ahead};
            grid.grid_bez[node] = prefix + numbers.north_east;
            grid.grid_bez_ecke[node] = around_node(numbers, prefix);
        }
    }
}

/// The digits of a kilometre line.
struct KilometreDigits {
    std::string whole;     ///< four digits
    std::string hundreds;  ///< two digits each
    std::string rest;
};

KilometreDigits kilometre_digits(std::int64_t kilometre) {
    return {four_digits(kilometre), format_00(kilometre / 100), format_00(kilometre % 100)};
}

std::string square_number(std::int16_t obj_nube, const KilometreDigits& i,
                          const KilometreDigits& j) {
    return obj_nube == districts::alk ? i.hundreds + j.hundreds + i.rest + j.rest
                                      : i.whole + j.whole;
}

void number_squares(DistrictGrid& grid, const TileRange& tiles, std::int16_t obj_nube) {
    constexpr std::int64_t last = 9999;
    const auto digits_of = [](std::int64_t first, std::int64_t end) {
        // From the line before the first one on.
        std::vector<KilometreDigits> digits;
        for (std::int64_t line = first - 1; line <= end; ++line) {
            digits.push_back(kilometre_digits(std::max<std::int64_t>(line, 0)));
        }
        return digits;
    };
    const std::vector<KilometreDigits> columns = digits_of(tiles.first_column, tiles.last_column);
    const std::vector<KilometreDigits> rows = digits_of(tiles.first_row, tiles.last_row);
    std::size_t node = 0;
    for (std::size_t i = 1; i < columns.size(); ++i) {
        const std::int64_t column = tiles.first_column + static_cast<std::int64_t>(i) - 1;
        for (std::size_t j = 1; j < rows.size(); ++j) {
            ++node;
            const std::int64_t row = tiles.first_row + static_cast<std::int64_t>(j) - 1;
            if (column <= 0 || column > last || row <= 0 || row > last) {
                continue;
            }
            grid.grid_bez[node] = columns[i].whole + rows[j].whole;
            grid.grid_bez_ecke[node] =
                around_node({square_number(obj_nube, columns[i - 1], rows[j]),
                             square_number(obj_nube, columns[i], rows[j]),
                             square_number(obj_nube, columns[i - 1], rows[j - 1]),
                             square_number(obj_nube, columns[i], rows[j - 1])},
                            "");
        }
    }
}

/// A datum row may lead anywhere; sheets are on the earth.
bool is_on_earth(const GeographicPoint& point) {
    return std::fabs(point.latitude) <= 90 && std::fabs(point.longitude) <= 540;
}

std::int64_t whole(double value) {
    return static_cast<std::int64_t>(std::floor(value));
}

}  // namespace

std::int64_t sheet_factor(std::int16_t obj_nube) {
    return obj_nube == districts::tk100 ? 4 : obj_nube == districts::tk50 ? 2 : 1;
}

std::string sheet_prefix(std::int16_t obj_nube) {
    return obj_nube == districts::tk50 ? "L " : obj_nube == districts::tk100 ? "C " : "";
}

std::string square_number(std::int16_t obj_nube, std::int64_t column, std::int64_t row) {
    return square_number(obj_nube, kilometre_digits(column), kilometre_digits(row));
}

DistrictGrid BuildTkGrid(const DistrictInputs& inputs) {
    DistrictGrid grid;
    if (inputs.obj_bezu <= 0) {
        return grid;
    }
    const CoordinateChain chain(inputs.chain);
    Range range;
    bool inside = true;
    visit_corners(inputs.view, [&](const PlanePoint& corner) {
        const std::optional<GeographicPoint> point = chain.to_geographic(corner);
        inside = inside && point && is_on_earth(*point);
        if (inside) {
            range.widen(point->longitude, point->latitude);
        }
    });
    if (!inside) {
        return grid;
    }
    const std::int64_t f = sheet_factor(inputs.obj_nube);
    const auto factor = static_cast<double>(f);
    const TileRange tiles{whole(range.x_min * 6 / factor) - 1, whole(range.x_max * 6 / factor) + 1,
                          whole(range.y_min * 10 / factor) - 1,
                          whole(range.y_max * 10 / factor) + 1};
    if (!set_size(grid, tiles)) {
        return grid;
    }
    set_nodes(grid, tiles, [&](std::int64_t column, std::int64_t row) {
        return chain.to_document(GeographicPoint{static_cast<double>(row * f * 6) / 60,
                                                 static_cast<double>(column * f * 10) / 60});
    });
    if (!grid.grid_zu_gross) {
        number_sheets(grid, tiles, inputs.obj_nube);
    }
    return grid;
}

DistrictGrid BuildKmGrid(const DistrictInputs& inputs) {
    constexpr double kilometre = 1000;
    DistrictGrid grid;
    if (inputs.obj_bezu <= 0) {
        return grid;
    }
    const CoordinateChain chain(inputs.chain);
    Range range;
    bool inside = true;
    visit_corners(inputs.view, [&](const PlanePoint& corner) {
        const std::optional<PlanePoint> point =
            chain.to_reference(corner, inputs.obj_nube_meridian);
        inside = inside && point;
        if (point) {
            range.widen(point->rechts, point->hoch);
        }
    });
    if (!inside || range.x_min < 0 || range.y_min < 0) {
        return grid;
    }
    const TileRange tiles{whole(range.x_min / kilometre), whole(range.x_max / kilometre) + 1,
                          whole(range.y_min / kilometre), whole(range.y_max / kilometre) + 1};
    if (!set_size(grid, tiles)) {
        return grid;
    }
    set_nodes(grid, tiles, [&](std::int64_t column, std::int64_t row) {
        return chain.to_document(PlanePoint{kilometre * static_cast<double>(column),
                                            kilometre * static_cast<double>(row)},
                                 inputs.obj_nube_meridian);
    });
    if (!grid.grid_zu_gross) {
        number_squares(grid, tiles, inputs.obj_nube);
    }
    return grid;
}

}  // namespace veldra
