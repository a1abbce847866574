#include "library/RaccoltaBrani.h"

#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/files/Directory.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace sonnel {

namespace fs = std::filesystem;

void RaccoltaBrani::Esamina(const fs::path& percorso) {
    std::error_code errore;
    const fs::file_status stato = fs::status(percorso, errore);
    if (fs::is_directory(stato)) {
        EsaminaCartella(percorso);
    } else if (fs::is_regular_file(stato)) {
        finita_ = finita_ || !continua_();
        if (!finita_) {
            EsaminaFile(percorso);
        }
    }
}

void RaccoltaBrani::EsaminaCartella(const fs::path& cartella) {
    std::vector<std::pair<std::string, fs::path>> voci;
    (void)ListDirectory(cartella, [&](std::string_view nome, EntryKind tipo) {
        if (tipo == EntryKind::File || tipo == EntryKind::Directory) {
            voci.emplace_back(FoldCase(nome), cartella / PathFromUtf8(nome));
        }
    });
    std::sort(voci.begin(), voci.end());
    for (const auto& [chiave, percorso] : voci) {
        if (finita_) {
            return;
        }
        Esamina(percorso);
    }
}

/// The file of the same name with another extension, in any letter case.
std::optional<fs::path> RaccoltaBrani::Accanto(const fs::path& file, const char* estensione) {
    const fs::path cercato = fs::path(file).replace_extension(estensione);
    std::error_code errore;
    if (fs::is_regular_file(cercato, errore)) {
        return cercato;
    }
    // List a folder once for all its files.
    if (const fs::path cartella = file.parent_path(); cartella != elencata_) {
        elencata_ = cartella;
        nomi_.clear();
        (void)ListDirectory(cartella, [&](std::string_view nome, EntryKind /*tipo*/) {
            nomi_.emplace(FoldCase(nome), cartella / PathFromUtf8(nome));
        });
    }
    const auto trovato = nomi_.find(FoldCase(Utf8FromPath(cercato.filename())));
    return trovato == nomi_.end() ? std::nullopt : std::optional(trovato->second);
}

void RaccoltaBrani::EsaminaFile(const fs::path& file) {
    const std::string estensione = FoldCase(Utf8FromPath(file.extension()));
    FileBrano brano{.base = Utf8FromPath(fs::path(file).replace_extension())};
    if (estensione == ".lyk") {
        brano.lyk = file;
        brano.mid = Accanto(file, ".mid");
    } else if (SembraMidi(file)) {
        // A karaoke file may have been converted: then its LYK and MID files beside it are the
        // song.
        const std::optional<fs::path> mid =
            estensione == ".mid" ? std::optional(file) : Accanto(file, ".mid");
        brano.lyk = mid ? Accanto(file, ".lyk") : std::nullopt;
        brano.mid = brano.lyk ? *mid : file;
    } else {
        return;
    }
    if (visti_.insert(brano.lyk.value_or(file)).second) {
        trovati_.push_back(std::move(brano));
    }
}

}  // namespace sonnel
