#pragma once

#include "song/FileBrano.h"

#include <filesystem>
#include <functional>
#include <vector>

namespace sonnel {

/// The songs among files and folders, the folders searched through: LYK files with what MID files
/// are beside them, and MIDI files without LYK file, whose words are not read yet. `continua` is
/// asked for each file; the search ends when it says no. Links to folders within a folder are not
/// followed.
[[nodiscard]] std::vector<FileBrano> RaccogliBrani(
    const std::vector<std::filesystem::path>& percorsi, const std::function<bool()>& continua);

}  // namespace sonnel
