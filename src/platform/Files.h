#pragma once

#include "platform/Result.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace sonnel {

/// Paths are UTF-8 in program text and std::filesystem::path at the doors.
[[nodiscard]] std::filesystem::path PathFromUtf8(std::string_view text);
[[nodiscard]] std::string Utf8FromPath(const std::filesystem::path& path);

/// Finds a regular file by its path: the exact name first, then its name in any letter case within
/// its directory (a name with the exact stem before others, then in byte order).
[[nodiscard]] std::optional<std::filesystem::path> FindFile(const std::filesystem::path& path);

/// The whole content of a regular file. The error's number is the system's and its text the
/// system's reason.
[[nodiscard]] Result<std::string> ReadFile(const std::filesystem::path& path);

/// Replaces a file's content: written beside it, flushed, renamed, so that a crash at any moment
/// leaves the old or the new file whole. On failure the old file stays and nothing is left behind.
[[nodiscard]] std::optional<Error> WriteFileAtomically(const std::filesystem::path& path,
                                                       std::string_view content);

}  // namespace sonnel
