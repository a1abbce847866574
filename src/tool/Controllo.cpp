#include "tool/Controllo.h"

#include "platform/Text.h"
#include "platform/files/LineReader.h"
#include "player/SincroniaParole.h"
#include "song/LeggiKaraoke.h"
#include "tool/LetturaBrano.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace sonnel {
namespace {

constexpr std::size_t ColonneTempo = 5;
constexpr std::size_t ColonneTipo = 2;

/// One walk through the lines.
class Controllo {
  public:
    explicit Controllo(std::optional<std::int32_t> musica) : musica_(musica) {}

    std::vector<Rilievo> Esegui(std::string_view testo);

  private:
    void ControllaFineRiga(std::string_view riga);
    void ControllaRiga(std::string_view riga);
    void ControllaEvento(const Evento& evento, std::string_view testo);
    void ControllaConteggio(const Evento& colore);
    void ControllaFineMusica(const Evento& evento);
    [[nodiscard]] bool TempoTroppoLungo(std::string_view riga) const;
    void Rileva(std::string cosa) { rilievi_.push_back({numero_, std::move(cosa)}); }

    std::optional<std::int32_t> musica_;
    std::vector<Rilievo> rilievi_;
    std::size_t numero_ = 1;  ///< of the line, as an editor counts
    Timeline lettura_;        ///< what the player reads in the line
    Timeline brano_;          ///< and in all of them
    bool pieno_ = false;
    std::int32_t ultimoTempo_ = std::numeric_limits<std::int32_t>::min();
    std::size_t ultimaRiga_ = 0;
    std::optional<std::int32_t> pagina_;  ///< characters of the page
    std::int32_t cantati_ = 0;            ///< of which so many are coloured
};

std::vector<Rilievo> Controllo::Esegui(std::string_view testo) {
    LineReader righe(testo);
    bool prima = true;
    while (const auto riga = righe.Next()) {
        ControllaFineRiga(*riga);
        if (!prima) {
            ControllaRiga(*riga);
        } else if (!riga->starts_with(MagicoLyk)) {
            Rileva("the first line does not begin with \"" + std::string(MagicoLyk) +
                   "\": the player refuses the song; begin the file with that line");
            break;
        }
        prima = false;
        numero_ += 1 + static_cast<std::size_t>(std::count(riga->begin(), riga->end(), '\n'));
    }
    return std::move(rilievi_);
}

void Controllo::ControllaFineRiga(std::string_view riga) {
    const auto soli = static_cast<std::size_t>(std::count(riga.begin(), riga.end(), '\n'));
    if (soli == 0) {
        return;
    }
    const std::string quali = soli == 1 ? "the line ends"
                                        : "the lines " + std::to_string(numero_) + " to " +
                                              std::to_string(numero_ + soli - 1) + " end";
    Rileva(quali +
           " with a lone LF: the player takes what follows for a part of the same line, and its "
           "words are missing; save the file with line ends CR LF");
}

void Controllo::ControllaRiga(std::string_view riga) {
    lettura_.Azzera();
    InformazioniBrano ignorate;
    MessaggiRaccolti avvisi;
    const std::string brano = std::string(MagicoLyk) + "\r" + std::string(riga) + "\r";
    (void)LeggiRighe(brano, true, lettura_, ignorate, avvisi);
    if (TempoTroppoLungo(riga)) {
        Rileva(
            "a time of 100000 or more does not fit into five columns: the player misreads the "
            "line and does not show it when it should; the latest time is 99999 (2 h 46 min)");
        return;
    }
    if (lettura_.NumEventi() == 0) {
        return;
    }
    if (!avvisi.messaggi.empty()) {
        Rileva(
            "a page of more than 4 lines: those after the fourth are not shown; make two pages "
            "of it");
    }
    const std::size_t colonne = FirstCodePoints(riga, ColonneTempo + ColonneTipo).size();
    ControllaEvento(lettura_.Eventi(1), riga.substr(colonne));
}

/// Whether the line was written with a time of six or seven digits, of which the player reads five.
/// What it makes of the rest may be an event all the same; in a song that has come near to that
/// time it is taken for one.
bool Controllo::TempoTroppoLungo(std::string_view riga) const {
    constexpr std::size_t MaxCifre = 7;
    constexpr std::int32_t Vicino = 600;  // tenths of a second
    bool scritto = false;
    for (std::size_t cifre = ColonneTempo + 1; cifre <= MaxCifre; ++cifre) {
        const std::string_view inizio = riga.substr(0, cifre + ColonneTipo);
        scritto = scritto || (inizio.size() == cifre + ColonneTipo && inizio[0] != '0' &&
                              inizio.find_first_not_of("0123456789") >= cifre &&
                              (inizio[cifre] == '0' || inizio[cifre] == ' ') &&
                              inizio[cifre + 1] >= '0' && inizio[cifre + 1] <= '2');
    }
    if (!scritto || lettura_.NumEventi() == 0) {
        return scritto;
    }
    const std::int64_t letto = lettura_.Eventi(1).Tempo;
    return letto < ultimoTempo_ || letto - ultimoTempo_ > Vicino;
}

void Controllo::ControllaEvento(const Evento& evento, std::string_view testo) {
    if (!brano_.InserisciEvento(evento.Tempo, evento.Tipo, "") && !std::exchange(pieno_, true)) {
        Rileva("the player reads no more than " + std::to_string(brano_.NumEventi()) +
               " events: it refuses the song; make two songs of it");
    }
    if (evento.Tempo < ultimoTempo_) {
        Rileva("its time " + std::to_string(evento.Tempo) + " is before the time " +
               std::to_string(ultimoTempo_) + " of line " + std::to_string(ultimaRiga_) +
               ": the player passes that line over; put the lines in the order of their times");
    }
    ultimoTempo_ = evento.Tempo;
    ultimaRiga_ = numero_;
    if (evento.Tipo == TipoEvento::Pagina) {
        // A line break counts as 2, be it "$E" or CR LF.
        pagina_ = static_cast<std::int32_t>(CodePoints(testo));
        cantati_ = 0;
    } else if (evento.Tipo == TipoEvento::Colore) {
        ControllaConteggio(evento);
    }
    ControllaFineMusica(evento);
}

void Controllo::ControllaConteggio(const Evento& colore) {
    const std::int32_t conteggio = ConteggioColore(colore);
    const std::string numero = std::to_string(conteggio);
    if (!pagina_ && conteggio > 0) {
        Rileva(
            "words are coloured before there is a page: nothing is seen of it; put the page "
            "before them");
    } else if (pagina_ && conteggio > *pagina_) {
        Rileva("the count " + numero + " is past the end of the page, which has " +
               std::to_string(*pagina_) +
               " characters: the colour runs ahead of the singer; count the characters up to the "
               "end of the word, each line break as 2");
    } else if (conteggio < cantati_) {
        Rileva("the count " + numero + " is less than " + std::to_string(cantati_) +
               " before it in the page: nothing is seen of it, for what is coloured stays so; let "
               "the counts of a page grow");
    }
    cantati_ = conteggio;
}

void Controllo::ControllaFineMusica(const Evento& evento) {
    constexpr std::int64_t MillisecondiPerDecimo = 100;
    constexpr std::int64_t Arrotondamento = MillisecondiPerDecimo / 2;
    const bool parole = (evento.Tipo == TipoEvento::Pagina && !evento.Testo.empty()) ||
                        (evento.Tipo == TipoEvento::Colore && ConteggioColore(evento) > 0);
    // A word on the last note may have been rounded past it.
    if (musica_ && parole &&
        evento.Tempo * MillisecondiPerDecimo - Arrotondamento > std::int64_t{*musica_}) {
        Rileva("its time " + std::to_string(evento.Tempo) + " is after the end of the music at " +
               std::to_string(*musica_ / MillisecondiPerDecimo) +
               ": its words are never seen; correct the time or the music");
    }
}

}  // namespace

std::vector<Rilievo> ControllaTesto(std::string_view testo, std::optional<std::int32_t> musica) {
    return Controllo(musica).Esegui(testo);
}

}  // namespace sonnel
