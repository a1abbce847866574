#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace sonnel {

/// Paths are UTF-8 in program text and std::filesystem::path at the doors.
[[nodiscard]] std::filesystem::path PathFromUtf8(std::string_view text);
[[nodiscard]] std::string Utf8FromPath(const std::filesystem::path& path);
/// The path's last part.
[[nodiscard]] std::string Utf8FileName(const std::filesystem::path& path);

/// A path without its last four characters, whatever they are: the program's files have a dot and
/// three letters there.
[[nodiscard]] std::string WithoutExtension(std::string_view path);

/// Whether a path holds a NUL character, which the system would take for its end.
[[nodiscard]] bool HasNul(const std::filesystem::path& path);

/// Whether a name stays in the directory it is looked up in: not empty, no separator, not "." or
/// "..", no NUL character.
[[nodiscard]] bool IsPlainName(std::string_view name);

}  // namespace sonnel
