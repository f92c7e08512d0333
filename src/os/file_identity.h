#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace veldra {

/// Which file a name stands for, so that one put in its place later is told from it. Names and
/// contents are not looked at: another file has another number, size or time of change.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    std::uint64_t size = 0;
    std::int64_t modified_ns = 0;
    bool operator==(const FileIdentity&) const = default;
};

/// What has that name at present; a link counts as itself. None if nothing has it.
[[nodiscard]] std::optional<FileIdentity> identity_of(const std::string& path);

}  // namespace veldra
