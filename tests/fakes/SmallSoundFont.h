#pragma once

#include "platform/Environment.h"
#include "platform/audio/SoundFont.h"

#include <filesystem>

namespace sonnel::test {

/// The smallest of the usual SoundFonts that is there, so that the tests stay quick.
inline Result<std::filesystem::path> SmallSoundFont() {
    for (const auto& directory : SoundFontDirectories(ProcessEnvironment)) {
        if (std::filesystem::exists(directory / "TimGM6mb.sf2")) {
            return directory / "TimGM6mb.sf2";
        }
    }
    return FindSoundFont("", ProcessEnvironment, SoundFontDirectories(ProcessEnvironment));
}

}  // namespace sonnel::test
