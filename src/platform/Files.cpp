#include "platform/Files.h"

#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <tuple>

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace sonnel {
namespace fs = std::filesystem;
namespace {

constexpr std::size_t ReadBlock = std::size_t{64} * 1024;

Error SystemError(int number) {
    return {number, std::generic_category().message(number)};
}

/// The last operation's error; one that set no number counts as an input/output error.
int LastError() {
    return errno != 0 ? errno : EIO;
}

std::FILE* OpenForReading(const fs::path& path) {
#ifdef _WIN32
    std::FILE* const file = _wfopen(path.c_str(), L"rb");
#else
    std::FILE* const file = std::fopen(path.c_str(), "rbe");
#endif
    if (file != nullptr) {
        // Callers read in blocks; a second buffer would only copy them.
        (void)std::setvbuf(file, nullptr, _IONBF, 0);
    }
    return file;
}

std::string WithLetters(const std::string& text, char first, char last, int distance) {
    std::string changed = text;
    for (char& letter : changed) {
        if (letter >= first && letter <= last) {
            letter = static_cast<char>(letter + distance);
        }
    }
    return changed;
}

/// The path with its extension in upper and in lower case.
std::array<fs::path, 2> UsualSpellings(const fs::path& path) {
    const std::string extension = Utf8FromPath(path.extension());
    std::array<fs::path, 2> spellings{path, path};
    spellings[0].replace_extension(PathFromUtf8(WithLetters(extension, 'a', 'z', 'A' - 'a')));
    spellings[1].replace_extension(PathFromUtf8(WithLetters(extension, 'A', 'Z', 'a' - 'A')));
    return spellings;
}

bool IsRegularFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

/// The best regular file in the path's directory whose name differs at most in letter case.
std::optional<fs::path> FindInAnyCase(const fs::path& path) {
    const fs::path directory = path.parent_path();
    const fs::path stem = path.stem();
    const std::string key = FoldCase(Utf8FromPath(path.filename()));
    const auto rank = [&](const fs::path& name) {
        return std::make_tuple(name.stem() != stem, name.native());
    };
    std::optional<fs::path> best;
    std::error_code error;
    fs::directory_iterator entry(directory.empty() ? fs::path(".") : directory, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        fs::path name = entry->path().filename();
        std::error_code unknown;
        if (FoldCase(Utf8FromPath(name)) == key && entry->is_regular_file(unknown) &&
            (!best || rank(name) < rank(*best))) {
            best = std::move(name);
        }
    }
    return best ? std::optional(directory / *best) : std::nullopt;
}

/// Where a chain of symbolic links ends, whether or not something is there.
Result<fs::path> LinkTarget(fs::path path) {
    constexpr int MaxLinks = 40;
    for (int links = 0; links < MaxLinks; ++links) {
        std::error_code error;
        if (!fs::is_symlink(fs::symlink_status(path, error))) {
            return path;
        }
        const fs::path target = fs::read_symlink(path, error);
        if (error) {
            return SystemError(error.value());
        }
        path = path.parent_path() / target;
    }
    return SystemError(ELOOP);
}

/// The permissions of the file to replace, unknown when there is none yet.
Result<fs::perms> ReplaceablePermissions(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) {
        return fs::perms::unknown;
    }
    if (error) {
        return SystemError(error.value());
    }
    if (!fs::is_regular_file(status)) {
        return SystemError(fs::is_directory(status) ? EISDIR : EINVAL);
    }
    constexpr fs::perms Writable =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    if ((status.permissions() & Writable) == fs::perms::none) {
        return SystemError(EACCES);
    }
#ifndef _WIN32
    if (access(path.c_str(), W_OK) != 0) {
        return SystemError(LastError());
    }
#endif
    return status.permissions();
}

/// A file beside the one to write, removed again unless it was renamed to it.
class TemporaryFile {
  public:
    TemporaryFile() = default;
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (file_ != nullptr) {
            (void)std::fclose(file_);
        }
        if (!path_.empty()) {
            std::error_code error;
            fs::remove(path_, error);
        }
    }

    /// Each operation returns 0 or the system's error number.
    int Create(const fs::path& directory);
    [[nodiscard]] int SetPermissions(fs::perms permissions) const;
    int Write(std::string_view content);
    int FlushAndClose();
    int RenameTo(const fs::path& target);

  private:
    std::FILE* file_ = nullptr;
    fs::path path_;
};

int TemporaryFile::Create(const fs::path& directory) {
    constexpr int MaxAttempts = 10000;
    for (int attempt = 0; attempt < MaxAttempts; ++attempt) {
        const fs::path candidate = directory / (".sonnel-" + std::to_string(attempt) + ".tmp");
        errno = 0;
        // "x": never a file that is there already, be it another writer's or one a crash left.
#ifdef _WIN32
        file_ = _wfopen(candidate.c_str(), L"wbx");
#else
        file_ = std::fopen(candidate.c_str(), "wbxe");
#endif
        if (file_ != nullptr) {
            path_ = candidate;
            return 0;
        }
        if (errno != EEXIST) {
            return LastError();
        }
    }
    return EEXIST;
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

int TemporaryFile::RenameTo(const fs::path& target) {
    std::error_code error;
    fs::rename(path_, target, error);
    if (!error) {
        path_.clear();
    }
    return error.value();
}

/// Makes a rename in the directory last through a power cut. The file is in place already, so a
/// system that cannot do this is no failure.
void FlushDirectory([[maybe_unused]] const fs::path& directory) {
#ifndef _WIN32
    const int handle = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle >= 0) {
        (void)fsync(handle);
        (void)close(handle);
    }
#endif
}

int Replace(const fs::path& target, fs::perms permissions, std::string_view content) {
    const fs::path directory = target.has_parent_path() ? target.parent_path() : fs::path(".");
    TemporaryFile file;
    int error = file.Create(directory);
    if (error == 0) {
        error = file.SetPermissions(permissions);
    }
    if (error == 0) {
        error = file.Write(content);
    }
    if (error == 0) {
        error = file.FlushAndClose();
    }
    if (error == 0) {
        error = file.RenameTo(target);
    }
    if (error == 0) {
        FlushDirectory(directory);
    }
    return error;
}

bool HasNul(const fs::path& path) {
    return path.native().find(fs::path::value_type{}) != fs::path::string_type::npos;
}

}  // namespace

fs::path PathFromUtf8(std::string_view text) {
#ifdef _WIN32
    return {std::u8string(text.begin(), text.end())};
#else
    return {text};
#endif
}

std::string Utf8FromPath(const fs::path& path) {
#ifdef _WIN32
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
#else
    return path.native();
#endif
}

bool IsPlainName(std::string_view name) {
#ifdef _WIN32
    constexpr std::string_view Forbidden("/\\:\0", 4);
#else
    constexpr std::string_view Forbidden("/\0", 2);
#endif
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(Forbidden) == std::string_view::npos;
}

std::optional<fs::path> FindFile(const fs::path& path) {
    if (HasNul(path)) {
        return std::nullopt;
    }
    if (IsRegularFile(path)) {
        return path;
    }
    // The usual spellings spare reading a directory of thousands of songs for each of them.
    for (const fs::path& spelling : UsualSpellings(path)) {
        if (IsRegularFile(spelling)) {
            return spelling;
        }
    }
    return FindInAnyCase(path);
}

Result<FileReader> FileReader::Open(const fs::path& path) {
    if (HasNul(path)) {
        return SystemError(EINVAL);
    }
    // Opening a pipe would wait for its writer, so the kind is looked at first.
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) {
        return SystemError(error ? error.value() : ENOENT);
    }
    if (error) {
        return SystemError(error.value());
    }
    if (!fs::is_regular_file(status)) {
        return SystemError(fs::is_directory(status) ? EISDIR : EINVAL);
    }
    errno = 0;
    std::FILE* const file = OpenForReading(path);
    return file != nullptr ? Result<FileReader>(FileReader(file)) : SystemError(LastError());
}

std::optional<Error> FileReader::Read(std::string& content, std::size_t size) {
    const std::size_t before = content.size();
    content.resize(before + size);
    errno = 0;
    const std::size_t got = std::fread(content.data() + before, 1, size, file_.get());
    const int error = std::ferror(file_.get()) != 0 ? LastError() : 0;
    content.resize(before + got);
    return error != 0 ? std::optional(SystemError(error)) : std::nullopt;
}

std::optional<Error> FileReader::ReadAll(std::string& content) {
    for (;;) {
        const std::size_t before = content.size();
        if (std::optional<Error> error = Read(content, ReadBlock)) {
            return error;
        }
        if (content.size() == before) {
            return std::nullopt;
        }
        if (content.size() > MaxFileSize) {
            return SystemError(EFBIG);
        }
    }
}

Result<std::string> ReadFile(const fs::path& path) {
    Result<FileReader> file = FileReader::Open(path);
    if (!file) {
        return file.error();
    }
    std::string content;
    if (std::optional<Error> error = file->ReadAll(content)) {
        return *error;
    }
    return content;
}

std::optional<Error> WriteFileAtomically(const fs::path& path, std::string_view content) {
    const auto failure = [&](int number) {
        return Error{number, "Can't write the file " + Utf8FromPath(path) + ": " +
                                 SystemError(number).text + "."};
    };
    if (HasNul(path)) {
        return failure(EINVAL);
    }
    const Result<fs::path> target = LinkTarget(path);
    if (!target) {
        return failure(target.error().number);
    }
    const Result<fs::perms> permissions = ReplaceablePermissions(*target);
    if (!permissions) {
        return failure(permissions.error().number);
    }
    const int error = Replace(*target, *permissions, content);
    return error != 0 ? std::optional(failure(error)) : std::nullopt;
}

}  // namespace sonnel
