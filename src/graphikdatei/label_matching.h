#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "graphikdatei/hand_work.h"

namespace veldra {

/// Where the moved labels of a file go in another one.
struct LabelEdit {
    ChangeRecord kind = ChangeRecord::none;
    EpochOffset offset;
};

struct LabelMatches {
    std::unordered_map<std::int64_t, LabelEdit> edits;  ///< by the number of their line, from 1
    std::int64_t points = 0;
    std::int64_t epochs = 0;
    std::int64_t by_place = 0;
    std::vector<std::vector<const MovedLabel*>> lost;  ///< by the index of their part
};

/// The graphic file is divided into parts. Throws FatalError when it cannot be read.
[[nodiscard]] bool has_parts(const std::string& path, LongWork* work);

/// Looks for the records in the graphic file `path` that take the moved labels of the parts of the
/// same name. Throws FatalError when the file cannot be read.
[[nodiscard]] LabelMatches match_labels(const HandWork& hand_work, const std::string& path,
                                        LongWork* work);

}  // namespace veldra
