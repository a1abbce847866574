#include "platform/files/Directory.h"

#include "platform/Paths.h"
#include "platform/Text.h"

#include <cerrno>
#include <memory>
#include <string>

#ifndef _WIN32
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#endif

namespace sonnel {
namespace fs = std::filesystem;

#ifdef _WIN32

namespace {

EntryKind KindOf(const fs::directory_entry& entry) {
    std::error_code error;
    const fs::file_status status = entry.status(error);
    if (error && status.type() != fs::file_type::not_found) {
        return EntryKind::Unknown;
    }
    if (fs::is_directory(status)) {
        return entry.is_symlink(error) ? EntryKind::DirectoryLink : EntryKind::Directory;
    }
    return fs::is_regular_file(status) ? EntryKind::File : EntryKind::Other;
}

}  // namespace

std::error_code ListDirectory(const fs::path& directory, const DirectoryVisitor& visit) {
    std::error_code error;
    fs::directory_iterator entry(directory.empty() ? fs::path(".") : directory, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        visit(Utf8FileName(entry->path()), KindOf(*entry));
    }
    return error;
}

#else

namespace {

struct Closer {
    void operator()(DIR* directory) const { (void)closedir(directory); }
};

/// What a link leads to, or an entry whose kind the file system does not tell with its name.
EntryKind Examine(DIR* directory, const char* name) {
    struct stat itself {};
    struct stat target {};
    const bool link = fstatat(dirfd(directory), name, &itself, AT_SYMLINK_NOFOLLOW) == 0 &&
                      S_ISLNK(itself.st_mode);
    if (fstatat(dirfd(directory), name, &target, 0) != 0) {
        return errno == ENOENT ? EntryKind::Other : EntryKind::Unknown;
    }
    if (S_ISREG(target.st_mode)) {
        return EntryKind::File;
    }
    if (S_ISDIR(target.st_mode)) {
        return link ? EntryKind::DirectoryLink : EntryKind::Directory;
    }
    return EntryKind::Other;
}

EntryKind KindOf(DIR* directory, const dirent& entry) {
    switch (entry.d_type) {
        case DT_REG:
            return EntryKind::File;
        case DT_DIR:
            return EntryKind::Directory;
        case DT_LNK:
        case DT_UNKNOWN:
            return Examine(directory, entry.d_name);
        default:
            return EntryKind::Other;
    }
}

std::error_code LastListingError() {
    return {errno, std::system_category()};
}

}  // namespace

std::error_code ListDirectory(const fs::path& directory, const DirectoryVisitor& visit) {
    // std::filesystem makes a path of each entry, which takes longer than reading it.
    const std::unique_ptr<DIR, Closer> open(opendir(directory.empty() ? "." : directory.c_str()));
    if (open == nullptr) {
        return LastListingError();
    }
    for (;;) {
        errno = 0;
        const dirent* const entry = readdir(open.get());
        if (entry == nullptr) {
            return errno != 0 ? LastListingError() : std::error_code();
        }
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            visit(name, KindOf(open.get(), *entry));
        }
    }
}

#endif

bool SameDirectory(const fs::path& a, const fs::path& b) {
    // An empty last part stands for the separator at the end.
    const auto key = [](const fs::path& directory) {
        return FoldCase(Utf8FromPath(directory / ""));
    };
    std::error_code error;
    return key(a) == key(b) || fs::equivalent(a, b, error);
}

}  // namespace sonnel
