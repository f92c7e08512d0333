#include "settings/start_profile.h"

#include <cstddef>
#include <string_view>

#include "model/session.h"
#include "settings/profile_file.h"
#include "text/codepage.h"

namespace veldra {

namespace {

constexpr std::string_view start_section = "START";
constexpr std::string_view confirmation_key = "Bestaetigung";
constexpr std::string_view recent_section = "GRAPHIKDATEIEN";

std::string recent_key(std::size_t index) {
    return "Graphikdatei_" + std::to_string(index);
}

std::string recent_path(const ProfileFile& file, std::size_t index) {
    return to_utf8(file.get(recent_section, recent_key(index)));
}

}  // namespace

void start_lesen(Session& session, const std::string& path) {
    const ProfileFile file = ProfileFile::load(path, session.start_ungelesen);
    session.bestaetigung = trim(file.get(start_section, confirmation_key));
    for (std::size_t i = 1; i < session.zuletzt_datei.size(); ++i) {
        session.zuletzt_datei[i] = recent_path(file, i);
    }
}

void start_schreiben(const Session& session, const std::string& path) {
    if (session.start_ungelesen) {
        throw unread_profile(path);
    }
    ProfileFile file = ProfileFile::load_for_update(path);
    file.set(start_section, confirmation_key, session.bestaetigung);
    std::size_t place = 1;
    for (std::size_t i = 1; i < session.zuletzt_datei.size(); ++i) {
        const std::string& recent = session.zuletzt_datei[i];
        file.set(recent_section, recent_key(place), from_utf8(recent));
        if (!recent.empty() && recent_path(file, place) == recent) {
            ++place;
        }
    }
    for (; place < session.zuletzt_datei.size(); ++place) {
        file.set(recent_section, recent_key(place), "");
    }
    file.save(path);
}

}  // namespace veldra
