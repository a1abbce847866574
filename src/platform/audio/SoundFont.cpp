#include "platform/audio/SoundFont.h"

#include "platform/Paths.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

namespace sonnel {

namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 8> kUsualNames = {
    "default-GM.sf2",     "default-GM.sf3", "FluidR3_GM.sf2",        "FluidR3_GM.sf3",
    "GeneralUser-GS.sf2", "TimGM6mb.sf2",   "MuseScore_General.sf3", "FluidR3Mono_GM.sf3"};

bool IsFile(const fs::path& path) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

Error NamedButMissing(const std::string& name, std::string_view where) {
    return {ENOENT, "The SoundFont \"" + name + "\" named by " + std::string(where) +
                        " does not exist. Name an existing SoundFont file (.sf2 or .sf3) there, "
                        "or remove the name to use the system's own."};
}

}  // namespace

std::vector<fs::path> SoundFontDirectories(const Environment& environment) {
    std::vector<fs::path> bases =
        NamedDirectories(environment, "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    if (const fs::path user = UserDataDirectory(environment); !user.empty()) {
        bases.insert(bases.begin(), user);
    }
    std::vector<fs::path> directories;
    for (const fs::path& base : bases) {
        for (const char* folder : {"sounds/sf2", "sounds/sf3", "soundfonts"}) {
            directories.push_back(base / folder);
        }
    }
    return directories;
}

Result<fs::path> FindSoundFont(const std::string& setting, const Environment& environment,
                               const std::vector<fs::path>& directories) {
    const std::array<std::pair<std::string, std::string_view>, 2> named = {
        std::pair(setting, "the setting SoundFont"),
        std::pair(environment("SONNEL_SOUNDFONT"), "the environment variable SONNEL_SOUNDFONT")};
    for (const auto& [name, where] : named) {
        if (!name.empty()) {
            const fs::path path = PathFromUtf8(name);
            return IsFile(path) ? Result<fs::path>(path) : NamedButMissing(name, where);
        }
    }
    for (const std::string_view name : kUsualNames) {
        for (const fs::path& directory : directories) {
            if (IsFile(directory / name)) {
                return directory / name;
            }
        }
    }
    return Error{ENOENT,
                 "No SoundFont was found. Install a General MIDI SoundFont (for instance the "
                 "package timgm6mb-soundfont or fluid-soundfont-gm), or name one in the "
                 "environment variable SONNEL_SOUNDFONT."};
}

}  // namespace sonnel
