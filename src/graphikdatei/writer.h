#pragma once

#include "shell/session.h"

namespace veldra {

/// Both writers do nothing unless a file is loaded. They replace their output as a whole: when one
/// throws FatalError, naming the file and the reason, every file is as it was before the call.

/// Writes the state of the current part into the next working copy ("_1" and "_2" in turn), which
/// the readers read from then on.
void arbeitskopie_schreiben(Session& session);

/// Turns the latest working copy into the graphic file itself and deletes the copies; the session
/// then has no file loaded, also when a copy cannot be deleted and is named by the FatalError.
/// `target` is the file to write, usually the graphic file.
void endfassung_schreiben(Session& session, const std::string& target);
void endfassung_schreiben(Session& session);

}  // namespace veldra
