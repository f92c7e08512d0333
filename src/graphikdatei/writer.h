#pragma once

#include "model/session.h"

namespace veldra {

/// The writers do nothing unless a file is loaded. They replace their output as a whole: when one
/// throws FatalError, naming the file and the reason, every file is as it was before the call.
/// `session.work` follows them and cannot give them up.

/// Writes the state of the current part into the next working copy ("_1" and "_2" in turn), which
/// the readers read from then on.
void arbeitskopie_schreiben(Session& session);
/// Writes such a copy at another place, which nothing has as its name, or an own copy that
/// working_path(session) is not. It counts as the session's own; base and suffix stay.
void write_working_copy(Session& session, const std::string& target);

/// Turns the latest working copy into the graphic file itself and deletes the copies; the session
/// then has no file loaded, also when a copy cannot be deleted and is named by the FatalError.
/// `target` is the file to write, usually the graphic file.
void endfassung_schreiben(Session& session, const std::string& target);
void endfassung_schreiben(Session& session);
/// Writes the final form of the latest working copy, which may itself be the target. Copies and
/// session stay.
void write_final_form(Session& session, const std::string& target);

/// The session has no file loaded any more; its commands are disabled.
void close_document(Session& session);

}  // namespace veldra
