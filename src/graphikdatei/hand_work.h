#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "graphikdatei/change_records.h"
#include "graphikdatei/record_fields.h"
#include "model/tables.h"

namespace veldra {

class LongWork;

/// A label that was moved away from its standard place: that of a point, or of a change of one.
struct MovedLabel {
    ChangeRecord kind = ChangeRecord::none;  ///< none: the label of the point itself
    std::string number;                      ///< of the point; "" if it has none
    Position place;                          ///< of the point
    std::string epoch_text;
    std::int32_t record = 0;  ///< of a change: its number among the changes of its part
    std::int32_t epoch = 0;   ///< 0 for the change itself, then 1, 2 and so on
    EpochOffset offset;       ///< percent of font height
};

/// What the user has put into a network part by hand. Records are lines of Windows-1252 without
/// their end; "" stands for none.
struct PartWork {
    std::string name;
    std::vector<MovedLabel> labels;
    std::vector<NubezOffsetRow> districts;  ///< moved labels of numbering districts
    std::array<std::string, 4> titles;      ///< texts of title lines 2 to 4 as elements 1 to 3
    std::string selection;                  ///< record OBJEKTE
    /// Records MAßSTABGRUNDRISS: one for each time that a part of this name begins.
    std::vector<std::string> plot_scales;

    [[nodiscard]] bool empty() const;
};

/// What the user has put into a graphic file by hand: all that a program which computes the network
/// anew does not write.
struct HandWork {
    std::string title;          ///< text of title line 1
    std::string vector_scales;  ///< record MAßSTABVEKTOREN
    /// The file is divided into parts. Otherwise it is one part without a name.
    bool has_parts = false;
    std::vector<PartWork> parts;  ///< one for each name

    /// The part of that name, appended if there is none.
    PartWork& part(std::string_view name);
    [[nodiscard]] const PartWork* find(std::string_view name) const;
};

/// The label of a change that a record states: its kind, place, text, epoch and offsets, which are
/// 0 where the record has none.
class ChangeLabels {
 public:
    /// To be told each record of the part in turn; none for one that is no change.
    std::optional<MovedLabel> take(Record& record);

 private:
    ChangeRecords changes_;
    Position place_;
    std::int32_t epoch_ = 0;
};

/// Reads the hand's work out of a graphic file. A label whose offset east is 0 stands at its
/// standard place and was not moved. `work` follows the reading. Throws FatalError when the file
/// cannot be read.
[[nodiscard]] HandWork read_hand_work(const std::string& path, LongWork* work = nullptr);

/// Drops title line 1 if it is one of these paths (UTF-8): a file without a title bears its path.
void forget_title_of_path(HandWork& hand_work, std::initializer_list<std::string_view> paths);

}  // namespace veldra
