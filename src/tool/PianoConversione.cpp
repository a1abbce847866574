#include "tool/PianoConversione.h"

#include "platform/Text.h"
#include "platform/files/Directory.h"
#include "platform/files/Files.h"
#include "tool/FileNominato.h"
#include "tool/Tenta.h"

#include <optional>
#include <system_error>
#include <utility>

namespace sonnel {

namespace fs = std::filesystem;

PianoConversione::PianoConversione(std::string directory, bool sovrascrivi, bool esatta)
    : directory_(std::move(directory)), sovrascrivi_(sovrascrivi), esatta_(esatta) {}

Conversione PianoConversione::Prepara(const std::string& file) {
    Conversione conversione;
    conversione.file = file;
    if (auto errore = Tenta(file, [&] { ScegliUscite(conversione); })) {
        conversione.errore = std::move(*errore);
    }
    return conversione;
}

void PianoConversione::ScegliUscite(Conversione& conversione) {
    const fs::path origine = CercaFile(conversione.file);
    conversione.origine = origine;
    const fs::path directory =
        directory_.empty() ? origine.parent_path() : PathFromUtf8(directory_);
    const std::string nome = DecodeUnmarkedText(Utf8FileName(origine));
    const std::string base =
        esatta_ ? Utf8FromPath(PathFromUtf8(nome).stem()) : WithoutExtension(nome);
    const Cartella& cartella = LeggiCartella(directory);
    const auto errore = [&](const std::string& motivo) {
        conversione.errore = "Can't convert the file " + conversione.file + ": " + motivo + ".";
    };
    if (base.empty()) {
        errore(
            "its name is too short: a song is called like its file without the last four "
            "characters");
        return;
    }
    if (std::error_code ignoto; !directory_.empty() && !fs::is_directory(directory, ignoto)) {
        errore("there is no directory " + directory_);
        return;
    }
    if (!brani_.insert(cartella.nome + "/" + FoldCase(base)).second) {
        errore("a file before it has the same base name");
        return;
    }
    const bool accanto = LeggiCartella(origine.parent_path()).nome == cartella.nome;
    conversione.lyk = directory / PathFromUtf8(base + ".lyk");
    conversione.mid = directory / PathFromUtf8(base + ".mid");
    conversione.copiaMid = !accanto || !FoldedEqual()(Utf8FileName(origine), base + ".mid");
    if (!conversione.copiaMid) {
        conversione.mid = origine;
    }
    // Both are looked for, so that both take over the spelling they have.
    const bool lyk = Occupato(cartella, conversione.lyk);
    const bool mid = conversione.copiaMid && Occupato(cartella, conversione.mid);
    if ((lyk || mid) && !sovrascrivi_) {
        errore(Utf8FromPath(lyk ? conversione.lyk : conversione.mid) +
               " is there already and is kept; --force replaces it");
    }
}

/// Whether the file is there under this name in any letter case, which it then takes over: the
/// player would find either.
bool PianoConversione::Occupato(const Cartella& cartella, fs::path& file) const {
    // Most are not there, and looking for each in any letter case would list the directory.
    if (!cartella.file.contains(FoldCase(Utf8FromPath(file.filename())))) {
        return false;
    }
    std::optional<fs::path> trovato = FindFile(file);
    if (!trovato) {
        return false;
    }
    file = std::move(*trovato);
    return true;
}

PianoConversione::Cartella& PianoConversione::LeggiCartella(const fs::path& percorso) {
    const auto [posto, nuova] = cartelle_.try_emplace(Utf8FromPath(percorso));
    Cartella& cartella = posto->second;
    if (nuova) {
        const fs::path directory = percorso.empty() ? fs::path(".") : percorso;
        std::error_code errore;
        cartella.nome = Utf8FromPath(fs::weakly_canonical(directory, errore));
        if (errore) {
            cartella.nome = Utf8FromPath(percorso);
        }
        (void)ListDirectory(directory, [&](std::string_view nome, EntryKind /*tipo*/) {
            cartella.file.insert(FoldCase(nome));
        });
    }
    return cartella;
}

}  // namespace sonnel
