#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "boundaries.h"

namespace {

int usage() {
    std::fputs("usage: grenzgen --out FOLDER | grenzgen VERTICES -o FILE\n", stderr);
    return 2;
}

bool write_file(const std::string& path, const veldra::BoundaryPlan& plan) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    bool good = file != nullptr;
    if (good) {
        veldra::write_boundaries(
            [&](std::string_view piece) {
                good = good && std::fwrite(piece.data(), 1, piece.size(), file) == piece.size();
            },
            plan);
        good = std::fclose(file) == 0 && good;
    }
    if (!good) {
        std::perror(path.c_str());
    }
    return good;
}

}  // namespace

/// Writes the boundary files of the samples into a folder, or a large boundary file.
int main(int argc, char** argv) {
    if (argc == 3 && std::string_view(argv[1]) == "--out") {
        const std::string folder = argv[2];
        veldra::BoundaryPlan dhdn;
        dhdn.centre_rechts = 257550000;
        dhdn.centre_hoch = 562450000;
        veldra::BoundaryPlan etrs89;
        etrs89.centre_rechts = 3236950000;
        etrs89.centre_hoch = 561700000;
        const bool good = write_file(folder + "/verwgrenz_dhdn.dat", dhdn) &&
                          write_file(folder + "/verwgrenz_etrs89.dat", etrs89);
        return good ? 0 : 1;
    }
    if (argc != 4 || std::string_view(argv[2]) != "-o") {
        return usage();
    }
    char* end = nullptr;
    const long vertices = std::strtol(argv[1], &end, 10);
    if (*end != '\0' || vertices < 1 || vertices > 100'000'000) {
        return usage();
    }
    return write_file(argv[3], veldra::large_boundary_plan(vertices)) ? 0 : 1;
}
