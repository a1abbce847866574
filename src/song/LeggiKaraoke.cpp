#include "song/LeggiKaraoke.h"

#include "platform/Files.h"
#include "platform/LineReader.h"
#include "platform/Numbers.h"
#include "platform/Text.h"
#include "ui/Titoli.h"
#include "ui/basCommon.h"

#include <filesystem>
#include <optional>
#include <utility>

namespace sonnel {
namespace {

constexpr std::string_view SeparatoreRighe = "$E";
constexpr std::string_view Estensione = ".LYK";

void Avvisa(MsgBox& msgBox, std::string testo, Icon icona, std::string_view titolo) {
    msgBox.Show({.text = std::move(testo), .icon = icona, .title = std::string(titolo)});
}

/// One reading of a song's lines.
class Lettura {
  public:
    Lettura(Timeline& timeline, InformazioniBrano& informazioni, MsgBox& msgBox)
        : timeline_(timeline), informazioni_(informazioni), msgBox_(msgBox) {}

    /// Takes in one line after the first; false when the timeline is full.
    [[nodiscard]] bool LeggiRiga(std::string_view riga);
    /// What can be said only when the whole file was read.
    void Concludi();

  private:
    void LeggiCampo(std::string_view riga);
    [[nodiscard]] bool LeggiEvento(std::string_view riga);
    void ImpaginaTesto(std::string& testo);

    Timeline& timeline_;
    InformazioniBrano& informazioni_;
    MsgBox& msgBox_;
    std::string versione_;
    std::string data_;
    bool avvisato_ = false;
};

bool Lettura::LeggiRiga(std::string_view riga) {
    if (riga.empty() || riga.front() == ';') {
        return true;
    }
    if (riga.front() == '*') {
        LeggiCampo(riga);
        return true;
    }
    return LeggiEvento(riga);
}

void Lettura::LeggiCampo(std::string_view riga) {
    const std::string_view campo = riga.substr(0, 3);
    std::string valore(riga.substr(campo.size()));
    if (campo == "*VE") {
        versione_ = std::move(valore);
        return;
    }
    if (campo == "*DA") {
        data_ = std::move(valore);
        return;
    }
    SostituisciTesto(valore, "&", "&&");
    if (campo == "*TI") {
        informazioni_.Titolo = std::move(valore);
    } else if (campo == "*AU") {
        informazioni_.Autore = std::move(valore);
    } else if (campo == "*BY") {
        informazioni_.KaraokeBy = std::move(valore);
    }
}

bool Lettura::LeggiEvento(std::string_view riga) {
    const std::string_view colonneTempo = FirstCodePoints(riga, 5);
    riga.remove_prefix(colonneTempo.size());
    const std::string_view colonneTipo = FirstCodePoints(riga, 2);
    riga.remove_prefix(colonneTipo.size());

    const auto tipo = ReadInteger<std::int16_t>(colonneTipo);
    if (tipo < 0 || tipo > 2) {
        return true;
    }
    if (!timeline_.InserisciEvento(ReadInteger<std::int32_t>(colonneTempo),
                                   static_cast<TipoEvento>(tipo), std::string(riga))) {
        return false;
    }
    Evento& evento = timeline_.Eventi(timeline_.NumEventi());
    if (evento.Tipo == TipoEvento::Pagina) {
        ImpaginaTesto(evento.Testo);
    }
    return true;
}

void TogliInFondo(std::string& testo, std::string_view coda) {
    while (testo.ends_with(coda)) {
        testo.resize(testo.size() - coda.size());
    }
}

/// Where the n-th line break of a text stands.
std::size_t PostoFineRiga(std::string_view testo, int n) {
    std::size_t posto = testo.find(FineRiga);
    for (; n > 1; --n) {
        posto = testo.find(FineRiga, posto + FineRiga.size());
    }
    return posto;
}

void Lettura::ImpaginaTesto(std::string& testo) {
    constexpr int MassimoRighe = 4;
    TogliInFondo(testo, SeparatoreRighe);
    if (SostituisciTesto(testo, SeparatoreRighe, FineRiga) < MassimoRighe) {
        return;
    }
    testo.resize(PostoFineRiga(testo, MassimoRighe));
    TogliInFondo(testo, FineRiga);
    if (!std::exchange(avvisato_, true)) {
        Avvisa(msgBox_,
               "This Karaoke contains some pages with more than 4 text lines!\r\n\r\n"
               "The song words may result incomplete: please edit the LYK file to correct this "
               "problem.",
               Icon::Exclamation, TitoloMessaggi);
    }
}

void Lettura::Concludi() {
    if (!versione_.empty() && !data_.empty()) {
        informazioni_.Versione = std::move(versione_);
        informazioni_.Data = std::move(data_);
    }
    constexpr std::int32_t Anticipo = 20;  // tenths of a second
    if (timeline_.NumEventi() > 2 && timeline_.Eventi(1).Tempo == 0 &&
        timeline_.Eventi(2).Tempo > Anticipo) {
        timeline_.Eventi(1).Tempo = timeline_.Eventi(2).Tempo - Anticipo;
    }
}

/// The file to read: a song's file in any letter case, else whatever stands in its place.
std::optional<std::filesystem::path> CercaFile(const std::string& percorso) {
    std::filesystem::path atteso = PathFromUtf8(percorso);
    if (auto trovato = FindFile(atteso)) {
        return trovato;
    }
    std::error_code errore;
    for (const char* estensione : {".LYK", ".lyk"}) {
        atteso.replace_extension(estensione);
        if (std::filesystem::exists(atteso, errore)) {
            return atteso;
        }
    }
    return std::nullopt;
}

bool LeggiFile(const std::string& percorso, Timeline& timeline, InformazioniBrano& informazioni,
               MsgBox& msgBox) {
    const auto trovato = CercaFile(percorso);
    if (!trovato) {
        Avvisa(msgBox, "Can't find or open the Karaoke file (" + percorso + ") for this song!!!",
               Icon::Critical, TitoloMessaggi);
        return false;
    }
    Result<FileReader> file = FileReader::Open(*trovato);
    if (!file) {
        Avvisa(msgBox, "Error opening " + percorso + "!", Icon::None, TitoloProgramma);
        return false;
    }
    std::string contenuto;
    const bool intero = !file->ReadAll(contenuto);
    const EsitoLettura esito =
        LeggiRighe(DecodeFileText(contenuto), intero, timeline, informazioni, msgBox);
    if (esito == EsitoLettura::Incompleta) {
        Avvisa(msgBox, "Error reading " + percorso + "!", Icon::None, TitoloProgramma);
    }
    return esito == EsitoLettura::Completa;
}

}  // namespace

EsitoLettura LeggiRighe(std::string_view testo, bool intero, Timeline& timeline,
                        InformazioniBrano& informazioni, MsgBox& msgBox) {
    if (!intero) {
        testo = testo.substr(0, testo.rfind('\r') + 1);
        if (testo.empty()) {
            return EsitoLettura::Incompleta;
        }
    }
    LineReader righe(testo);
    if (!righe.Next().value_or("").starts_with(MagicoLyk)) {
        Avvisa(msgBox, "That's not a " + std::string(MagicoLyk) + " file!", Icon::Critical,
               TitoloMessaggi);
        return EsitoLettura::NonCantabelle;
    }
    Lettura lettura(timeline, informazioni, msgBox);
    while (const auto riga = righe.Next()) {
        if (!lettura.LeggiRiga(*riga)) {
            return EsitoLettura::Incompleta;
        }
    }
    if (!intero) {
        return EsitoLettura::Incompleta;
    }
    lettura.Concludi();
    return EsitoLettura::Completa;
}

bool LeggiKaraoke(const std::string& basePath, Timeline& timeline, InformazioniBrano& informazioni,
                  MsgBox& msgBox, const ComandiLettura& comandi) {
    timeline.Azzera();
    informazioni = {};
    comandi.disabilitaInfo();
    const bool letto =
        LeggiFile(basePath + std::string(Estensione), timeline, informazioni, msgBox);
    comandi.abilitaFunzioni();
    return letto;
}

}  // namespace sonnel
