#pragma once

#include <filesystem>
#include <functional>
#include <string_view>
#include <system_error>

namespace sonnel {

/// What an entry of a directory is, links followed.
enum class EntryKind {
    File,  ///< a regular file
    Directory,
    DirectoryLink,  ///< a link to a directory: a walk that follows it may go in circles
    Other,          ///< also a link that leads nowhere
    Unknown,        ///< cannot be examined
};

/// An entry's name (UTF-8 where the system has names in another encoding) and kind. The name is
/// valid during the call only.
using DirectoryVisitor = std::function<void(std::string_view name, EntryKind kind)>;

/// Calls `visit` for each entry but "." and "..", in no order. Returns why the directory could not
/// be listed, or not to its end.
[[nodiscard]] std::error_code ListDirectory(const std::filesystem::path& directory,
                                            const DirectoryVisitor& visit);

/// Whether two paths name one directory, also by different spellings or through links.
[[nodiscard]] bool SameDirectory(const std::filesystem::path& a, const std::filesystem::path& b);

}  // namespace sonnel
