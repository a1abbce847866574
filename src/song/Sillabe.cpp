#include "song/Sillabe.h"

#include "platform/Text.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace sonnel {
namespace {

constexpr std::ptrdiff_t SillabePerGiunzione = 10;
constexpr std::ptrdiff_t SillabePerSpazio = 20;

class Lettore {
  public:
    Lettore(bool utf8, bool conCr) : utf8_(utf8), conCr_(conCr) {}

    void Leggi(const TestoMidi& testo);
    [[nodiscard]] Sillabe Prendi() && { return std::move(lette_); }

  private:
    void Segno(Inizio segno) {
        prossimo_ = std::max(prossimo_, segno);
        lette_.segni = true;
    }
    std::size_t LeggiFineRiga(std::string_view resto);
    void LeggiPezzo(std::uint64_t tick, std::string_view byte);

    bool utf8_;
    bool conCr_;  ///< some line ends hold a CR: a lone LF is more than a line end
    Inizio prossimo_ = Inizio::Pagina;
    Sillabe lette_;
};

/// Reads the line end that a text begins with and returns its length.
std::size_t Lettore::LeggiFineRiga(std::string_view resto) {
    if (resto.starts_with("\r\n")) {
        Segno(Inizio::Riga);
        return 2;
    }
    Segno(resto.front() == '\n' && conCr_ ? Inizio::Pagina : Inizio::Riga);
    return 1;
}

void Lettore::Leggi(const TestoMidi& testo) {
    std::string_view resto = testo.byte;
    for (bool parola = false; !resto.empty();) {
        const char primo = resto.front();
        if (primo == '\r' || primo == '\n') {
            resto.remove_prefix(LeggiFineRiga(resto));
        } else if (!parola && (primo == '\\' || primo == '/')) {
            Segno(primo == '\\' ? Inizio::Pagina : Inizio::Riga);
            resto.remove_prefix(1);
        } else {
            const std::string_view pezzo = resto.substr(0, resto.find_first_of("\r\n"));
            LeggiPezzo(testo.tick, pezzo);
            resto.remove_prefix(pezzo.size());
            parola = true;
        }
    }
}

void Lettore::LeggiPezzo(std::uint64_t tick, std::string_view byte) {
    std::string testo = utf8_ ? std::string(byte) : FromWindows1252(byte);
    std::erase(testo, '\0');
    if (ContieneParola(testo)) {
        lette_.sillabe.push_back({tick, std::move(testo), std::exchange(prossimo_, Inizio::Nulla)});
    } else if (prossimo_ == Inizio::Nulla) {
        lette_.sillabe.back().testo += testo;  // blanks and hyphens belong to the word before
    }
}

/// The length of a syllable without a joining hyphen, and blanks after that, at its end.
std::size_t FinoAllaGiunzione(std::string_view testo) {
    const std::size_t ultimo = testo.find_last_not_of(' ');
    return ultimo != std::string_view::npos && testo[ultimo] == '-' ? ultimo : testo.size();
}

bool HaGiunzione(const Sillaba& sillaba) {
    return FinoAllaGiunzione(sillaba.testo) < sillaba.testo.size();
}

bool ToccaSpazio(const Sillaba& sillaba) {
    return sillaba.testo.starts_with(' ') || sillaba.testo.ends_with(' ');
}

void Unisci(std::vector<Sillaba>& sillabe) {
    const auto tutte = static_cast<std::ptrdiff_t>(sillabe.size());
    const bool giunzioni =
        std::count_if(sillabe.begin(), sillabe.end(), HaGiunzione) * SillabePerGiunzione > tutte;
    const bool senzaSpazi =
        std::count_if(sillabe.begin(), sillabe.end(), ToccaSpazio) * SillabePerSpazio < tutte;
    for (Sillaba& sillaba : sillabe) {
        if (giunzioni && HaGiunzione(sillaba)) {
            sillaba.testo.resize(FinoAllaGiunzione(sillaba.testo));
        } else if (senzaSpazi) {
            sillaba.testo += ' ';
        }
    }
}

}  // namespace

Sillabe LeggiSillabe(const std::vector<TestoMidi>& testi, bool utf8) {
    const bool conCr = std::any_of(testi.begin(), testi.end(), [](const TestoMidi& testo) {
        return testo.byte.find('\r') != std::string_view::npos;
    });
    Lettore lettore(utf8, conCr);
    for (const TestoMidi& testo : testi) {
        lettore.Leggi(testo);
    }
    Sillabe lette = std::move(lettore).Prendi();
    Unisci(lette.sillabe);
    return lette;
}

}  // namespace sonnel
