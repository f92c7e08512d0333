#pragma once

#include <string>
#include <vector>

#include "batch/plot_file.h"

namespace veldra::batch {

/// What became of a file that was to be plotted.
struct FileResult {
    std::string file;
    std::string output;   ///< "" on a queue
    std::string failure;  ///< "" if it was plotted; UTF-8
    PlottedFile plotted;
};

/// The protocol of a call as one JSON object in UTF-8. Kinds that no record gives are left out.
[[nodiscard]] std::string protocol_json(const std::vector<FileResult>& results);

}  // namespace veldra::batch
