#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include <unistd.h>

namespace veldra::testing_support {

/// A folder of its own for one test, removed with all it holds at the end.
class TempFolder {
 public:
    TempFolder() {
        static std::atomic<int> counter{0};
        path_ = std::filesystem::temp_directory_path() /
                ("veldra-test-" + std::to_string(::getpid()) + "-" + std::to_string(++counter));
        std::filesystem::create_directories(path_);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] std::string path(const std::string& name = "") const {
        return name.empty() ? path_.string() : (path_ / name).string();
    }

    /// Writes a file of these bytes and gives its path.
    [[nodiscard]] std::string file(const std::string& name, std::string_view bytes) const {
        std::ofstream out(path_ / name, std::ios::binary);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return path(name);
    }

 private:
    std::filesystem::path path_;
};

inline std::string file_bytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

}  // namespace veldra::testing_support
