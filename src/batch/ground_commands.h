#pragma once

#include <cstdint>
#include <string>

#include "batch/options.h"
#include "model/session.h"

/// Commands of veldra-cli on reference data. Each throws FatalError or UsageError when it cannot be
/// done.
namespace veldra::batch {

/// What a transformation of coordinates is asked for, as typed.
struct TransformationOptions {
    std::string from;           ///< --von ELLI,ABBI
    std::string to;             ///< --nach ELLI,ABBI
    std::int32_t meridian = 0;  ///< --meridian, strip or zone of the results
    std::string datum;          ///< --datum, five numbers, "" for none
};

/// Prints the grid of numbering districts in the view of a picture as one JSON object.
void command_bezirk(const FileOptions& options, const PictureOptions& picture);

/// Transforms lines "rechts hoch" from the standard input to the standard output.
void command_koordinaten(const TransformationOptions& options);

/// Writes a boundary file without the segments that occur twice; `argument` is the
/// file as typed; `output` "" stands for its name and "_neu".
void command_grenzen(const std::string& argument, const std::string& output);

/// Reads the boundaries of a picture before it is drawn, so that an unreadable file ends the
/// command, and says how many of its points cannot be drawn.
void load_boundaries(Session& session);

}  // namespace veldra::batch
