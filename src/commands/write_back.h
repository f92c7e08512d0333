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
/// with nobody there, the working copy stays and the user is told where it lies. A read-only file
/// is left without a word if nothing has been changed; if something has, or if the file's folder
/// has vanished, the user is asked where it shall go.
///
/// Throws FatalError when the file cannot be written: file and reason, then the place of the
/// working copy, which holds all changes. If there is no place for one beside the graphic file, it
/// goes to `desk.rescue_folder` or the folder for temporary files. No file is loaded afterwards.
void datei_zurueckschreiben(Session& session, const Desk& desk,
                            Attendance attendance = Attendance::user);

/// The folder of the open file cannot be reached any more: a command that broke off is no reason to
/// end the program.
[[nodiscard]] bool file_out_of_reach(const Session& session);
/// Lets the user decide what becomes of the state that the open file cannot take, for `reason`:
/// "Wiederholen" writes it back after all, "Speichern unter..." writes it into another file,
/// "Verwerfen" gives it up; what fails is asked about again. No file is loaded afterwards. Throws
/// FatalError as above when nobody is there.
void settle_unwritten(Session& session, const Desk& desk, std::string reason);

/// Whether the latest working copy holds the state of the current part.
enum class WorkingCopy : std::uint8_t { outdated, written };

/// The error to end with after a failure that the program cannot go on after, while a file is open:
/// `reason`, then the place of the working copy that holds the user's changes, as above. No file is
/// loaded afterwards. Without an open file the reason alone.
[[nodiscard]] FatalError abandon_file(Session& session, const Desk& desk, const std::string& reason,
                                      WorkingCopy copy);

}  // namespace veldra
