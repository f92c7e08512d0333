#pragma once

#include <string>

#include "model/session.h"

namespace veldra {

/// Writes a complete graphic file from what is in memory, for when there is no file any more that
/// the state could be merged into: the file-wide records, all parts with their plot settings, and
/// of the current part titles, selection, points, and the observations and values of its selection.
/// Of an observation's statistics the ones shown are there; a line's ends are those of the points
/// within a centimetre. The file counts as a working copy of the session. Throws FatalError when
/// the file cannot be written; an old one stands then.
void write_from_memory(Session& session, const std::string& target);

}  // namespace veldra
