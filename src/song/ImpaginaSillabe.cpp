#include "song/ImpaginaSillabe.h"

#include "platform/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace sonnel {
namespace {

constexpr std::int32_t PausaRiga = 1500;  // ms
constexpr std::size_t PrimoSpazioUtile = 32;

/// Puts syllables into lines and pages.
class Impaginatore {
  public:
    Impaginatore(bool segni, const TempoMap& tempi) : segni_(segni), tempi_(tempi) {}

    void Metti(Sillaba sillaba);
    [[nodiscard]] std::vector<PaginaParole> Prendi() && { return std::move(pagine_); }

  private:
    [[nodiscard]] Inizio InizioDopoPausa(std::int32_t ms) const;
    void Comincia(Inizio inizio);
    void Aggiungi(Pezzo pezzo);
    [[nodiscard]] std::size_t SpazioUtile(std::string_view testo) const;

    bool segni_;
    const TempoMap& tempi_;
    std::vector<PaginaParole> pagine_;
    std::size_t caratteri_ = 0;  ///< of the current line
    bool piena_ = false;         ///< the current line ends here
    std::int32_t ultima_ = 0;    ///< ms of the last syllable
};

void Impaginatore::Metti(Sillaba sillaba) {
    Pezzo pezzo{tempi_.Milliseconds(sillaba.tick), tempi_.Tenths(sillaba.tick),
                std::move(sillaba.testo)};
    Comincia(segni_ || pagine_.empty() ? sillaba.inizio : InizioDopoPausa(pezzo.ms));
    if (!segni_) {
        for (std::size_t spazio = SpazioUtile(pezzo.testo); spazio != std::string::npos;
             spazio = SpazioUtile(pezzo.testo)) {
            std::string resto = TagliaDopo(pezzo.testo, spazio);
            if (!ContieneParola(resto)) {
                pezzo.testo += resto;
                piena_ = true;
                break;
            }
            Aggiungi({pezzo.ms, pezzo.tempo, std::exchange(pezzo.testo, std::move(resto))});
            Comincia(Inizio::Riga);
        }
    }
    Aggiungi(std::move(pezzo));
}

Inizio Impaginatore::InizioDopoPausa(std::int32_t ms) const {
    const std::int32_t pausa = ms - ultima_;
    if (pausa >= PausaPagina) {
        return Inizio::Pagina;
    }
    return pausa >= PausaRiga || piena_ ? Inizio::Riga : Inizio::Nulla;
}

void Impaginatore::Comincia(Inizio inizio) {
    if (inizio == Inizio::Pagina) {
        pagine_.emplace_back();
    }
    if (inizio != Inizio::Nulla) {
        pagine_.back().emplace_back();
        caratteri_ = 0;
        piena_ = false;
    }
}

/// Joins syllables without letters to the one before.
void Impaginatore::Aggiungi(Pezzo pezzo) {
    RigaParole& riga = pagine_.back().back();
    caratteri_ += CodePoints(pezzo.testo);
    ultima_ = pezzo.ms;
    if (!riga.empty() && !ContieneParola(pezzo.testo)) {
        riga.back().testo += pezzo.testo;
    } else {
        riga.push_back(std::move(pezzo));
    }
}

/// The blank in a syllable at which the current line should end; npos when there is none.
std::size_t Impaginatore::SpazioUtile(std::string_view testo) const {
    const std::size_t prima = PrimoSpazioUtile - 1 - std::min(caratteri_, PrimoSpazioUtile - 1);
    return testo.find(' ', FirstCodePoints(testo, prima).size());
}

}  // namespace

std::vector<PaginaParole> ImpaginaSillabe(Sillabe lette, const TempoMap& tempi) {
    Impaginatore impaginatore(lette.segni, tempi);
    for (Sillaba& sillaba : lette.sillabe) {
        impaginatore.Metti(std::move(sillaba));
    }
    std::vector<PaginaParole> pagine;
    for (PaginaParole& pagina : std::move(impaginatore).Prendi()) {
        for (PaginaParole& divisa : DividiPagina(std::move(pagina))) {
            pagine.push_back(std::move(divisa));
        }
    }
    return pagine;
}

}  // namespace sonnel
