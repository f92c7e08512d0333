#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "model/session.h"
#include "os/files.h"

namespace veldra {

/// Records that the program writes by itself, as lines of Windows-1252 without their end. Numbers
/// are padded to their masks; one that fills its mask has one blank before it, so that fields never
/// touch. Control characters of texts become blanks.

/// Title line 2 to 4.
[[nodiscard]] std::string title_record(std::size_t number, std::string_view text);
[[nodiscard]] std::string selection_record(const ObjectSelection& obj);
/// A label that the longest line has no room for is cut.
[[nodiscard]] std::string signature_record(const PointRow& point);
[[nodiscard]] std::string district_label_record(const NubezOffsetRow& row);
[[nodiscard]] std::string vector_scale_record(const Session& session);
/// None for a part that is not plotted.
[[nodiscard]] std::optional<std::string> plot_scale_record(const PlotSettings& plot);

/// A line that was read, with the line end of all files.
void write_line(ReplacedFile& out, std::string_view line);
/// A record of the program's own. Throws FatalError, naming the graphic file and the record, when
/// it would not be read back as one line.
void write_record(ReplacedFile& out, const Session& session, std::string_view line);

/// The block of the current part: titles, selection, signatures, moved district labels. `goes_on`
/// is called now and then.
template <typename GoesOn>
void write_part_block(ReplacedFile& out, const Session& session, const GoesOn& goes_on) {
    constexpr std::int32_t often = 4096;
    for (std::size_t i = 1; i < session.titel.size(); ++i) {
        const std::string& text = session.titel[i].getTitelText();
        if (!text.empty()) {
            write_record(out, session, title_record(i + 1, text));
        }
    }
    write_record(out, session, selection_record(session.obj));
    for (std::int32_t i = 1; i <= session.pu.count(); ++i) {
        if (i % often == 0) {
            goes_on();
        }
        if (session.pu[i].pu_signatur != 0) {
            write_record(out, session, signature_record(session.pu[i]));
        }
    }
    for (std::int32_t i = 1; i <= session.nuoff.count(); ++i) {
        write_record(out, session, district_label_record(session.nuoff[i]));
    }
}

}  // namespace veldra
