#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace sonnel {

/// What a freedesktop.org desktop has to know of the player and its files.
struct XdgFileType {
    std::string desktopEntry;
    std::string mimeType;  ///< a shared-mime-info package
    std::string icon;      ///< SVG
};

/// The player's own, from the resources.
[[nodiscard]] XdgFileType LykFileType();

/// The desktop entry with another program in it: an absolute path with any characters.
[[nodiscard]] std::string WithProgram(std::string_view desktopEntry,
                                      const std::filesystem::path& program);

/// Installs a file type with its program below the user's data directory. Files that are there
/// already are left alone, and what cannot be written is passed over. Returns whether anything
/// changed.
bool InstallXdgFileType(const XdgFileType& type, const std::filesystem::path& program,
                        const std::filesystem::path& dataDirectory);

/// Starts the desktop's programs that read what was installed; those it lacks are passed over. They
/// go on by themselves.
void UpdateXdgCaches(const std::filesystem::path& dataDirectory);

}  // namespace sonnel
