#include "platform/TemporaryFile.h"

#include "platform/SystemError.h"

#include <string>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace sonnel {
namespace fs = std::filesystem;

TemporaryFile::~TemporaryFile() {
    if (file_ != nullptr) {
        (void)std::fclose(file_);
    }
    if (!path_.empty()) {
        std::error_code error;
        fs::remove(path_, error);
    }
}

int TemporaryFile::Open(const fs::path& path) {
    errno = 0;
    // "x": never a file that is there already, be it another writer's or one a crash left.
#ifdef _WIN32
    file_ = _wfopen(path.c_str(), L"wbx");
#else
    file_ = std::fopen(path.c_str(), "wbxe");
#endif
    if (file_ == nullptr) {
        return LastError();
    }
    path_ = path;
    return 0;
}

int TemporaryFile::Create(const fs::path& directory) {
    constexpr int MaxAttempts = 10000;
    for (int attempt = 0; attempt < MaxAttempts; ++attempt) {
        const int error = Open(directory / (".sonnel-" + std::to_string(attempt) + ".tmp"));
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

int TemporaryFile::SetPermissions(fs::perms permissions) const {
    std::error_code error;
    if (permissions != fs::perms::unknown) {
        fs::permissions(path_, permissions, error);
    }
    return error.value();
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
