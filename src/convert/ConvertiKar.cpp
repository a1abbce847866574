#include "convert/ConvertiKar.h"

#include "convert/EstraiParole.h"
#include "convert/ScriviLyk.h"
#include "library/AggiungiBrani.h"
#include "library/Indice.h"
#include "platform/Text.h"
#include "platform/files/Directory.h"
#include "platform/files/Files.h"
#include "song/LeggiIntestazione.h"
#include "ui/PuntatoreOccupato.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

constexpr const char* DirectoryDelDatabase =
    "You can't convert KAR stored in the same directory of the karaoke database! Move the files to "
    "be converted to another directory before trying again: Sonnel Player will automatically copy "
    "the required files for you after a successful conversion.";
constexpr const char* Sovrascrivere = "The LYK file aready exists: do you want to overwrite it?";
constexpr const char* NonApre =
    "Warning! An error occured while opening the file to be converted (the file is currently "
    "opened by another application?). Correct the problem and click on Retry, or click on Cancel "
    "to abort the conversion.";
constexpr const char* NonScrive =
    "Warning! An error occured while writing to LYK file (disk full?). Correct the problem and "
    "click on Retry, or click on Cancel to abort the conversion.";
constexpr const char* Completata =
    "Conversion completed. both the LYK and MID files have been stored in the same directory where "
    "the corresponding KAR resides.\r\n\r\n"
    "Please note not all KAR songs can be correctly converted, sometimes it is necessary to "
    "manually edit LYK files (using Notepad or, better, a LYK editor).";
constexpr const char* Aggiungere = "Do you want to add the converted song to the current database?";
constexpr const char* PiuTardi =
    "Remember you can import it later using the \"Add a song\" button of the sng selecion panel.";
constexpr const char* RimuovereKar =
    "The song has been imported. Do you want to remove the old KAR file?";

std::string NonConverte(const Error& errore) {
    return "Warning! An error occured while converting the song (error " +
           std::to_string(errore.number) +
           ")! This file is not a standard MIDI Karaoke file or is damaged. Click on Cancel to "
           "abort the conversion.";
}

std::string NonCopia(const Error& errore) {
    return "Warning! An error occured while copying the file to be converted (error " +
           std::to_string(errore.number) +
           "): the disk is full or one or more files are locked or opened by another application. "
           "Correct the problem and click on Retry, or click on Cancel to abort the conversion.";
}

/// The file's own spelling in its directory, in any letter case; as it stands when it is not there.
fs::path ComeSiTrova(const fs::path& file) {
    return FindFile(file).value_or(file);
}

/// Deletes a file; one that is not there is as good as deleted.
std::optional<Error> Elimina(const fs::path& file) {
    std::error_code errore;
    fs::remove(file, errore);
    if (!errore) {
        return std::nullopt;
    }
    return Error{errore.value(),
                 "Can't delete the file " + Utf8FromPath(file) + ": " + errore.message() + "."};
}

/// The conversion of one file.
class ConversioneKar {
  public:
    ConversioneKar(const Libreria& libreria, const PartiKar& parti, const fs::path& scelto);
    void Esegui();

  private:
    [[nodiscard]] bool PuoIniziare();
    [[nodiscard]] bool FaiLyk();
    [[nodiscard]] bool FaiMid();
    [[nodiscard]] bool VuoleAggiungere();
    [[nodiscard]] std::int16_t SpostaNellaLibreria();
    [[nodiscard]] std::optional<Error> Registra();
    void Consegna(std::int16_t posizione);

    [[nodiscard]] fs::path Accanto(const char* estensione) const;
    [[nodiscard]] fs::path NellaLibreria(const char* estensione) const;
    Answer Mostra(std::string testo, Icon icona, Buttons pulsanti = Buttons::Ok,
                  int predefinito = 1);
    template <class Passo, class Testo>
    [[nodiscard]] bool Ritenta(const Passo& passo, const Testo& testo);

    const Libreria& libreria_;
    const PartiKar& parti_;
    fs::path scelto_;
    fs::path directory_;
    std::string base_;
    /// The music has to be copied: the file chosen is not the song's MID file itself.
    bool kar_ = false;
    fs::path lyk_;
    fs::path mid_;
};

ConversioneKar::ConversioneKar(const Libreria& libreria, const PartiKar& parti,
                               const fs::path& scelto)
    : libreria_(libreria), parti_(parti), scelto_(scelto), directory_(scelto.parent_path()) {
    const std::string percorso = Utf8FromPath(scelto);
    const std::string nome = Utf8FileName(PathFromUtf8(WithoutExtension(percorso)));
    // The index holds text only.
    base_ = DecodeUnmarkedText(nome);
    kar_ = FoldCase(percorso).ends_with("kar") || base_ != nome;
    lyk_ = Accanto(".lyk");
    mid_ = kar_ ? ComeSiTrova(directory_ / PathFromUtf8(base_ + ".mid")) : Accanto(".mid");
}

/// The file of the song's name and this extension in the source directory: the chosen file itself
/// when it has the extension, however that is spelled.
fs::path ConversioneKar::Accanto(const char* estensione) const {
    return FoldCase(Utf8FromPath(scelto_)).ends_with(estensione)
               ? scelto_
               : ComeSiTrova(directory_ / PathFromUtf8(base_ + estensione));
}

void ConversioneKar::Esegui() {
    if (!PuoIniziare() || !FaiLyk() || !FaiMid()) {
        return;
    }
    Mostra(Completata, Icon::Information);
    const std::int16_t posizione = VuoleAggiungere() ? SpostaNellaLibreria() : std::int16_t{0};
    if (posizione > 0) {
        Consegna(posizione);
    }
}

Answer ConversioneKar::Mostra(std::string testo, Icon icona, Buttons pulsanti, int predefinito) {
    return libreria_.msgBox.Show({std::move(testo), icona, pulsanti, predefinito});
}

/// Runs a step until it succeeds; false when the user gives up. `testo` makes the message of an
/// error.
template <class Passo, class Testo>
bool ConversioneKar::Ritenta(const Passo& passo, const Testo& testo) {
    while (const std::optional<Error> errore = passo()) {
        const Pointer mostrato = libreria_.eventi.SetPointer(Pointer::Normal);
        if (Mostra(testo(*errore), Icon::Critical, Buttons::RetryCancel) != Answer::Retry) {
            return false;
        }
        libreria_.eventi.SetPointer(mostrato);
    }
    return true;
}

bool ConversioneKar::PuoIniziare() {
    if (SameDirectory(directory_, PathFromUtf8(libreria_.config.OpenDir))) {
        Mostra(DirectoryDelDatabase, Icon::Exclamation);
        return false;
    }
    std::error_code ignorato;
    return !fs::exists(lyk_, ignorato) ||
           Mostra(Sovrascrivere, Icon::Question, Buttons::OkCancel, 2) == Answer::Ok;
}

/// Opens the file, extracts its words and writes them. False when there is no song in the end.
bool ConversioneKar::FaiLyk() {
    PuntatoreOccupato occupato(libreria_.eventi);
    Midifile midifile;
    midifile.SetFileName(scelto_);
    Result<BaseTempi> tempi = Error{};
    const auto apri = [&] {
        tempi = BaseTempi::Apri(midifile);
        return tempi ? std::nullopt : std::optional(tempi.error());
    };
    if (!Ritenta(apri, [](const Error&) { return NonApre; })) {
        return false;
    }
    const Estrazione parole = EstraiParole(midifile, *tempi, DataOdierna(parti_.ambiente));
    const auto scrivi = [&] { return ScriviLyk(lyk_, parole.Testo, true); };
    if (!Ritenta(scrivi, [](const Error&) { return NonScrive; })) {
        return false;
    }
    occupato.Ripristina();
    if (parole.Errore) {
        Mostra(NonConverte(*parole.Errore), Icon::Critical);
    } else if (!parole.Accettata()) {
        Mostra(KarNonAccettato, Icon::Information);
    }
    return parole.Accettata();
}

bool ConversioneKar::FaiMid() {
    return !kar_ || Ritenta([this] { return CopyFilesAtomically({{scelto_, mid_}}); }, NonCopia);
}

bool ConversioneKar::VuoleAggiungere() {
    if (Mostra(Aggiungere, Icon::Question, Buttons::YesNo) != Answer::Yes) {
        Mostra(PiuTardi, Icon::Information);
        return false;
    }
    if (FindFile(NellaLibreria(".lyk"))) {
        Mostra(BranoGiaPresente, Icon::Exclamation);
        return false;
    }
    if (!ImpedimentoNome(base_).empty()) {
        Mostra(NomeBranoImpossibile, Icon::Exclamation);
        return false;
    }
    return true;
}

fs::path ConversioneKar::NellaLibreria(const char* estensione) const {
    return PathFromUtf8(libreria_.config.OpenDir) / PathFromUtf8(base_ + estensione);
}

/// The song's position in the table; 0 when the user gives up.
std::int16_t ConversioneKar::SpostaNellaLibreria() {
    const PuntatoreOccupato occupato(libreria_.eventi);
    const auto copia = [this] {
        // The words come last: with them alone there the song could not be brought in again.
        return CopyFilesAtomically(
            {{mid_, ComeSiTrova(NellaLibreria(".mid"))}, {lyk_, NellaLibreria(".lyk")}});
    };
    if (!Ritenta(copia, NonCopia) || !Ritenta([this] { return Elimina(lyk_); }, NonCopia) ||
        !Ritenta([this] { return Elimina(mid_); }, NonCopia) ||
        !Ritenta([this] { return Registra(); }, NonCopia)) {
        return 0;
    }
    CaricaIndice(libreria_);
    parti_.lista.AggiornaLista();
    std::int16_t trovata = 0;
    for (std::int16_t p = libreria_.brani.NumBrani(); p > 0; --p) {
        if (libreria_.brani.Brani(p).NomeFile == base_) {
            trovata = p;
        }
    }
    return trovata;
}

/// Enters the song in the index.
std::optional<Error> ConversioneKar::Registra() {
    const Result<Intestazione> letta = LeggiIntestazione(NellaLibreria(".lyk"));
    if (!letta) {
        return letta.error();
    }
    ProfileFile indice(PercorsoIndice(libreria_.config.OpenDir));
    ProfileFile::Batch lotto(indice);
    RegistraBrano(indice, base_, *letta);
    return lotto.Commit();
}

/// Selects the imported song, removes its karaoke file if the user wants it, and opens its
/// properties.
void ConversioneKar::Consegna(std::int16_t posizione) {
    parti_.lista.SelezionaBrano(posizione);
    if (Mostra(RimuovereKar, Icon::Question, Buttons::YesNo) == Answer::Yes) {
        if (const auto errore = Elimina(Accanto(".kar"))) {
            Mostra(errore->text, Icon::Exclamation);
        }
    }
    parti_.ProprietaBrano(posizione);
}

}  // namespace

void ConvertiKar(const Libreria& libreria, const PartiKar& parti) {
    const std::vector<fs::path> scelti =
        parti.dialoghi.ChooseFiles({.title = "Select KAR file to be converted",
                                    .extension = "kar",
                                    .name = "*.kar",
                                    .directory = {},
                                    .filters = {"MIDI Karaoke file (*.kar)", "MIDI file (*.mid)"},
                                    .anyName = true});
    if (!scelti.empty()) {
        ConversioneKar(libreria, parti, scelti.front()).Esegui();
    }
}

}  // namespace sonnel
