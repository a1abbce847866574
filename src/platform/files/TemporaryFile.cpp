#include "platform/files/TemporaryFile.h"

#include "platform/SystemError.h"

#include <string>
#include <utility>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace sonnel {
namespace fs = std::filesystem;
namespace {

fs::path NumberedName(const fs::path& directory, int number) {
    return directory / (".sonnel-" + std::to_string(number) + ".tmp");
}

#ifdef _WIN32

bool RemoveLeftover(const fs::path& /*path*/) {
    return false;
}

#else

/// Whether the open file is the one that has this name now.
bool HasName(int handle, const fs::path& path) {
    struct stat opened {};
    struct stat named {};
    return fstat(handle, &opened) == 0 && lstat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/// Removes a temporary file that is not locked: the process that wrote it has ended.
bool RemoveLeftover(const fs::path& path) {
    const int handle = open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0) {
        return false;
    }
    // While it is locked, its name cannot pass to another file.
    const bool removed =
        flock(handle, LOCK_EX | LOCK_NB) == 0 && HasName(handle, path) && unlink(path.c_str()) == 0;
    (void)close(handle);
    return removed;
}

#endif

/// Removes leftovers by this name and the names that follow it; false when it is in use.
bool RemoveLeftovers(const fs::path& directory, int number) {
    int next = number;
    while (RemoveLeftover(NumberedName(directory, next))) {
        ++next;
    }
    return next > number;
}

}  // namespace

TemporaryFile::~TemporaryFile() {
    if (file_ != nullptr) {
        (void)std::fclose(file_);
    }
    if (!path_.empty()) {
        std::error_code error;
        fs::remove(path_, error);
    }
#ifndef _WIN32
    if (lock_ >= 0) {
        (void)close(lock_);
    }
#endif
}

/// False when another process has already taken the new file for a leftover.
bool TemporaryFile::Lock([[maybe_unused]] const fs::path& path) {
#ifndef _WIN32
    // A descriptor of its own: the lock outlives the closing of the file.
    lock_ = fcntl(fileno(file_), F_DUPFD_CLOEXEC, 0);
    const bool taken = flock(lock_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (taken || !HasName(fileno(file_), path)) {
        (void)std::fclose(std::exchange(file_, nullptr));
        (void)close(std::exchange(lock_, -1));
        return false;
    }
#endif
    return true;
}

int TemporaryFile::Open(const fs::path& path) {
    errno = 0;
    // "x": never a file that exists already, which is another writer's or was left by a crash.
#ifdef _WIN32
    file_ = _wfopen(path.c_str(), L"wbx");
#else
    file_ = std::fopen(path.c_str(), "wbxe");
#endif
    if (file_ == nullptr) {
        return LastError();
    }
    if (!Lock(path)) {
        return EEXIST;
    }
    path_ = path;
    return 0;
}

int TemporaryFile::Create(const fs::path& directory) {
    constexpr int MaxAttempts = 10000;
    for (int attempt = 0; attempt < MaxAttempts; ++attempt) {
        int error = Open(NumberedName(directory, attempt));
        if (error == EEXIST && RemoveLeftovers(directory, attempt)) {
            error = Open(NumberedName(directory, attempt));
        }
        if (error != EEXIST) {
            return error;
        }
    }
    return EEXIST;
}

int TemporaryFile::CreateAs(const fs::path& path) {
    std::error_code error;
    fs::remove(path, error);
    return error ? error.value() : Open(path);
}

int TemporaryFile::ResembleFile(const fs::path& replaced) const {
#ifdef _WIN32
    std::error_code error;
    const fs::file_status status = fs::status(replaced, error);
    if (fs::exists(status)) {
        fs::permissions(path_, status.permissions(), error);
    }
    return error.value();
#else
    struct stat status {};
    if (stat(replaced.c_str(), &status) != 0) {
        return errno == ENOENT ? 0 : errno;
    }
    // By the open file: its name may stand for another by now. The owner first, for a change of it
    // takes permissions away.
    constexpr mode_t Permissions = 07777;
    const int handle = fileno(file_);
    if (fchown(handle, status.st_uid, status.st_gid) != 0) {
        (void)!fchown(handle, static_cast<uid_t>(-1), status.st_gid);
    }
    return fchmod(handle, status.st_mode & Permissions) == 0 ? 0 : LastError();
#endif
}

int TemporaryFile::Write(std::string_view content) {
    errno = 0;
    return std::fwrite(content.data(), 1, content.size(), file_) == content.size() ? 0
                                                                                   : LastError();
}

int TemporaryFile::FlushAndClose() {
    errno = 0;
    bool flushed = std::fflush(file_) == 0;
#ifndef _WIN32
    flushed = flushed && fsync(fileno(file_)) == 0;
#endif
    const int flushError = flushed ? 0 : LastError();
    errno = 0;
    const bool closed = std::fclose(file_) == 0;
    file_ = nullptr;
    if (flushError != 0) {
        return flushError;
    }
    return closed ? 0 : LastError();
}

int TemporaryFile::SetTime(fs::file_time_type time) const {
    std::error_code error;
    fs::last_write_time(path_, time, error);
    return error.value();
}

int TemporaryFile::RenameTo(const fs::path& target) {
    std::error_code error;
    fs::rename(path_, target, error);
    if (!error) {
        path_.clear();
    }
    return error.value();
}

}  // namespace sonnel
