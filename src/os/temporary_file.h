#pragma once

#include <string>

#include <sys/types.h>

namespace veldra {

/// Creates a file beside `path` under a name of its own that is told from all others, and gives its
/// descriptor; -1 with errno on failure. `name` becomes its path.
[[nodiscard]] int create_temporary_beside(const std::string& path, mode_t mode, std::string& name);

/// Deletes from the folder of `path` what writers that never came to their end have left there: the
/// user's own temporary files of this program that nobody has changed for a day.
void remove_left_temporaries_beside(const std::string& path);

}  // namespace veldra
