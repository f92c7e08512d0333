#pragma once

#include <cstdint>
#include <string>

#include "commands/lifecycle.h"
#include "model/session.h"
#include "text/fatal_error.h"

namespace veldra {

/// Whether somebody is there to answer questions: the system ends programs by itself, too.
enum class Attendance { user, nobody };

/// Writes the open file back when it is left; with no file loaded nothing happens. If another
/// program has rewritten the file meanwhile, the user decides whether it is overwritten; if not, or
/// with nobody there, the working copy stays and the user is told where it lies.
///
/// Throws FatalError when the file cannot be written: file and reason, then the place of the
/// working copy, which holds all changes. If there is no place for one beside the graphic file, it
/// goes to `desk.rescue_folder` or the folder for temporary files. No file is loaded afterwards.
void datei_zurueckschreiben(Session& session, const Desk& desk,
                            Attendance attendance = Attendance::user);

/// Whether the latest working copy holds the state of the current part.
enum class WorkingCopy : std::uint8_t { outdated, written };

/// The error to end with after a failure that the program cannot go on after, while a file is open:
/// `reason`, then the place of the working copy that holds the user's changes, as above. No file is
/// loaded afterwards. Without an open file the reason alone.
[[nodiscard]] FatalError abandon_file(Session& session, const Desk& desk, const std::string& reason,
                                      WorkingCopy copy);

}  // namespace veldra
