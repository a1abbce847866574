#pragma once

#include <cstdio>
#include <filesystem>
#include <string_view>

namespace sonnel {

/// A file beside the one it is to become, removed again unless it was renamed to that. It is locked
/// for as long as it lives, so that what a crash leaves differs from a file that is being
/// written. What can fail returns 0 or the system's error number.
class TemporaryFile {
  public:
    TemporaryFile() = default;
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    /// Makes a new file in the directory, by a name that nothing has, and removes files there that
    /// others have left by such names when they were killed.
    int Create(const std::filesystem::path& directory);
    /// Makes a new file by this name, in place of a file that a crash left there.
    int CreateAs(const std::filesystem::path& path);
    /// Gives the open file the permissions of the one it will replace, if there is one, and its
    /// owner and group as far as this process may.
    [[nodiscard]] int ResembleFile(const std::filesystem::path& replaced) const;
    int Write(std::string_view content);
    /// After it what was written lasts through a power cut.
    int FlushAndClose();
    [[nodiscard]] int SetTime(std::filesystem::file_time_type time) const;
    /// The file is in its place afterwards and no longer temporary.
    int RenameTo(const std::filesystem::path& target);

  private:
    int Open(const std::filesystem::path& path);
    [[nodiscard]] bool Lock(const std::filesystem::path& path);

    std::FILE* file_ = nullptr;
    int lock_ = -1;
    std::filesystem::path path_;
};

}  // namespace sonnel
