#pragma once

#include <string>

namespace veldra {

struct Session;

// What a plain start keeps in the profile besides the settings: whether the logo is to be
// confirmed, and the recent files. A start with a project profile neither reads nor writes it.

/// Takes `bestaetigung` and the recent files; what is missing becomes "".
void start_lesen(Session& session, const std::string& path);

/// Writes `bestaetigung` and the recent files and leaves what else the file holds as it is. A path
/// that the file would not give back as it is (a character that Windows-1252 lacks, more than 255
/// bytes, blanks or quotes at its ends) is left out, and those behind it move up. Throws FatalError
/// when the file cannot be written, or could not be read at the start; the old one stands then.
void start_schreiben(const Session& session, const std::string& path);

}  // namespace veldra
