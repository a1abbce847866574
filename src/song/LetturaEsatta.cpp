#include "song/LetturaEsatta.h"

#include "platform/Numbers.h"
#include "platform/Text.h"
#include "platform/midi/TempoMap.h"
#include "song/ImpaginaSillabe.h"
#include "song/LeggiKaraoke.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace sonnel {
namespace {

// Tenths of a second.
constexpr std::int32_t Anticipo = 20;
constexpr std::int32_t DopoUltima = 5;
constexpr std::int32_t MinimoAnticipo = 5;
constexpr std::int32_t PausaLunga = 100;
constexpr std::int32_t UltimoTempo = 99'999;

Error Rifiuto(ErroreEsatto numero, std::string motivo) {
    return {static_cast<int>(numero), std::move(motivo)};
}

/// When to show a page whose first word is sung at `prima`, after a last word at `ultima`.
std::int32_t TempoPagina(std::int32_t ultima, std::int32_t prima) {
    std::int32_t tempo = std::max(prima - Anticipo, ultima + DopoUltima);
    if (prima - tempo < MinimoAnticipo) {
        tempo = prima - MinimoAnticipo;
    }
    return std::min(std::max(tempo, ultima + 1), prima);
}

/// Writes pages as the lines of a LYK file.
class Scrittore {
  public:
    explicit Scrittore(std::string& uscita) : uscita_(uscita) {}

    void Scrivi(const PaginaParole& pagina);
    [[nodiscard]] int Eventi() const { return eventi_; }

  private:
    struct Segno {
        std::int32_t tempo;
        std::size_t caratteri;
    };

    void ScriviRiga(std::int32_t tempo, TipoEvento tipo, std::string_view testo);
    void Aggiungi(std::string_view testo);

    std::string& uscita_;
    std::string testo_;  ///< of the page
    std::size_t caratteri_ = 0;
    std::int32_t ultima_ = -1;  ///< tenths; -1 before the first page
    int eventi_ = 0;
};

void Scrittore::ScriviRiga(std::int32_t tempo, TipoEvento tipo, std::string_view testo) {
    uscita_ += ZeroPadded(tempo, 5);
    uscita_ += ZeroPadded(static_cast<std::int16_t>(tipo), 2);
    uscita_ += testo;
    uscita_ += FineRiga;
    ++eventi_;
}

/// Separates with a blank two characters of the words that would read as a line separator.
void Scrittore::Aggiungi(std::string_view testo) {
    for (const char carattere : testo) {
        if (carattere == SeparatoreRighe[1] && testo_.ends_with(SeparatoreRighe[0])) {
            testo_ += ' ';
            ++caratteri_;
        }
        testo_ += carattere;
    }
    caratteri_ += CodePoints(testo);
}

void Scrittore::Scrivi(const PaginaParole& pagina) {
    std::vector<Segno> segni;
    testo_.clear();
    caratteri_ = 0;
    for (const auto& riga : pagina) {
        if (!testo_.empty()) {
            testo_ += SeparatoreRighe;
            caratteri_ += SeparatoreRighe.size();
        }
        for (const Pezzo& pezzo : riga) {
            Aggiungi(pezzo.testo);
            segni.push_back({pezzo.tempo, caratteri_});
        }
    }
    const std::int32_t prima = segni.front().tempo;
    if (ultima_ >= 0 && prima - ultima_ > PausaLunga) {
        ScriviRiga(ultima_ + Anticipo, TipoEvento::Pagina, "");
    }
    const std::int32_t tempo =
        ultima_ < 0 ? std::max(0, prima - Anticipo) : TempoPagina(ultima_, prima);
    ScriviRiga(tempo, TipoEvento::Pagina, testo_);
    for (const Segno& segno : segni) {
        ScriviRiga(segno.tempo, TipoEvento::Colore, std::to_string(segno.caratteri));
    }
    ultima_ = segni.back().tempo;
}

/// Title and author, from the file's fields or else from its name.
std::pair<std::string, std::string> TitoloEAutore(const std::vector<std::string>& campi,
                                                  std::string_view nome) {
    constexpr std::string_view trattino = " - ";
    const std::size_t taglio = nome.find(trattino);
    const bool diviso = taglio != std::string_view::npos;
    std::string titolo(diviso ? nome.substr(taglio + trattino.size()) : nome);
    std::string autore(diviso ? nome.substr(0, taglio) : "");
    if (!campi.empty()) {
        titolo = campi[0];
    }
    if (campi.size() > 1) {
        autore = campi[1];
    }
    return {std::move(titolo), std::move(autore)};
}

std::vector<std::string> Campi(const SmfFile& file, char lettera, bool utf8) {
    std::vector<std::string> campi;
    for (const std::string_view byte : CampiMidi(file, lettera)) {
        campi.push_back(OneLine(utf8 ? std::string(byte) : FromWindows1252(byte)));
    }
    return campi;
}

void ScriviIntestazione(const SmfFile& file, std::string_view nome, bool utf8,
                        std::string& uscita) {
    const auto scrivi = [&uscita](std::string_view campo, std::string_view valore) {
        if (!valore.empty()) {
            uscita += campo;
            uscita += valore;
            uscita += FineRiga;
        }
    };
    const auto [titolo, autore] = TitoloEAutore(Campi(file, 'T', utf8), nome);
    const std::vector<std::string> autori = Campi(file, 'I', utf8);
    uscita = PrimaRigaLyk();
    scrivi("*TI", titolo);
    scrivi("*AU", autore);
    scrivi("*BY", autori.empty() ? "" : autori.front());
}

}  // namespace

Result<LetturaEsatta> LeggiEsatto(const SmfFile& file, std::string_view nome) {
    if (auto rifiuto = RefusalToPlay(file)) {
        return *rifiuto;
    }
    TracciaParole parole = TrovaParole(file);
    if (parole.testi.empty()) {
        return Rifiuto(ErroreEsatto::SenzaParole, "it has no words");
    }
    const Error troppi = Rifiuto(ErroreEsatto::TroppiEventi,
                                 "its words are more than the 32,750 events a song may have");
    if (parole.testi.size() > static_cast<std::size_t>(Timeline::Capienza) * 4) {
        return troppi;
    }
    const bool utf8 = TestiUtf8(file);
    LetturaEsatta esito{.Testo = {}, .Genere = parole.genere, .Danneggiato = file.damaged};
    ScriviIntestazione(file, nome, utf8, esito.Testo);
    const TempoMap tempi(file);
    Scrittore scrittore(esito.Testo);
    for (const PaginaParole& pagina : ImpaginaSillabe(LeggiSillabe(parole.testi, utf8), tempi)) {
        if (pagina.back().back().tempo > UltimoTempo) {
            return Rifiuto(ErroreEsatto::TroppoLungo,
                           "it has words after 9,999.9 seconds, the last time a song can have");
        }
        scrittore.Scrivi(pagina);
    }
    if (scrittore.Eventi() > Timeline::Capienza) {
        return troppi;
    }
    return esito;
}

}  // namespace sonnel
