#pragma once

#include <memory>
#include <string>
#include <utility>

#include "commands/read_only_file.h"
#include "graphikdatei/hand_work.h"
#include "os/file_lock.h"
#include "os/files.h"

namespace veldra {

/// Keeps an eye on the open graphic file: marks it for other copies of the program, and notices
/// when another program has rewritten it.
class FileWatch {
 public:
    /// Marks a file that is to be opened; the open file keeps its mark until `follow`. False if
    /// another copy of the program has it open.
    [[nodiscard]] bool reserve(const std::string& path);
    /// Gives up what `reserve` has marked.
    void give_up();
    /// Who has the file open that could not be reserved; "" if that is not known.
    [[nodiscard]] std::string holder() const;

    /// The file is about to be read: from now on this is the one to watch.
    void follow(const std::string& path);
    /// Keeps what the user has put into the file by hand, as it was read.
    void keep(HandWork as_read) { as_read_ = std::move(as_read); }
    [[nodiscard]] const HandWork& as_read() const { return as_read_; }
    /// The file has been left.
    void leave();

    /// Whether the open file can be written back at all.
    [[nodiscard]] ReadOnlyFile& read_only() { return read_only_; }

    /// The file has been changed since it was read, by anyone. One that is gone counts as
    /// unchanged.
    [[nodiscard]] bool rewritten() const;
    /// The same, asked at intervals: only if the file has stayed as it is since the last question,
    /// since another program may still be writing.
    [[nodiscard]] bool rewritten_and_at_rest();
    /// Takes the file as it is now for the one that was read.
    void accept();
    /// Takes that back: what counts is the file that was read.
    void withdraw_acceptance();

 private:
    std::string path_;  ///< "" if there is none to watch
    FileStamp read_stamp_;
    FileStamp stamp_;  ///< of the file that counts as known
    FileStamp seen_;   ///< of the rewritten file when it was last asked for
    HandWork as_read_;
    ReadOnlyFile read_only_;
    std::string reserved_path_;
    std::unique_ptr<FileLock> lock_;
    std::unique_ptr<FileLock> reserved_;
};

}  // namespace veldra
