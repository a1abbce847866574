#include "library/Aggiunta.h"

#include "library/Indice.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/files/Directory.h"
#include "platform/files/Files.h"
#include "platform/midi/SmfReader.h"
#include "song/LeggiIntestazione.h"

#include <system_error>
#include <utility>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

/// Copies the two files of a song, or writes both when its words are in its MIDI file. Both or none
/// are there afterwards. The LYK file comes last: a song without music could be neither played nor
/// added again.
std::optional<Error> Scrivi(const FileBrano& brano, const fs::path& lyk, const fs::path& mid) {
    if (!brano.parole) {
        return CopyFilesAtomically({{*brano.mid, mid}, {*brano.lyk, lyk}});
    }
    const Result<std::string> midi = ReadFile(*brano.mid);
    if (!midi) {
        return midi.error();
    }
    if (auto errore = WriteFileAtomically(mid, MidiData(*midi))) {
        return errore;
    }
    auto errore = WriteFileAtomically(lyk, EncodeFileText(*brano.parole));
    if (errore) {
        std::error_code ignorato;  // the first failure counts
        fs::remove(mid, ignorato);
    }
    return errore;
}

}  // namespace

Aggiunta::Aggiunta(fs::path directory) : directory_(std::move(directory)) {
    (void)ListDirectory(directory_, [this](std::string_view nome, EntryKind /*tipo*/) {
        const fs::path file = PathFromUtf8(nome);
        const std::string estensione = FoldCase(Utf8FromPath(file.extension()));
        if (estensione == ".lyk" || estensione == ".mid") {
            presi_.insert(FoldCase(Utf8FromPath(file.stem())));
        }
    });
}

bool Aggiunta::DellaLibreria(const FileBrano& brano) const {
    return brano.lyk && SameDirectory(brano.lyk->parent_path(), directory_);
}

/// Why a song of this name cannot be added; "" when it can.
std::string Aggiunta::Impedimento(const std::string& nome, const FileBrano& brano) const {
    if (!brano.motivo.empty()) {
        return brano.motivo;
    }
    if (!brano.HaParole()) {
        return "it is no song";
    }
    if (!brano.mid) {
        return "its MID file is missing";
    }
    if (presi_.contains(FoldCase(nome))) {
        return "the library has a song of this name";
    }
    return std::string(ImpedimentoNome(nome));
}

Result<std::string> Aggiunta::Aggiungi(ProfileFile& indice, FileBrano brano) {
    if (!brano.lyk && brano.mid) {
        LeggiParole(brano);
    }
    // Names from old archives may not be UTF-8, which the index needs.
    const std::string nome = DecodeUnmarkedText(Utf8FileName(PathFromUtf8(brano.base)));
    if (std::string motivo = Impedimento(nome, brano); !motivo.empty()) {
        return Error{0, std::move(motivo)};
    }
    const fs::path lyk = directory_ / PathFromUtf8(nome + ".lyk");
    const fs::path mid = directory_ / PathFromUtf8(nome + ".mid");
    if (const auto errore = Scrivi(brano, lyk, mid)) {
        return *errore;
    }
    presi_.insert(FoldCase(nome));
    aggiunti_.push_back(nome);
    const Result<Intestazione> letta = LeggiIntestazione(directory_, nome);
    RegistraBrano(indice, nome, letta ? *letta : Intestazione{});
    return nome;
}

void Aggiunta::Ritira() {
    for (const std::string& nome : aggiunti_) {
        for (const char* estensione : {".lyk", ".mid"}) {
            std::error_code ignorato;  // the failure of the index is what counts
            fs::remove(directory_ / PathFromUtf8(nome + estensione), ignorato);
        }
    }
}

}  // namespace sonnel
