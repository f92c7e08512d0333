#pragma once

#include <string>

namespace veldra {

/// Marks a file as open in this program, for other copies of it on this and other computers. The
/// mark is a hidden file beside it, locked as long as this object lives and deleted at the end. It
/// has the rights and the group of the file, so that whoever may read the file sees the lock. What
/// a crash leaves behind is not locked and so counts for nothing. Where no mark can be made (a
/// folder that cannot be written to, a file system without locks, a file of somebody else that has
/// this name) nobody is kept from anything.
class FileLock {
 public:
    explicit FileLock(const std::string& path);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// Another program has marked the file.
    [[nodiscard]] bool held_elsewhere() const { return held_elsewhere_; }
    /// Who has marked it, "name auf rechner" in UTF-8; "" if that is not known.
    [[nodiscard]] const std::string& holder() const { return holder_; }

    /// The file that marks `path`; the same for all paths that lead to one file.
    [[nodiscard]] static std::string mark_of(const std::string& path);

 private:
    bool take();
    bool take_new();
    bool take_present(int handle, bool writable);
    void sign() const;

    std::string path_;
    std::string mark_;
    std::string holder_;
    int handle_ = -1;
    bool held_elsewhere_ = false;
};

}  // namespace veldra
