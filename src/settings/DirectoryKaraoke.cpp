#include "settings/DirectoryKaraoke.h"

namespace sonnel {
namespace {

/// The user's data directory; empty when the environment names none.
std::filesystem::path DirectoryDati(const Environment& ambiente) {
    if (const auto dati = NamedDirectory(ambiente, "XDG_DATA_HOME")) {
        return *dati;
    }
    const auto casa = NamedDirectory(ambiente, "HOME");
    return casa ? *casa / ".local" / "share" : std::filesystem::path();
}

}  // namespace

std::filesystem::path DirectoryKaraoke(const std::filesystem::path& dirProgramma, bool scrivibile,
                                       const Environment& ambiente) {
    const std::filesystem::path dati = DirectoryDati(ambiente);
    const bool accanto = scrivibile || dati.empty();
    return (accanto ? dirProgramma : dati / "sonnel") / "Karaoke" / "";
}

}  // namespace sonnel
