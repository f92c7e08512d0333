#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "large_network.h"

namespace {

int usage() {
    std::fputs("usage: netzgross POINTS -o FILE [--ohne-ellipsen]\n", stderr);
    return 2;
}

}  // namespace

/// Writes a network for benchmarks.
int main(int argc, char** argv) {
    if (argc < 4 || argc > 5 || std::string_view(argv[2]) != "-o" ||
        (argc == 5 && std::string_view(argv[4]) != "--ohne-ellipsen")) {
        return usage();
    }
    char* end = nullptr;
    const long points = std::strtol(argv[1], &end, 10);
    if (*end != '\0' || points < 1 || points > 100'000'000) {
        return usage();
    }
    std::FILE* file = std::fopen(argv[3], "wb");
    bool good = file != nullptr;
    if (good) {
        const auto sink = [&](std::string_view piece) {
            good = good && std::fwrite(piece.data(), 1, piece.size(), file) == piece.size();
        };
        veldra::write_large_network(sink, points, argc == 4);
        good = std::fclose(file) == 0 && good;
    }
    if (!good) {
        std::perror(argv[3]);
        return 1;
    }
    return 0;
}
