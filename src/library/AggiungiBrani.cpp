#include "library/AggiungiBrani.h"

#include "library/Indice.h"
#include "platform/Text.h"
#include "platform/files/Directory.h"
#include "platform/files/Files.h"
#include "song/FileBrano.h"
#include "ui/PuntatoreOccupato.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t Buffer = 8192;  // characters of the dialog's answer, its closing NUL included

constexpr const char* TroppiFile =
    "Warning: you have selected too many files! Try again selecting fewer files to add.";
constexpr const char* DirectoryDelDatabase =
    "You can't add a song from the same directory of your database! Select a different directory "
    "or run the \"Update index\" function to synchronize the index with the currently stored "
    "files.";
constexpr const char* MancaMid =
    "Can't load the selected song: MID file missing!\r\n"
    "To properly load a Karaoke file you need to put the LYK and MID file in the same directory.";
constexpr const char* IndiceNonScritto =
    "The songs have been copied, but the index of the database can't be written: update the index "
    "when it can.";
constexpr const char* Interrotto = "The song has not been imported, nor those that follow it.";

/// Whether the dialog's answer fits the buffer: the path of a single file, or the directory and the
/// names of several, separated by NUL characters.
bool EntraNelBuffer(const std::vector<fs::path>& scelti) {
    const auto lunghezza = [](const fs::path& testo) {
        return CodePoints(Utf8FromPath(testo)) + 1;
    };
    if (scelti.size() == 1) {
        return lunghezza(scelti.front()) <= Buffer;
    }
    std::size_t totale = lunghezza(scelti.front().parent_path());
    for (const fs::path& file : scelti) {
        totale += lunghezza(file.filename());
    }
    return totale <= Buffer;
}

/// One run of the import.
class Importazione {
  public:
    explicit Importazione(const Libreria& libreria)
        : libreria_(libreria),
          destinazione_(PathFromUtf8(libreria.config.OpenDir)),
          indice_(PercorsoIndice(libreria.config.OpenDir)) {}

    /// Imports the songs in their order; returns how many were.
    int Esegui(const std::vector<fs::path>& scelti);

  private:
    bool Aggiungi(const fs::path& scelto);
    std::optional<Error> Copia(const fs::path& scelto, const std::string& nome,
                               const fs::path& mid);
    void Avvisa(const std::string& testo, const std::string& titolo = Message::UsualTitle);

    const Libreria& libreria_;
    fs::path destinazione_;
    ProfileFile indice_;
    int importati_ = 0;
};

int Importazione::Esegui(const std::vector<fs::path>& scelti) {
    ProfileFile::Batch lotto(indice_);
    for (const fs::path& scelto : scelti) {
        if (!Aggiungi(scelto)) {
            break;
        }
    }
    if (const std::optional<Error> errore = lotto.Commit(); errore && importati_ > 0) {
        Avvisa(errore->text + "\r\n\r\n" + IndiceNonScritto);
        return 0;
    }
    return importati_;
}

/// Imports the song of a chosen file, or reports why not. False when the import cannot go on.
bool Importazione::Aggiungi(const fs::path& scelto) {
    const std::string nome = WithoutExtension(Utf8FromPath(scelto.filename()));
    const auto mid = FindFile(scelto.parent_path() / PathFromUtf8(nome + ".mid"));
    if (!mid) {
        Avvisa(MancaMid, nome);
    } else if (FindFile(destinazione_ / PathFromUtf8(nome + ".lyk"))) {
        Avvisa(BranoGiaPresente, nome);
    } else if (!ImpedimentoNome(nome).empty()) {
        Avvisa(NomeBranoImpossibile, nome);
    } else if (const std::optional<Error> errore = Copia(scelto, nome, *mid)) {
        Avvisa(errore->text + "\r\n\r\n" + Interrotto);
        return false;
    } else {
        const Result<Intestazione> letta = LeggiIntestazione(destinazione_, nome);
        RegistraBrano(indice_, nome, letta ? *letta : Intestazione{});
        ++importati_;
    }
    return true;
}

std::optional<Error> Importazione::Copia(const fs::path& scelto, const std::string& nome,
                                         const fs::path& mid) {
    const fs::path nomeLyk = PathFromUtf8(nome + ".lyk");
    const fs::path lyk = scelto.parent_path() / nomeLyk;
    const fs::path midNuovo = destinazione_ / PathFromUtf8(nome + ".mid");
    // Copy the LYK file last: a song without music could be neither played nor imported again.
    return CopyFilesAtomically({{mid, FindFile(midNuovo).value_or(midNuovo)},
                                {FindFile(lyk).value_or(lyk), destinazione_ / nomeLyk}});
}

void Importazione::Avvisa(const std::string& testo, const std::string& titolo) {
    const PuntatoreNormale puntatore(libreria_.eventi);
    (void)libreria_.msgBox.Show({testo, Icon::Exclamation, Buttons::Ok, 1, titolo});
}

std::string TestoImportati(int importati) {
    return importati == 1 ? "One song has been correctly imported. Remember to edit its "
                            "properties and assign it to an album!"
                          : std::to_string(importati) +
                                " songs have been correctly imported. Remember to edit the "
                                "properties and assign them to an album!";
}

/// Imports the songs of the chosen LYK files, unless something prevents all of them.
void AggiungiLyk(const Libreria& libreria, const std::vector<fs::path>& scelti, ListaBrani& lista) {
    const auto avvisa = [&](const std::string& testo) {
        (void)libreria.msgBox.Show({testo, Icon::Exclamation});
    };
    if (!EntraNelBuffer(scelti)) {
        return avvisa(TroppiFile);
    }
    PuntatoreOccupato puntatore(libreria.eventi);
    const fs::path database = PathFromUtf8(libreria.config.OpenDir);
    if (std::any_of(scelti.begin(), scelti.end(), [&](const fs::path& scelto) {
            return SameDirectory(scelto.parent_path(), database);
        })) {
        puntatore.Ripristina();
        return avvisa(DirectoryDelDatabase);
    }
    const int importati = Importazione(libreria).Esegui(scelti);
    if (importati > 0) {
        CaricaIndice(libreria);
        lista.AggiornaLista();
        puntatore.Ripristina();
        avvisa(TestoImportati(importati));
    }
}

/// Whether a chosen file is a MIDI file without a LYK file.
bool SoloMidi(const fs::path& file) {
    const std::string base = WithoutExtension(Utf8FromPath(file));
    return SembraMidi(file) && !FindFile(PathFromUtf8(base + ".lyk"));
}

}  // namespace

std::vector<fs::path> AggiungiBrani(const Libreria& libreria, CommonDialog& dialoghi,
                                    ListaBrani& lista) {
    std::vector<fs::path> scelti = dialoghi.ChooseFiles({.title = "Add a new LYK song",
                                                         .extension = "lyk",
                                                         .name = "*.lyk",
                                                         .directory = {},
                                                         .several = true,
                                                         .further = {GenereKaraoke}});
    const auto midi = std::stable_partition(scelti.begin(), scelti.end(),
                                            [](const fs::path& file) { return !SoloMidi(file); });
    std::vector<fs::path> karaoke(midi, scelti.end());
    scelti.erase(midi, scelti.end());
    if (!scelti.empty()) {
        AggiungiLyk(libreria, scelti, lista);
    }
    return karaoke;
}

}  // namespace sonnel
