#pragma once

#include "shell/lifecycle.h"
#include "shell/session.h"
#include "shell/startup.h"

namespace veldra {

/// The recent file menu, entry 1 to 4. A file that is gone is reported and taken off the list.
/// Throws FatalError when a file cannot be read or written.
void datei_alt_oeffnen(Session& session, int index, const Desk& desk);

/// Asks about a changed default printer; then writes the graphic file, the profile and, after a
/// plain start, the list of recent files. The program counts as ended afterwards. Throws FatalError
/// when a file cannot be written.
void programm_ende(Session& session, ProgramRun& run, const Desk& desk);

}  // namespace veldra
