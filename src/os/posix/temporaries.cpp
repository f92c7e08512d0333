#include "os/posix/temporaries.h"

#include <filesystem>
#include <set>
#include <system_error>

namespace veldra {

namespace {

struct List {
    std::recursive_mutex mutex;
    std::set<std::string> paths;
};

/// Never destroyed: a signal may come when the process is about to end.
List& list() {
    static auto* const only = new List;
    return *only;
}

}  // namespace

TemporariesHold::TemporariesHold() : lock_(list().mutex) {}

void TemporariesHold::add(const std::string& path) const {
    list().paths.insert(path);
}

void TemporariesHold::forget(const std::string& path) const {
    list().paths.erase(path);
}

void TemporariesHold::clear_away() const {
    for (const std::string& path : list().paths) {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    list().paths.clear();
}

}  // namespace veldra
