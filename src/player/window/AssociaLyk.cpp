#include "player/window/AssociaLyk.h"

#include "platform/Paths.h"
#include "settings/basRegistry.h"

#include <string>

namespace sonnel {
namespace {

constexpr RegistryRoot Macchina = RegistryRoot::LocalMachine;
constexpr std::string_view Estensione = "SOFTWARE\\Classes\\.lyk";
constexpr std::string_view Estensioni = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Extensions";
const std::string_view Predefinito;  // the name of a key's default value

std::string Classe(std::string_view sotto = "") {
    return "SOFTWARE\\Classes\\LYKfile" + std::string(sotto);
}

/// Whether an installation has left an empty class, so that this start is to register the player.
bool DaAssociare(Registry& registro) {
    return LeggiChiave(registro, Macchina, Estensione, Predefinito) == RegistryValue{std::string()};
}

}  // namespace

void AssociaLyk(Registry& registro, Shell& shell, const std::filesystem::path& programma,
                const ScriviWinIni& scriviWinIni) {
    if (!DaAssociare(registro)) {
        return;
    }
    const auto crea = [&](std::string_view chiave) { CreaChiave(registro, Macchina, chiave); };
    const auto scrivi = [&](std::string_view chiave, std::string_view nome,
                            const std::string& testo) {
        ScriviChiave(registro, Macchina, chiave, nome, testo);
    };
    const std::string exe = Utf8FromPath(programma);

    crea(Estensione);
    scrivi(Estensione, Predefinito, "LYKfile");
    for (const char* chiave :
         {"", "\\Shell", "\\Shell\\open", "\\Shell\\open\\command", "\\DefaultIcon"}) {
        crea(Classe(chiave));
    }
    scrivi(Classe(), Predefinito, "Sonnel Karaoke");
    ScriviChiave(registro, Macchina, Classe(), "EditFlags", 0);
    scrivi(Classe(), "AlwaysShowExt", "");
    scrivi(Classe("\\Shell\\open\\command"), Predefinito, exe + " \"%1\"");
    scrivi(Classe("\\DefaultIcon"), Predefinito, exe);
    scrivi(Estensioni, ".lyk", exe + " ^.lyk");
    scriviWinIni("Extensions", "lyk", exe + " ^.lyk");
    shell.RegisterFileType(programma);
}

}  // namespace sonnel
