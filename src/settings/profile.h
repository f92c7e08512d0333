#pragma once

#include <string>

namespace veldra {

struct Session;

/// Takes the settings of a profile file: plain or project profile, only this one file is read. A
/// key that is missing or empty leaves the value in force. After a section its default helpers save
/// its values in their twins. The title lines' texts are not among the keys.
///
/// Throws FatalError ("Überlauf", with file, line and key) for a number beyond the range of its
/// type; the settings above that key have been taken then. A file that is there but cannot be read
/// leaves all values in force, and `profil_ungelesen` says so.
void profil_lesen(Session& session, const std::string& path);

/// Writes all keys that profil_lesen reads, and leaves what else the file holds as it is. Throws
/// FatalError when the file cannot be written, or when profil_lesen found one that it could not
/// read; the old one stands then.
void profil_schreiben(const Session& session, const std::string& path);

}  // namespace veldra
