#pragma once

#include <string>

namespace veldra {

/// The system's folders that the program looks into, without a trailing separator. Paths are the
/// system's bytes.
struct SystemFolders {
    std::string documents;  ///< the user's documents; "" if they cannot be found
    std::string windows;    ///< the user's configuration folder stands for the Windows directory
    std::string program;    ///< where the program itself stands
};

/// The system folder of a number: 5 is the documents folder; "" for any other, or if there is none.
[[nodiscard]] std::string sonderordner(const SystemFolders& folders, int code);

/// "Kelvara" in the documents folder; just "Kelvara" if that cannot be found.
[[nodiscard]] std::string user_folder(const SystemFolders& folders);
/// VELDRA.INI in the user's folder.
[[nodiscard]] std::string plain_profile(const SystemFolders& folders);
/// VELDRA.INI at the place where older installations kept it.
[[nodiscard]] std::string old_profile(const SystemFolders& folders);
/// The profile of a project: `befehlszeile` in the user's folder or, if it is not there, in the
/// folder that stands for the Windows directory, whether it is there or not.
[[nodiscard]] std::string project_profile(const SystemFolders& folders,
                                          const std::string& befehlszeile);
/// VELDRA.VRS in the program's folder.
[[nodiscard]] std::string version_file(const SystemFolders& folders);

/// V_NEUES.HLP in the program's folder: the news of the program.
[[nodiscard]] std::string news_file(const SystemFolders& folders);

/// What the logo says about the version, UTF-8: "Version erstellt am " and the date of the version
/// file, or "" without one.
[[nodiscard]] std::string version_text(const SystemFolders& folders);

/// Makes the user's folder ready for a plain start and gives the path of the plain profile. If that
/// is missing, its folder is created, and the profile of an older installation is copied there and
/// deleted at its old place once the copy exists. Throws FatalError when one of these steps fails.
std::string prepare_plain_profile(const SystemFolders& folders);

}  // namespace veldra
