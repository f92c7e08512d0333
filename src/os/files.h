#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veldra {

/// A file opened for reading from its first byte to its last. Throws FatalError, naming the file
/// and the system's reason, when it cannot be opened or read.
class InputFile {
 public:
    explicit InputFile(const std::string& path);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    /// Reads up to `size` bytes; 0 at the end of the file.
    std::size_t read(char* buffer, std::size_t size);
    /// Bytes of the file as it was opened; 0 if that is not known.
    [[nodiscard]] std::uint64_t size() const;

 private:
    std::string path_;
    int handle_ = -1;
};

/// Who has chosen the name of a file that is written.
enum class NamedBy : std::uint8_t {
    user,            ///< a link is followed; one that leads to no file is an error
    program,         ///< a file that is there is replaced; a link is an error
    program_as_new,  ///< nothing that has the name is touched; that is an error, too
};

/// Replaces a file as a whole: bytes go to a temporary file in the same folder, which takes the
/// place of `path` on `commit` (written through to the disk, then renamed). Until then, and when
/// anything fails, the file that was there stays as it was. Rights, group and owner are those of
/// the file that was there, as far as the user may give them, or of the file `rights_of`, which the
/// new one is a copy of; a new file without such a model has the usual rights. Temporary files that
/// a crash has left in the folder are deleted when they are older than a day. Failures throw
/// FatalError.
class ReplacedFile {
 public:
    explicit ReplacedFile(const std::string& path, NamedBy named_by = NamedBy::user,
                          const std::string& rights_of = "");
    ~ReplacedFile();
    ReplacedFile(const ReplacedFile&) = delete;
    ReplacedFile& operator=(const ReplacedFile&) = delete;

    void write(std::string_view bytes);
    void commit();

 private:
    void follow_links();
    void refuse_other_than_files() const;
    void open_temporary(const std::string& rights_of);
    void take_place();
    void flush();
    void discard();
    std::string given_path_;  ///< as messages name it
    std::string path_;
    std::string temporary_;
    std::string buffer_;
    int handle_ = -1;
    NamedBy named_by_ = NamedBy::user;
};

/// A folder for intermediate files, deleted with all it holds at the end. Throws FatalError.
class TemporaryFolder {
 public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }

 private:
    std::string path_;
};

/// True if the path can be opened for reading and is no folder.
[[nodiscard]] bool datei_vorhanden(const std::string& path);
/// True if the path leads to nothing; false also if that cannot be found out.
[[nodiscard]] bool is_missing(const std::string& path);
/// True if the path leads to something that is neither a regular file nor a folder: a pipe, a
/// socket, a device. What it gives can be read only once, if it ends at all.
[[nodiscard]] bool sonderdatei_vorhanden(const std::string& path);
/// True if the path, without a trailing separator, is a folder.
[[nodiscard]] bool ordner_vorhanden(const std::string& path);
/// Deletes a file if it exists; throws FatalError when it exists and cannot be deleted.
void remove_file(const std::string& path);
/// The folder for temporary files.
[[nodiscard]] std::string temporary_directory();
/// Creates a folder and those above it; throws FatalError when that fails.
void create_folder(const std::string& path);
/// The whole content of a file; throws FatalError.
[[nodiscard]] std::string read_whole_file(const std::string& path);
/// The same; none if there is no file of that name. Any other obstacle throws FatalError.
[[nodiscard]] std::optional<std::string> read_file_if_any(const std::string& path);
/// True if both paths exist and lead to one file.
[[nodiscard]] bool same_file(const std::string& a, const std::string& b);
/// The absolute form of a path, with the links in it left alone.
[[nodiscard]] std::string absolute_path(const std::string& path);
/// True if the user may change the file.
[[nodiscard]] bool file_writable(const std::string& path);
/// True if the user may create and replace files in the folder.
[[nodiscard]] bool folder_writable(const std::string& path);
/// To whom a file will no longer belong once it has been replaced.
struct OwnershipLoss {
    std::string owner;  ///< name of the user, UTF-8; "" if the owner stays
    std::string group;
    [[nodiscard]] bool any() const { return !owner.empty() || !group.empty(); }
};
/// What replacing the file would take from its owner and group, where that matters to others: in a
/// folder that a group may write to. Nothing if there is no such file or it cannot be replaced.
[[nodiscard]] OwnershipLoss ownership_loss(const std::string& path);
/// True if the user may put another file in the place of this one; where the path is a link, of the
/// file that it leads to.
[[nodiscard]] bool file_replaceable(const std::string& path);
/// The folder that a file lies in; "." for a name alone.
[[nodiscard]] std::string folder_of_file(const std::string& path);
/// Size and time of last change, to notice that a file has become another one; zeros if missing.
struct FileStamp {
    std::uint64_t size = 0;
    std::int64_t modified_ns = 0;
    bool operator==(const FileStamp&) const = default;
};
[[nodiscard]] FileStamp file_stamp(const std::string& path);

}  // namespace veldra
