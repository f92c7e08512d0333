#pragma once

#include <cstdint>
#include <string>

#include "model/session.h"

namespace veldra {

/// Knows whether the open file can be written back and, if not, whether the user has changed
/// anything that would be lost.
class ReadOnlyFile {
 public:
    /// The file of the session is about to be read; its working copies go where there is room for
    /// them. Throws FatalError when there is none anywhere.
    void begin(Session& session);
    /// The file has been left.
    void end() { *this = {}; }

    [[nodiscard]] bool is_read_only() const { return read_only_; }

    /// What the session holds of file and part has just been read.
    void take_as_read(const Session& session);
    /// Something else is about to be read in its place.
    void note_changes(const Session& session);
    /// What is read next holds more than the file does.
    void count_as_changed() { changed_ = read_only_; }
    /// The user has changed something since the file was opened; counted for read-only files only.
    [[nodiscard]] bool has_changed(const Session& session);

 private:
    bool read_only_ = false;
    bool changed_ = false;
    std::uint64_t as_read_ = 0;  ///< stands for what has been read
};

}  // namespace veldra
