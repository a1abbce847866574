#include "settings/DirectoryKaraoke.h"

namespace sonnel {

std::filesystem::path DirectoryKaraoke(const std::filesystem::path& dirProgramma, bool scrivibile,
                                       const Environment& ambiente) {
    const std::filesystem::path dati = UserDataDirectory(ambiente);
    const bool accanto = scrivibile || dati.empty();
    return (accanto ? dirProgramma : dati / "sonnel") / "Karaoke" / "";
}

}  // namespace sonnel
