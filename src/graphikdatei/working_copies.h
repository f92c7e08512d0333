#pragma once

#include <string>
#include <vector>

#include "model/session.h"

namespace veldra {

/// Working copies are files that the program makes beside the user's own. A file that has such a
/// name already and that this session has not written as it stands is another one's: it is never
/// read, overwritten or deleted, and the copy takes the next name ("NAME-2_1").

struct WorkingCopyName {
    std::string base;
    std::string suffix;  ///< "_1" or "_2"
    [[nodiscard]] std::string path() const { return base + suffix; }
};

/// The next working copy: the other one of "_1" and "_2", under a name that nothing has or that the
/// session's own earlier copy has.
[[nodiscard]] WorkingCopyName next_working_copy(const Session& session);

/// True if the session has written the file at `path` and nobody has changed it since.
[[nodiscard]] bool is_own_copy(const Session& session, const std::string& path);
/// The session has just written a working copy there.
void count_as_own_copy(Session& session, const std::string& path);
/// Deletes those copies that are as the session left them, and the session forgets them. Throws
/// FatalError for the first that cannot be deleted, after all have been tried.
void remove_own_copies(Session& session);
void remove_copies(const std::vector<OwnCopy>& copies);

/// From now on the working copies of the open file go to a private folder among the temporary
/// files, which is deleted when the file is left. For files in folders that take none. Throws
/// FatalError.
void keep_copies_aside(Session& session);

/// `folder`/`name`, or with "-2", "-3" ... behind it: the first base whose working copy "_1" does
/// not exist yet.
[[nodiscard]] std::string unused_base(const std::string& folder, const std::string& name);

}  // namespace veldra
