#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

namespace veldra {

/// A folder of its own for one test, removed with all that is in it.
class TemporaryFolder {
 public:
    TemporaryFolder()
        : path_(testing::TempDir() + "veldra_settings_" + std::to_string(std::random_device{}())) {
        std::filesystem::create_directories(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string operator/(const std::string& name) const {
        return path_ + "/" + name;
    }

    /// Writes a file, with the folders above it, and gives its path.
    [[nodiscard]] std::string file(const std::string& name, const std::string& bytes) const {
        std::string whole = *this / name;
        std::filesystem::create_directories(std::filesystem::path(whole).parent_path());
        std::ofstream(whole, std::ios::binary) << bytes;
        return whole;
    }

 private:
    std::string path_;
};

inline std::string file_bytes(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace veldra
