#pragma once

#include <functional>
#include <string>

#include "graphikdatei/hand_work_transfer.h"
#include "model/session.h"

namespace veldra {

/// The hand's work on the open file as the session stands: that of the part in view and of what
/// belongs to the whole file from memory, that of the other parts from the latest working copy, or
/// from `as_read` (the file when it was read) while there is none. `work` follows. Throws
/// FatalError when the working copy cannot be read.
[[nodiscard]] HandWork current_hand_work(const Session& session, const HandWork& as_read,
                                         LongWork* work);

/// Writes the graphic file `source` with that hand's work into the next working copy, which the
/// readers read from then on. Cannot be given up. Throws FatalError, and then nothing has changed.
TransferReport transfer_into_working_copy(Session& session, const HandWork& hand_work,
                                          const std::string& source);

/// Takes the hand's work of another graphic file over into the open one: where both have some, that
/// of the other file counts. It is then to be read anew. Throws FatalError when a file cannot be
/// read or written; the session stands as before.
TransferReport take_over_from(Session& session, const std::string& path);

}  // namespace veldra
