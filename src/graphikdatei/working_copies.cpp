#include "graphikdatei/working_copies.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "os/file_names.h"
#include "os/files.h"
#include "text/fatal_error.h"

namespace veldra {

namespace {

/// The first of "BASE", "BASE-2", "BASE-3" ... whose path with the suffix will do.
template <typename Suits>
std::string first_base(const std::string& base, std::string_view suffix, const Suits& suits) {
    std::string number;
    for (int i = 2;; ++i) {
        std::string numbered = with_room_for(base, number.size() + suffix.size()) + number;
        if (suits(numbered + std::string(suffix))) {
            return numbered;
        }
        number = "-" + std::to_string(i);
    }
}

}  // namespace

WorkingCopyName next_working_copy(const Session& session) {
    const std::string suffix = session.arbeitsdatei_suffix == "_1" ? "_2" : "_1";
    const auto suits = [&](const std::string& path) {
        return !identity_of(path) || is_own_copy(session, path);
    };
    return {first_base(session.arbeitsdatei_basis, suffix, suits), suffix};
}

bool is_own_copy(const Session& session, const std::string& path) {
    const std::optional<FileIdentity> present = identity_of(path);
    return present && std::any_of(session.arbeitskopien.begin(), session.arbeitskopien.end(),
                                  [&](const OwnCopy& copy) {
                                      return copy.path == path && copy.identity == *present;
                                  });
}

void count_as_own_copy(Session& session, const std::string& path) {
    std::erase_if(session.arbeitskopien, [&](const OwnCopy& copy) { return copy.path == path; });
    if (const std::optional<FileIdentity> present = identity_of(path)) {
        session.arbeitskopien.push_back({path, *present});
    }
}

void remove_own_copies(Session& session) {
    remove_copies(std::exchange(session.arbeitskopien, {}));
}

void remove_copies(const std::vector<OwnCopy>& copies) {
    std::optional<FatalError> failure;
    for (const OwnCopy& copy : copies) {
        try {
            if (identity_of(copy.path) == copy.identity) {
                remove_file(copy.path);
            }
        } catch (const FatalError& error) {
            failure = failure ? failure : error;
        }
    }
    if (failure) {
        throw FatalError(*failure);
    }
}

void keep_copies_aside(Session& session) {
    const auto folder = std::make_shared<const TemporaryFolder>();
    const std::string& file = session.graphikdatei;
    session.arbeitsordner = folder;
    session.arbeitsdatei_basis = folder->path() + "/" + file.substr(file.rfind('/') + 1);
}

std::string unused_base(const std::string& folder, const std::string& name) {
    return first_base(folder + "/" + name, "_1",
                      [](const std::string& path) { return !identity_of(path); });
}

}  // namespace veldra
