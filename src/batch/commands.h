#pragma once

#include <string>
#include <vector>

#include "batch/options.h"

/// The commands of veldra-cli. Each throws FatalError or UsageError when it cannot be done.
namespace veldra::batch {

void command_tabellen(const FileOptions& options);

void command_bild(const FileOptions& options, const PictureOptions& picture,
                  const std::string& output);

void command_operationen(const FileOptions& options, const PictureOptions& picture);

/// `parts` are shown one after the other behind the first one.
void command_normalform(const FileOptions& options, const std::vector<std::string>& parts,
                        const std::string& output);

/// Writes `file` with the hand's work of the graphic file `old`, and prints what was taken over.
void command_uebernehmen(const std::string& old, const std::string& file,
                         const std::string& output);

}  // namespace veldra::batch
