#pragma once

#include "platform/Environment.h"
#include "platform/Result.h"

#include <filesystem>
#include <string>
#include <vector>

namespace sonnel {

/// The directories where SoundFonts usually lie, the user's own ones first, after the data
/// directories the environment names.
[[nodiscard]] std::vector<std::filesystem::path> SoundFontDirectories(
    const Environment& environment);

/// The SoundFont to play with: the one the setting names (UTF-8, "" for none), else the one
/// SONNEL_SOUNDFONT names, else the first of the usual names found in `directories`. A named one
/// that is no file is an error, and so is finding none; the sentence tells what to do.
[[nodiscard]] Result<std::filesystem::path> FindSoundFont(
    const std::string& setting, const Environment& environment,
    const std::vector<std::filesystem::path>& directories);

}  // namespace sonnel
