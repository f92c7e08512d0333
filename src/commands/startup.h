#pragma once

#include <string>

#include "commands/lifecycle.h"
#include "model/session.h"
#include "settings/paths.h"

namespace veldra {

/// How this run of the program was started, and what lasts as long as it runs.
struct ProgramRun {
    SystemFolders folders;
    std::string befehlszeile;     ///< name of a project profile; "" for a plain start
    std::string ini_datei;        ///< the profile file in use
    std::string start_datei;      ///< graphic file that a plain start opens at once; "" for none
    std::string icon_datei;       ///< the project's window icon; "" for the program's own
    bool programm_aktiv = false;  ///< from the start until the end routine has run

    [[nodiscard]] bool is_project() const { return !befehlszeile.empty(); }
};

/// Tells what the words of the command line name. They are the name of a project profile; but if
/// there is no such profile and they lead to a file, this is a plain start with that graphic file.
void befehlszeile_deuten(ProgramRun& run);

/// The state that every start begins with: no file, empty tables, all display settings at their
/// defaults, and the commands that need a file disabled. Whoever follows the work goes on doing so.
void start_vorbereiten(Session& session, ProgramRun& run);

/// Finds the profile of this start. A project's gives icon, graphic file and window title, and the
/// commands that could leave its file are hidden. The plain one gives the recent files and how the
/// logo is confirmed; its folder is made if it is missing. Throws FatalError when that fails.
void startprofil_lesen(Session& session, ProgramRun& run);

/// Tells the user of a project whose name is that of neither a profile nor a file.
void unbekannte_angabe_melden(const ProgramRun& run, UserInterface& ui);

/// Opens the graphic file that the project's profile names. Nothing happens if it does not exist,
/// is no regular file, which is told, or if another copy of the program has it open and the user
/// does not want it then.
void projektdatei_oeffnen(Session& session, const Desk& desk);

}  // namespace veldra
