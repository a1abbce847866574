// What writes files: the one writer and the one copier of the program.

#include "platform/SystemError.h"
#include "platform/files/Files.h"
#include "platform/files/TemporaryFile.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <initializer_list>

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace sonnel {
namespace fs = std::filesystem;
namespace {

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

/// Whether there is a file to replace, which can be written; an error when it cannot.
Result<bool> CanReplace(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) {
        return false;
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
    return true;
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

/// What a write to a path replaces.
struct Target {
    fs::path path;  ///< where the links end
    bool exists = false;

    [[nodiscard]] fs::path Directory() const {
        return path.has_parent_path() ? path.parent_path() : fs::path(".");
    }
};

Result<Target> TargetOf(const fs::path& path) {
    if (HasNul(path)) {
        return WriteError(path, EINVAL);
    }
    const Result<fs::path> target = LinkTarget(path);
    if (!target) {
        return WriteError(path, target.error().number);
    }
    const Result<bool> exists = CanReplace(*target);
    if (!exists) {
        return WriteError(path, exists.error().number);
    }
    return Target{*target, *exists};
}

/// Runs the steps up to the first that fails; the number of its error, else 0.
int InOrder(std::initializer_list<std::function<int()>> steps) {
    for (const auto& step : steps) {
        if (const int error = step(); error != 0) {
            return error;
        }
    }
    return 0;
}

/// A copy, whole and flushed, in the directory of the file that it will become.
class PreparedCopy {
  public:
    explicit PreparedCopy(const FileToCopy& copy) : copy_(copy) {}
    std::optional<Error> Prepare();
    std::optional<Error> TakePlace();
    /// Removes the copy from its place, unless it has replaced a file.
    void Withdraw() const;

  private:
    std::optional<Error> CopyContent(FileReader& source);

    const FileToCopy& copy_;
    Target target_;
    TemporaryFile file_;
};

std::optional<Error> PreparedCopy::CopyContent(FileReader& source) {
    constexpr std::size_t Block = std::size_t{64} * 1024;
    std::string content;
    do {
        content.clear();
        if (const std::optional<Error> error = source.Read(content, Block)) {
            return ReadError(copy_.from, error->number);
        }
        if (const int number = file_.Write(content); number != 0) {
            return WriteError(copy_.to, number);
        }
    } while (!content.empty());
    return std::nullopt;
}

std::optional<Error> PreparedCopy::Prepare() {
    Result<FileReader> source = FileReader::Open(copy_.from);
    if (!source) {
        return ReadError(copy_.from, source.error().number);
    }
    Result<Target> target = TargetOf(copy_.to);
    if (!target) {
        return target.error();
    }
    target_ = *std::move(target);
    if (const int number = InOrder({[&] { return file_.Create(target_.Directory()); },
                                    [&] { return file_.ResembleFile(target_.path); }});
        number != 0) {
        return WriteError(copy_.to, number);
    }
    if (std::optional<Error> error = CopyContent(*source)) {
        return error;
    }
    if (const int number = file_.FlushAndClose(); number != 0) {
        return WriteError(copy_.to, number);
    }
    std::error_code unknown;
    if (const auto time = fs::last_write_time(copy_.from, unknown); !unknown) {
        // Some file systems do not allow setting a time; the copy is good without it.
        (void)file_.SetTime(time);
    }
    return std::nullopt;
}

std::optional<Error> PreparedCopy::TakePlace() {
    if (const int number = file_.RenameTo(target_.path); number != 0) {
        return WriteError(copy_.to, number);
    }
    FlushDirectory(target_.Directory());
    return std::nullopt;
}

void PreparedCopy::Withdraw() const {
    if (!target_.exists) {
        std::error_code error;
        fs::remove(target_.path, error);
    }
}

/// Puts the file in its target's place and keeps the target under another name meanwhile, so that
/// there is a file by the target's name at every moment.
int TakePlaceWithBackup(TemporaryFile& file, const fs::path& target, const fs::path& backup) {
    std::error_code error;
    fs::remove(backup, error);
    if (!error) {
        fs::create_hard_link(target, backup, error);
        if (error) {
            // Not every file system supports links.
            fs::copy_file(target, backup, error);
        }
    }
    const int failure = error ? error.value() : file.RenameTo(target);
    fs::remove(backup, error);
    return failure;
}

}  // namespace

std::optional<Error> WriteFileAtomically(const fs::path& path, std::string_view content) {
    const Result<Target> target = TargetOf(path);
    if (!target) {
        return target.error();
    }
    TemporaryFile file;
    const int error = InOrder(
        {[&] { return file.Create(target->Directory()); },
         [&] { return file.ResembleFile(target->path); }, [&] { return file.Write(content); },
         [&] { return file.FlushAndClose(); }, [&] { return file.RenameTo(target->path); }});
    if (error != 0) {
        return WriteError(path, error);
    }
    FlushDirectory(target->Directory());
    return std::nullopt;
}

std::optional<Error> ReplaceFileWithBackup(const fs::path& path, std::string_view content,
                                           const ReplacementNames& names) {
    const Result<Target> target = TargetOf(path);
    if (!target) {
        return target.error();
    }
    if (!target->exists) {
        return WriteError(path, ENOENT);
    }
    const fs::path directory = target->Directory();
    TemporaryFile file;
    const int error = InOrder(
        {[&] { return file.CreateAs(directory / PathFromUtf8(names.temporary)); },
         [&] { return file.ResembleFile(target->path); }, [&] { return file.Write(content); },
         [&] { return file.FlushAndClose(); },
         [&] {
             return TakePlaceWithBackup(file, target->path, directory / PathFromUtf8(names.backup));
         }});
    if (error != 0) {
        return WriteError(path, error);
    }
    FlushDirectory(directory);
    return std::nullopt;
}

std::optional<Error> CopyFilesAtomically(const std::vector<FileToCopy>& files) {
    std::deque<PreparedCopy> copies;
    for (const FileToCopy& file : files) {
        if (std::optional<Error> error = copies.emplace_back(file).Prepare()) {
            return error;
        }
    }
    for (auto copy = copies.begin(); copy != copies.end(); ++copy) {
        if (std::optional<Error> error = copy->TakePlace()) {
            std::for_each(copies.begin(), copy, [](const PreparedCopy& c) { c.Withdraw(); });
            return error;
        }
    }
    return std::nullopt;
}

}  // namespace sonnel
