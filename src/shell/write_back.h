#pragma once

#include "shell/lifecycle.h"
#include "shell/session.h"

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

}  // namespace veldra
