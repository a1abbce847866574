#include "player/window/RigaComando.h"

#include "platform/Paths.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <utility>

namespace sonnel {
namespace {

constexpr std::string_view EstensioniBrano = ".mid.lyk";
constexpr std::size_t LunghezzaEstensione = 4;

}  // namespace

std::string SenzaVirgolette(std::string riga) {
    if (!riga.starts_with('"')) {
        return riga;
    }
    riga.erase(0, 1);
    if (!riga.empty()) {
        riga.pop_back();
    }
    return riga;
}

std::string BranoDaRiga(std::string riga) {
    if (riga.starts_with('\'')) {
        riga.erase(0, 1);
    }
    if (riga.ends_with('\'')) {
        riga.pop_back();
    }
    const std::size_t lunghezza = std::min(LunghezzaEstensione, riga.size());
    const std::string coda = riga.substr(riga.size() - lunghezza);
    // Shorter than an extension: keep it all, it can be a song's name.
    if (lunghezza == LunghezzaEstensione && EstensioniBrano.find(coda) != std::string_view::npos) {
        riga.resize(riga.size() - LunghezzaEstensione);
    }
    return riga;
}

FileBrano BranoNominato(const std::string& riga) {
    FileBrano brano = TrovaFileBrano(BranoDaRiga(riga));
    if (!brano.Completo()) {
        FileBrano altro = BranoDaFile(PathFromUtf8(riga));
        if (altro.Completo() || !altro.motivo.empty()) {
            return altro;
        }
    }
    return brano;
}

std::string PercorsoAssoluto(const std::string& riga) {
    std::string percorso = SenzaVirgolette(riga);
    std::error_code ignorato;
    // Once a directory stands before it, the apostrophe would look like part of the name; keep it
    // only if a file really has this name.
    if (percorso.starts_with('\'') && !std::filesystem::exists(PathFromUtf8(percorso), ignorato)) {
        percorso.erase(0, 1);
    }
    return percorso.empty()
               ? percorso
               : Utf8FromPath(std::filesystem::absolute(PathFromUtf8(percorso), ignorato));
}

}  // namespace sonnel
