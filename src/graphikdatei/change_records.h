#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/tables.h"
#include "text/tokens.h"

namespace veldra {

/// A record that states a change of a point, or the next epoch of one.
enum class ChangeRecord : std::uint8_t { none, lage, hoehe, lage_epoche, hoehe_epoche };

/// Goes over the records of a part and numbers those of changes from 1. Writing keeps them all and
/// their order, so that a number means the same record in the graphic file and in its copies.
class ChangeRecords {
 public:
    /// To be told each record of the part in turn.
    ChangeRecord take(const Record& record);

    /// Of the change that was taken last.
    [[nodiscard]] std::int32_t number() const { return number_; }

 private:
    ChangeRecord counted(ChangeRecord kind) {
        ++number_;
        return kind;
    }

    ChangeRecord continued_ = ChangeRecord::none;  ///< what the next epoch would be one of
    std::int32_t number_ = 0;
};

/// The token of a change's epoch text. The two behind it are the offsets of its label.
[[nodiscard]] int epoch_text_token(ChangeRecord kind);

/// Label offsets, percent of font height, as they are written: never 0.0, which would mean the
/// standard place.
[[nodiscard]] std::string epoch_offset_text(double offset);

/// The line with these two tokens behind token `text_token` (from 2), a text; what else it holds
/// reads as before, and missing tokens between are filled. A line that would become too long to be
/// read is given back as it is.
[[nodiscard]] std::string with_offsets(std::string_view line, int text_token,
                                       std::string_view rechts, std::string_view hoch);
/// The line of a change with these offsets of its label, as above.
[[nodiscard]] std::string with_label_offset(std::string_view line, ChangeRecord kind,
                                            const EpochOffset& offset);

}  // namespace veldra
