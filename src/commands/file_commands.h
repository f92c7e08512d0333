#pragma once

#include "commands/lifecycle.h"
#include "commands/startup.h"
#include "commands/write_back.h"
#include "model/session.h"

namespace veldra {

/// The recent file menu, entry 1 to 4. A file that is gone is reported and taken off the list.
/// Throws FatalError when a file cannot be read or written.
void datei_alt_oeffnen(Session& session, int index, const Desk& desk);

/// If another program has rewritten the open file, asks whether it is to be read anew, and does so:
/// the part in view stays, the hand's work is taken over, and the user is told how much of it.
/// Otherwise the file as it is
/// now counts as known, and is overwritten when it is left. Throws FatalError when it cannot be
/// read.
void geaenderte_datei_pruefen(Session& session, const Desk& desk);

/// Takes label offsets, selection, titles and plot settings of another graphic file over into the
/// open one, shows it anew and tells how many. What goes wrong is told too, and the open file stays
/// as it was; FatalError is thrown when it cannot be read any more.
void einstellungen_uebernehmen(Session& session, const std::string& path, const Desk& desk);

/// Ends the work of the program: asks about a changed default printer, writes the graphic file, the
/// profile and, after a plain start, the list of recent files. The program counts as ended
/// afterwards, also when something could not be written: each step is taken, then FatalError names
/// all that failed. With nobody there, nothing is asked.
void programm_ende(Session& session, ProgramRun& run, const Desk& desk,
                   Attendance attendance = Attendance::user);

}  // namespace veldra
