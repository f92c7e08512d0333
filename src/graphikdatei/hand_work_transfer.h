#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "graphikdatei/hand_work.h"

namespace veldra {

class ReplacedFile;

/// What became of the hand's work on its way into another file. Texts are UTF-8.
struct TransferReport {
    std::int64_t points = 0;      ///< labels of points
    std::int64_t epochs = 0;      ///< labels of changes
    std::int64_t by_place = 0;    ///< of these labels, those whose point number was gone
    std::int64_t districts = 0;   ///< labels of numbering districts
    std::int64_t selections = 0;  ///< of a part each
    std::int64_t titles = 0;      ///< title lines
    std::int64_t plots = 0;       ///< plot settings of a part each
    std::int64_t vector_scales = 0;

    std::int64_t not_taken = 0;     ///< whatever found no place in the other file
    std::vector<std::string> lost;  ///< names these, a line for each label or missing part
};

/// Writes the graphic file `source` with the hand's work of another one into `out`, which is left
/// uncommitted. Parts belong together by name. A label goes to the point of its number, of several
/// to the nearest; where the number is gone, to the point within a centimetre of its place. Labels
/// of changes also need the same kind and epoch: the epoch's text, or its number where the text is
/// empty. What the source states where the other file states nothing stays, and so do all other
/// records, byte by byte. `work` follows. Throws FatalError when a file cannot be read or written.
TransferReport transfer_hand_work(const HandWork& hand_work, const std::string& source,
                                  ReplacedFile& out, LongWork* work = nullptr);

/// The report for the user, in lines; at most `most_names` of what was not taken over are named,
/// and the others counted.
[[nodiscard]] std::string transfer_text(const TransferReport& report, std::size_t most_names);

}  // namespace veldra
