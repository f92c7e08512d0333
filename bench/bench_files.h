#pragma once

#include <fstream>
#include <map>
#include <string>

#include "graphikdatei/header_pass.h"
#include "model/session.h"
#include "netzgross/large_network.h"
#include "os/files.h"

namespace veldra::bench {

/// Path of a generated graphic file with this many points; written once a run.
inline const std::string& large_file(long points) {
    static const TemporaryFolder folder;
    static std::map<long, std::string> files;
    std::string& path = files[points];
    if (path.empty()) {
        path = folder.path() + "/ve" + std::to_string(points) + ".dat";
        std::ofstream out(path, std::ios::binary);
        write_large_network(
            [&out](std::string_view bytes) {
                out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
            },
            points, true);
    }
    return path;
}

/// A session on that file; its header has been read.
inline void use_large_file(Session& session, long points) {
    session.graphikdatei = large_file(points);
    session.arbeitsdatei_basis = session.graphikdatei;
    kopf_lesen(session);
}

}  // namespace veldra::bench
