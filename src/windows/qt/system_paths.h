#pragma once

#include "settings/paths.h"

namespace veldra {

/// The folders as the desktop has them: the documents folder of the user's own setting, the user's
/// configuration folder, and the folder of the running program. Needs the application object.
[[nodiscard]] SystemFolders system_folders();

}  // namespace veldra
