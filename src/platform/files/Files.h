#pragma once

#include "platform/Paths.h"
#include "platform/Result.h"

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// The error of a file that could not be read or written: the system's number, and a sentence with
/// the file's name and the system's reason.
[[nodiscard]] Error ReadError(const std::filesystem::path& path, int number);
[[nodiscard]] Error WriteError(const std::filesystem::path& path, int number);

/// Finds a regular file by its path: the exact name first, then its name in any letter case within
/// its directory. A name with the exact stem comes before others, and of those one with the
/// extension in upper case, then in lower case; else byte order decides.
[[nodiscard]] std::optional<std::filesystem::path> FindFile(const std::filesystem::path& path);

/// A regular file open for reading.
class FileReader {
  public:
    /// Anything but a regular file (a directory, a pipe, a device) is an error. The error's number
    /// is the system's and its text the system's reason; the same holds for the operations below.
    static Result<FileReader> Open(const std::filesystem::path& path);

    /// Appends up to `size` bytes to `content`; nothing more is appended at the end of the file. On
    /// failure what was read until then is appended.
    std::optional<Error> Read(std::string& content, std::size_t size);
    /// Appends the rest of the file to `content`; likewise.
    std::optional<Error> ReadAll(std::string& content);

  private:
    struct Closer {
        void operator()(std::FILE* file) const { (void)std::fclose(file); }
    };
    explicit FileReader(std::FILE* file) : file_(file) {}

    std::unique_ptr<std::FILE, Closer> file_;
    /// What the file still holds, so that its end is known without a look for more. A file whose
    /// size reads as 0 (one the system makes up) is read to its end.
    std::size_t left_ = std::numeric_limits<std::size_t>::max();
};

/// Files longer than this are not read: the error is "file too large".
inline constexpr std::size_t MaxFileSize = std::size_t{1} << 30U;

/// The whole content of a regular file; errors as in FileReader.
[[nodiscard]] Result<std::string> ReadFile(const std::filesystem::path& path);

/// Replaces a file's content, or creates the file: a new file beside it is written, flushed and
/// renamed, so that even after a crash there is a complete file, the old or the new one. The
/// permissions of an existing file are kept, and a symbolic link stays one: its target is written.
/// A write-protected file is not replaced. On failure the old file stays and nothing is left
/// behind; the next write in that directory removes what a crash has left. The error's number is
/// the system's and its text a sentence with the file's name and the reason.
[[nodiscard]] std::optional<Error> WriteFileAtomically(const std::filesystem::path& path,
                                                       std::string_view content);

/// Names of files beside the one that is replaced.
struct ReplacementNames {
    std::string temporary;  ///< the new content until it is in place
    std::string backup;     ///< the old content until the new one is in place
};
/// Replaces the content of a file that is there, as WriteFileAtomically does, by way of two files
/// of these names. Older files of these names are removed first, and both are removed afterwards; a
/// crash may leave them.
[[nodiscard]] std::optional<Error> ReplaceFileWithBackup(const std::filesystem::path& path,
                                                         std::string_view content,
                                                         const ReplacementNames& names);

struct FileToCopy {
    std::filesystem::path from;
    std::filesystem::path to;
};
/// Copies the content and time stamp of files, replacing files as WriteFileAtomically does. All
/// copies are written and flushed before the first takes its place, in the order given: what
/// cannot be read or finds no room changes nothing. When one cannot take its place, those before it
/// that replaced no file are removed again. A crash leaves whole files only.
[[nodiscard]] std::optional<Error> CopyFilesAtomically(const std::vector<FileToCopy>& files);

}  // namespace sonnel
