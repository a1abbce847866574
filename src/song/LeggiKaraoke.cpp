#include "song/LeggiKaraoke.h"

#include "platform/Numbers.h"
#include "platform/Text.h"
#include "platform/files/Files.h"
#include "platform/files/LineReader.h"
#include "ui/Titoli.h"
#include "ui/basCommon.h"

#include <filesystem>
#include <optional>
#include <utility>

namespace sonnel {
namespace {

/// A file that cannot be read is reported under the application's own title.
void AvvisaErrore(MsgBox& msgBox, std::string testo) {
    msgBox.Show({.text = std::move(testo), .title = std::string(TitoloProgramma)});
}

/// One reading of a song's lines.
class Lettura {
  public:
    Lettura(Timeline& timeline, InformazioniBrano& informazioni, MsgBox& msgBox)
        : timeline_(timeline), informazioni_(informazioni), msgBox_(msgBox) {}

    /// Reads one line after the first; false when the timeline is full.
    [[nodiscard]] bool LeggiRiga(std::string_view riga);
    /// Sets the information that depends on the whole file.
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

/// The position of a text's n-th line break.
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
        msgBox_.Show(
            {"This Karaoke contains some pages with more than 4 text lines!\r\n\r\n"
             "The song words may result incomplete: please edit the LYK file to correct "
             "this problem.",
             Icon::Exclamation});
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

}  // namespace

std::string PrimaRigaLyk() {
    return std::string(MagicoLyk) + " by Sonnel Karaoke Player" + std::string(FineRiga);
}

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
        msgBox.Show({"That's not a " + std::string(MagicoLyk) + " file!", Icon::Critical});
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

bool LeggiKaraoke(const FileBrano& brano, Timeline& timeline, InformazioniBrano& informazioni,
                  MsgBox& msgBox) {
    timeline.Azzera();
    informazioni = {};
    if (brano.parole) {
        return LeggiRighe(*brano.parole, true, timeline, informazioni, msgBox) ==
               EsitoLettura::Completa;
    }
    const std::string nome = brano.base + ".LYK";
    if (!brano.lyk) {
        msgBox.Show({"Can't find or open the Karaoke file (" + nome + ") for this song!!!",
                     Icon::Critical});
        return false;
    }
    Result<FileReader> file = FileReader::Open(*brano.lyk);
    if (!file) {
        AvvisaErrore(msgBox, "Error opening " + nome + "!");
        return false;
    }
    std::string contenuto;
    const bool intero = !file->ReadAll(contenuto);
    const EsitoLettura esito =
        LeggiRighe(DecodeFileText(contenuto), intero, timeline, informazioni, msgBox);
    if (esito == EsitoLettura::Incompleta) {
        AvvisaErrore(msgBox, "Error reading " + nome + "!");
    }
    return esito == EsitoLettura::Completa;
}

}  // namespace sonnel
