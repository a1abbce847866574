#pragma once

#include "platform/Environment.h"

#include <string>

namespace sonnel {

/// Where the sound goes.
struct AudioDriver {
    enum class Kind { Device, Silence, File };
    Kind kind = Kind::Device;
    /// A device's sound system ("" for what the system offers), or a file's path in UTF-8.
    std::string name;
    bool operator==(const AudioDriver&) const = default;
};

/// Reads the setting AudioDriver or, when that is "", the environment variable SONNEL_AUDIO:
/// "none" is silence, "file:PATH" a file, any other text the name of a sound system.
[[nodiscard]] AudioDriver ChooseAudioDriver(const std::string& setting,
                                            const Environment& environment);

}  // namespace sonnel
