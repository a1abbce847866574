#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace sonnel {

/// The files of a song, found once where the song is named.
struct FileBrano {
    std::string base;                          ///< path without extension, as the song was named
    std::optional<std::filesystem::path> lyk;  ///< as spelled on disk; nothing when it is missing
    std::optional<std::filesystem::path> mid;
};

/// Looks for base + ".LYK" and base + ".MID", the letter case of the names aside.
[[nodiscard]] FileBrano TrovaFileBrano(std::string base);

}  // namespace sonnel
