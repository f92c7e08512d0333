#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "samples.h"

namespace {

void write_file(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

}  // namespace

/// Writes the sample files into a folder, which must exist.
int main(int argc, char** argv) {
    if (argc != 3 || std::strcmp(argv[1], "--out") != 0) {
        std::fputs("usage: netzsim --out FOLDER\n", stderr);
        return 2;
    }
    try {
        using namespace veldra::netzsim;
        const std::filesystem::path folder = argv[2];
        write_file(folder / "ve_dhdn.dat", dhdn_sample());
        write_file(folder / "ve_etrs89.dat", etrs89_sample());
        write_file(folder / "ve_lokal.dat", local_sample());
        write_file(folder / "ve_ohne_netzteil.dat", sample_without_part());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "netzsim: %s\n", error.what());
        return 1;
    }
    return 0;
}
