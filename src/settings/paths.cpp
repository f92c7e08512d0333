#include "settings/paths.h"

#include <string_view>

#include "os/files.h"
#include "settings/profile_file.h"
#include "text/codepage.h"

namespace veldra {

namespace {

constexpr int documents_code = 5;
constexpr std::string_view profile_name = "VELDRA.INI";

std::string join(std::string folder, std::string_view name) {
    if (!folder.empty() && folder.back() != '/') {
        folder += '/';
    }
    return folder.append(name);
}

void copy_file(const std::string& from, const std::string& to) {
    ReplacedFile copy(to, NamedBy::user, from);
    copy.write(read_whole_file(from));
    copy.commit();
}

}  // namespace

std::string sonderordner(const SystemFolders& folders, int code) {
    return code == documents_code ? folders.documents : std::string();
}

std::string user_folder(const SystemFolders& folders) {
    return join(sonderordner(folders, documents_code), "Kelvara");
}

std::string plain_profile(const SystemFolders& folders) {
    return join(user_folder(folders), profile_name);
}

std::string old_profile(const SystemFolders& folders) {
    return join(folders.windows, profile_name);
}

std::string project_profile(const SystemFolders& folders, const std::string& befehlszeile) {
    std::string own = join(user_folder(folders), befehlszeile);
    return datei_vorhanden(own) ? own : join(folders.windows, befehlszeile);
}

std::string version_file(const SystemFolders& folders) {
    return join(folders.program, "VELDRA.VRS");
}

std::string news_file(const SystemFolders& folders) {
    return join(folders.program, "V_NEUES.HLP");
}

std::string version_text(const SystemFolders& folders) {
    const std::string datum = ProfileFile::load(version_file(folders)).get("VERSION", "Datum");
    return datum.empty() ? std::string() : "Version erstellt am " + to_utf8(trim(datum));
}

std::string prepare_plain_profile(const SystemFolders& folders) {
    std::string profile = plain_profile(folders);
    // One that only cannot be read at present is not to be replaced by an older one.
    if (!is_missing(profile)) {
        return profile;
    }
    const std::string folder = user_folder(folders);
    if (!ordner_vorhanden(folder)) {
        create_folder(folder);
    }
    const std::string old = old_profile(folders);
    if (datei_vorhanden(old)) {
        copy_file(old, profile);
        if (datei_vorhanden(profile)) {
            remove_file(old);
        }
    }
    return profile;
}

}  // namespace veldra
