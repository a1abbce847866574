#pragma once

#include "platform/Environment.h"

#include <filesystem>

namespace sonnel {

/// The karaoke directory when the settings name none: "Karaoke" beside the program where that
/// place can be written, else "sonnel/Karaoke" in the user's data directory. Ends in a separator
/// and may not exist.
[[nodiscard]] std::filesystem::path DirectoryKaraoke(const std::filesystem::path& dirProgramma,
                                                     bool scrivibile, const Environment& ambiente);

}  // namespace sonnel
