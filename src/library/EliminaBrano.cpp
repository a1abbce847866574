#include "library/EliminaBrano.h"

#include "library/Indice.h"
#include "platform/files/Directory.h"
#include "platform/files/Files.h"

#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

/// The files of a directory whose name is `nomeFile`, a dot and an extension.
std::vector<fs::path> FileDiNome(const fs::path& directory, std::string_view nomeFile) {
    std::vector<fs::path> trovati;
    (void)ListDirectory(directory, [&](std::string_view nome, EntryKind tipo) {
        const std::size_t punto = nome.rfind('.');
        const bool cartella = tipo == EntryKind::Directory || tipo == EntryKind::DirectoryLink;
        if (punto != std::string_view::npos && nome.substr(0, punto) == nomeFile && !cartella) {
            trovati.push_back(directory / PathFromUtf8(nome));
        }
    });
    return trovati;
}

/// The files that the player opens for a song: its words, and its music unless that belongs to a
/// song whose name differs in letter case only.
std::vector<fs::path> ParoleEMusica(const fs::path& directory, const std::string& nomeFile) {
    std::vector<fs::path> trovati;
    const auto parole = FindFile(directory / PathFromUtf8(nomeFile + ".lyk"));
    const auto musica = FindFile(directory / PathFromUtf8(nomeFile + ".mid"));
    if (parole) {
        trovati.push_back(*parole);
    }
    if (musica && FindFile(fs::path(*musica).replace_extension(".lyk")) == parole) {
        trovati.push_back(*musica);
    }
    return trovati;
}

}  // namespace

void EliminaFileBrano(const fs::path& directory, std::string_view nomeFile) {
    if (!IsPlainName(nomeFile)) {
        return;
    }
    // A song may have the same name as the index.
    const fs::path indice = PercorsoIndice(Utf8FromPath(directory)).filename();
    const auto elimina = [&indice](const std::vector<fs::path>& file) {
        for (const fs::path& percorso : file) {
            std::error_code ignorato;
            if (percorso.filename() != indice) {
                fs::remove(percorso, ignorato);
            }
        }
    };
    // List all files before deleting: afterwards the player might find another song's files for
    // this name.
    const auto aperti = ParoleEMusica(directory, std::string(nomeFile));
    elimina(FileDiNome(directory, nomeFile));
    elimina(aperti);
}

bool EliminaBrano(const Libreria& libreria, std::int16_t posizione) {
    const Brano brano = libreria.brani.Brani(posizione);
    const Answer risposta =
        libreria.msgBox.Show({"Delete the song \"" + brano.Titolo +
                                  "\"?\r\nWarning: both LYK and MID files will be removed!",
                              Icon::None, Buttons::OkCancel, 2});
    if (risposta != Answer::Ok) {
        return false;
    }
    const std::string& openDir = libreria.config.OpenDir;
    EliminaFileBrano(PathFromUtf8(openDir), brano.NomeFile);
    ProfileFile indice(PercorsoIndice(openDir));
    RimuoviVoce(indice, brano.NomeFile);
    CaricaIndice(libreria);
    return true;
}

}  // namespace sonnel
