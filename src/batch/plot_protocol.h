#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/session.h"
#include "model/text_measurer.h"
#include "plot/paper_frame.h"

/// What became of the records of a network part on its way to the paper.
namespace veldra::batch {

/// Kinds of objects that records of the graphic file give. A record with a label counts twice: once
/// for itself and once for its label.
enum class ObjectKind : std::uint8_t {
    punktsignatur,
    punktbezeichnung,
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
    epochenbezeichnung,
    lagerestklaffungen,
    hoehenrestklaffungen,
    lagefehlerellipse,
    hoehenfehler
};
constexpr std::size_t object_kinds = 19;

/// Name of a kind in a protocol: the record's keyword, or the kind of label; UTF-8.
[[nodiscard]] std::string kind_name(ObjectKind kind);

/// Each record that was read is counted in exactly one of the other five.
struct KindCount {
    std::int64_t read = 0;
    std::int64_t drawn = 0;     ///< something of it is on a sheet
    std::int64_t hidden = 0;    ///< the selection or the display settings leave it out
    std::int64_t outside = 0;   ///< beside all sheets
    std::int64_t refused = 0;   ///< not to be used: see RefusedRecord
    std::int64_t replaced = 0;  ///< another record of the same object holds instead
};

/// A record that cannot be drawn whatever the selection and the sheets.
struct RefusedRecord {
    std::int64_t line = 0;  ///< of the file, from 1
    ObjectKind kind{};
    std::string reason;  ///< German, UTF-8
};

/// A record in whose place another one holds: the later one, and of orientation directions along
/// one line the first.
struct ReplacedRecord {
    std::int64_t line = 0;
    ObjectKind kind{};
};

struct PartProtocol {
    std::array<KindCount, object_kinds> kinds{};
    std::vector<RefusedRecord> refused;    ///< by ascending lines
    std::vector<ReplacedRecord> replaced;  ///< by ascending lines

    [[nodiscard]] const KindCount& of(ObjectKind kind) const {
        return kinds[static_cast<std::size_t>(kind)];
    }
    [[nodiscard]] KindCount& of(ObjectKind kind) { return kinds[static_cast<std::size_t>(kind)]; }
};

/// Reads the file once more and tells of each record of the current part what became of it on the
/// sheets of `session.plot`. The tables must have been read and the sheets been counted. A record
/// whose object another record shares (a second direction along a line) fares as that object does.
/// The labels in the session are placed anew. Throws FatalError when the file cannot be read.
[[nodiscard]] PartProtocol count_part(Session& session, const PaperFonts& fonts,
                                      TextMeasurer& measurer);

}  // namespace veldra::batch
