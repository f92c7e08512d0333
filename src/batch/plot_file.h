#pragma once

#include <optional>
#include <string>
#include <vector>

#include "batch/line_ledger.h"
#include "batch/plot_options.h"
#include "batch/plot_protocol.h"
#include "plot/printer.h"

namespace veldra::batch {

/// How one graphic file is to be plotted.
struct PlotTask {
    FileOptions file;                ///< `part` is not used
    std::vector<std::string> parts;  ///< names; empty: the first part
    bool all_parts = false;
    PlotChoice choice;
    int copies = 1;
    bool grey = false;
    bool without_empty = false;  ///< sheets that show nothing of the network are left out
    bool with_protocol = false;
    std::int64_t most_sheets = default_most_sheets;  ///< a job of more is refused
};

/// A part that was to be plotted.
struct PlottedPart {
    std::string name;     ///< UTF-8
    bool empty = false;   ///< without points and lines: not plotted
    std::string failure;  ///< why it was not plotted though it is not empty; "" if it was, UTF-8
    SheetCounts sheets;
    std::int64_t empty_sheets = 0;  ///< that show nothing of the network; counted with a protocol
    double denominator = 0;
    std::optional<PartProtocol> protocol;
};

/// What became of a file.
struct PlottedFile {
    std::vector<PlottedPart> parts;
    std::optional<LineLedger> ledger;  ///< of all its lines, with a protocol
};

/// Plots a file on the current printer as one document: copy by copy, and in a copy part by part.
/// Nothing is written beside the document. A job of many sheets is told on the standard error
/// before it starts; a part whose sheets cannot be counted is left out. Throws FatalError when the
/// file cannot be read, when there is nothing to plot or too much, and when the printer or its file
/// does not take the document, which then is dropped.
[[nodiscard]] PlottedFile plot_file(const PlotTask& task, Printer& printer);

}  // namespace veldra::batch
