#include "settings/DirectoryKaraoke.h"

#include "platform/Files.h"

namespace sonnel {
namespace {

/// The user's data directory; empty when the environment names none.
std::filesystem::path DirectoryDati(const EnvironmentLookup& ambiente) {
    const auto dati = ambiente("XDG_DATA_HOME");
    if (dati && PathFromUtf8(*dati).is_absolute()) {
        return PathFromUtf8(*dati);
    }
    const auto casa = ambiente("HOME");
    return casa && !casa->empty() ? PathFromUtf8(*casa) / ".local" / "share"
                                  : std::filesystem::path();
}

}  // namespace

std::filesystem::path DirectoryKaraoke(const std::filesystem::path& dirProgramma, bool scrivibile,
                                       const EnvironmentLookup& ambiente) {
    const std::filesystem::path dati = DirectoryDati(ambiente);
    const bool accanto = scrivibile || dati.empty();
    return (accanto ? dirProgramma : dati / "sonnel") / "Karaoke" / "";
}

}  // namespace sonnel
