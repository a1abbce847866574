#include "song/DividiPagina.h"

#include "platform/Text.h"
#include "song/TestiMidi.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string_view>
#include <utility>

namespace sonnel {
namespace {

constexpr std::size_t MassimoCaratteri = 40;

/// A blank in a line: the piece, the byte in its text, and the character in the line, from 0.
struct Spazio {
    std::size_t pezzo = 0;
    std::size_t byte = 0;
    std::size_t carattere = 0;
};

/// The characters of a line without the blanks at its end, and the blanks between its words.
struct MisuraRiga {
    std::size_t caratteri = 0;
    std::vector<Spazio> spazi;
};

MisuraRiga Misura(const RigaParole& riga) {
    MisuraRiga misura;
    std::vector<Spazio> sospesi;  // blanks not yet followed by a word
    std::size_t carattere = 0;
    for (std::size_t i = 0; i < riga.size(); ++i) {
        const std::string_view testo = riga[i].testo;
        for (std::size_t byte = 0; byte < testo.size(); ++carattere) {
            const std::size_t lungo = FirstCodePoints(testo.substr(byte), 1).size();
            if (testo[byte] == ' ') {
                sospesi.push_back({i, byte, carattere});
            } else {
                if (misura.caratteri > 0) {
                    misura.spazi.insert(misura.spazi.end(), sospesi.begin(), sospesi.end());
                }
                sospesi.clear();
                misura.caratteri = carattere + 1;
            }
            byte += lungo;
        }
    }
    return misura;
}

/// Breaks a line after a blank and returns what comes after it.
RigaParole Spezza(RigaParole& riga, const Spazio& spazio) {
    Pezzo& rotto = riga[spazio.pezzo];
    Pezzo resto{rotto.ms, rotto.tempo, TagliaDopo(rotto.testo, spazio.byte)};
    const auto dopo = riga.begin() + static_cast<std::ptrdiff_t>(spazio.pezzo) + 1;
    RigaParole seguente(std::make_move_iterator(dopo), std::make_move_iterator(riga.end()));
    riga.erase(dopo, riga.end());
    if (ContieneParola(resto.testo) || seguente.empty()) {
        seguente.insert(seguente.begin(), std::move(resto));
    } else {
        seguente.front().testo.insert(0, resto.testo);
    }
    return seguente;
}

/// Breaks a long line at the blank nearest its middle, repeatedly while parts are too long.
void DividiRiga(RigaParole riga, PaginaParole& righe) {
    std::vector<RigaParole> resto;
    resto.push_back(std::move(riga));
    while (!resto.empty()) {
        const MisuraRiga misura = Misura(resto.back());
        const auto meta = [&misura](const Spazio& spazio) {
            const auto doppio = static_cast<std::ptrdiff_t>(2 * spazio.carattere + 1);
            return std::abs(doppio - static_cast<std::ptrdiff_t>(misura.caratteri));
        };
        if (misura.caratteri <= MassimoCaratteri || misura.spazi.empty()) {
            righe.push_back(std::move(resto.back()));
            resto.pop_back();
            continue;
        }
        const auto spazio = std::min_element(
            misura.spazi.begin(), misura.spazi.end(),
            [&meta](const Spazio& a, const Spazio& b) { return meta(a) < meta(b); });
        RigaParole seguente = Spezza(resto.back(), *spazio);
        resto.insert(resto.end() - 1, std::move(seguente));
    }
}

/// The pause before line `i` of a page, in ms.
std::int32_t PausaPrima(const PaginaParole& righe, std::size_t i) {
    return righe[i].front().ms - righe[i - 1].back().ms;
}

/// Divides lines that are too many for one page into nearly equal parts. Returns where each part
/// ends.
std::vector<std::size_t> Tagli(const PaginaParole& righe, std::size_t inizio, std::size_t fine) {
    const std::size_t quante = fine - inizio;
    const std::size_t parti = (quante + MassimoRighePagina - 1) / MassimoRighePagina;
    std::vector<std::size_t> tagli;
    for (std::size_t parte = 1; parte <= parti; ++parte) {
        tagli.push_back(inizio + (quante * parte + parti / 2) / parti);
    }
    std::size_t prima = inizio;
    for (std::size_t i = 0; i + 1 < tagli.size(); prima = tagli[i], ++i) {
        std::size_t scelto = tagli[i];
        for (const std::size_t prova : {tagli[i] - 1, tagli[i] + 1}) {
            const bool entra = prova > prima && prova - prima <= MassimoRighePagina &&
                               prova < tagli[i + 1] && tagli[i + 1] - prova <= MassimoRighePagina;
            if (entra && PausaPrima(righe, prova) > PausaPrima(righe, scelto)) {
                scelto = prova;
            }
        }
        tagli[i] = scelto;
    }
    return tagli;
}

/// Cuts a page with too many lines at long pauses, then into parts that fit.
std::vector<PaginaParole> DividiRighe(PaginaParole righe) {
    std::vector<PaginaParole> pagine;
    if (righe.size() <= MassimoRighePagina) {
        pagine.push_back(std::move(righe));
        return pagine;
    }
    std::size_t inizio = 0;
    for (std::size_t i = 1; i <= righe.size(); ++i) {
        if (i < righe.size() && PausaPrima(righe, i) < PausaPagina) {
            continue;
        }
        for (const std::size_t taglio : Tagli(righe, inizio, i)) {
            const auto primo = righe.begin() + static_cast<std::ptrdiff_t>(inizio);
            const auto dopo = righe.begin() + static_cast<std::ptrdiff_t>(taglio);
            pagine.emplace_back(std::make_move_iterator(primo), std::make_move_iterator(dopo));
            inizio = taglio;
        }
    }
    return pagine;
}

}  // namespace

std::string TagliaDopo(std::string& testo, std::size_t spazio) {
    std::string resto = testo.substr(spazio + 1);
    testo.resize(spazio + 1);
    return resto;
}

std::vector<PaginaParole> DividiPagina(PaginaParole pagina) {
    PaginaParole righe;
    for (RigaParole& riga : pagina) {
        DividiRiga(std::move(riga), righe);
    }
    return DividiRighe(std::move(righe));
}

}  // namespace sonnel
