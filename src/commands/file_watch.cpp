#include "commands/file_watch.h"

namespace veldra {

bool FileWatch::reserve(const std::string& path) {
    give_up();
    if (lock_ && FileLock::mark_of(path_) == FileLock::mark_of(path)) {
        return true;
    }
    reserved_path_ = path;
    reserved_ = std::make_unique<FileLock>(path);
    return !reserved_->held_elsewhere();
}

void FileWatch::give_up() {
    reserved_.reset();
    reserved_path_.clear();
}

std::string FileWatch::holder() const {
    return reserved_ ? reserved_->holder() : std::string();
}

void FileWatch::follow(const std::string& path) {
    if (reserved_ && reserved_path_ == path) {
        lock_ = std::move(reserved_);
    } else if (!lock_ || FileLock::mark_of(path_) != FileLock::mark_of(path)) {
        lock_.reset();
        lock_ = std::make_unique<FileLock>(path);
    }
    give_up();
    path_ = path;
    read_stamp_ = file_stamp(path);
    stamp_ = read_stamp_;
}

void FileWatch::leave() {
    give_up();
    lock_.reset();
    path_.clear();
    stamp_ = {};
    as_read_ = {};
    read_only_.end();
}

bool FileWatch::rewritten() const {
    if (path_.empty()) {
        return false;
    }
    const FileStamp now = file_stamp(path_);
    return now != FileStamp{} && now != stamp_;
}

bool FileWatch::rewritten_and_at_rest() {
    const FileStamp before = seen_;
    seen_ = rewritten() ? file_stamp(path_) : FileStamp{};
    return seen_ != FileStamp{} && seen_ == before;
}

void FileWatch::accept() {
    stamp_ = file_stamp(path_);
}

void FileWatch::withdraw_acceptance() {
    stamp_ = read_stamp_;
}

}  // namespace veldra
