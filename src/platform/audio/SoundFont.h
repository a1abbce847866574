#pragma once

#include "platform/Environment.h"
#include "platform/Result.h"

#include <filesystem>
#include <string>
#include <vector>

namespace sonnel {

/// The directories where SoundFonts usually are, from the data directories of the environment, the
/// user's own first.
[[nodiscard]] std::vector<std::filesystem::path> SoundFontDirectories(
    const Environment& environment);

/// The SoundFont to play with: the one the setting names (UTF-8, "" for none), else the one
/// SONNEL_SOUNDFONT names, else the first of the usual names found in `directories`. When the
/// named one is not a file, or none is found, the error says what to do.
[[nodiscard]] Result<std::filesystem::path> FindSoundFont(
    const std::string& setting, const Environment& environment,
    const std::vector<std::filesystem::path>& directories);

}  // namespace sonnel
