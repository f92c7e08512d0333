#pragma once

#include "batch/plot_options.h"

namespace veldra::batch {

/// Plots graphic files into PDF files, or on a queue of the system (which needs a running
/// QGuiApplication), and writes the protocol. A file that cannot be plotted is reported on the
/// standard error and does not keep the others from it. Returns the exit code: 0, 1 if a file could
/// not be plotted, 3 if all were but the protocol tells of records that were refused. Throws
/// UsageError, and FatalError for what concerns all files.
[[nodiscard]] int command_plot(const PlotArguments& arguments);

}  // namespace veldra::batch
