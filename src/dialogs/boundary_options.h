#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "model/session.h"
#include "model/settings.h"

namespace veldra {

// The boundary file and the datum transitions as they are edited. Texts are UTF-8.

/// Names of the ellipsoids 1 to 5 and of the mappings 1 and 2.
[[nodiscard]] const std::array<std::string_view, 5>& ellipsoid_names();
[[nodiscard]] const std::array<std::string_view, 2>& mapping_names();

constexpr std::size_t datum_row_count = 3;  ///< DHDN, ETRS 89, another system

/// What the dialog shows.
struct BoundaryOptions {
    std::string datei;           ///< path of the boundary file
    std::int32_t ellipsoid = 0;  ///< 1 to 5; other values are those of a strange profile
    std::int32_t abbildung = 0;  ///< 1 or 2
    std::array<std::string, datum_row_count> gren_tr;  ///< transitions for boundaries
    std::array<std::string, datum_row_count> numb_tr;  ///< and for numbering districts

    bool operator==(const BoundaryOptions&) const = default;
};

[[nodiscard]] BoundaryOptions boundary_options(const Settings& settings);
[[nodiscard]] BoundaryOptions standard_boundary_options();

/// Five numbers with blanks between them as the row of a transition; a number may have a comma for
/// its point. None if there are more or fewer, or something that is no number, or if the profile
/// has no room for them.
[[nodiscard]] std::optional<DatumRow> parse_datum_row(std::string_view text);
/// The row as a text; reading it back gives the row to four decimals.
[[nodiscard]] std::string datum_row_text(const DatumRow& row);

/// Stores the options. Nothing is stored if a transition cannot be read.
[[nodiscard]] bool store_boundary_options(const BoundaryOptions& options, Settings& settings);

/// The file that a path of the settings stands for: a relative one is looked up in the current
/// folder, then in that of the graphic file. "" if there is none, or if the profile cannot keep its
/// path.
[[nodiscard]] std::string find_boundary_file(const Session& session, const std::string& datei);

/// How a reduction ended.
enum class ReductionEnd : std::uint8_t { done, no_file, cancelled };

/// Told which share of the work is done, 0 to 1; false gives it up.
using ReductionWatch = std::function<bool(double share)>;

/// Writes the reduced copy of the boundary file that `datei` stands for beside it, with "_neu"
/// behind its name, and appends that to `datei`. Given up or failed, neither a file nor the path
/// has changed. Throws FatalError when a file cannot be read or written.
ReductionEnd optimise_boundaries(const Session& session, std::string& datei,
                                 const ReductionWatch& watch);

}  // namespace veldra
