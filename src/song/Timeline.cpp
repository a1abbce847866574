#include "song/Timeline.h"

#include <cstddef>
#include <utility>

namespace sonnel {
namespace {

constexpr std::size_t EventiIniziali = 100;
constexpr std::size_t Passo = 50;

std::size_t Posto(std::int16_t indice) {
    return static_cast<std::size_t>(indice) - 1;
}

}  // namespace

Timeline::Timeline() : eventi_(EventiIniziali) {}

bool Timeline::InserisciEvento(std::int32_t tempo, TipoEvento tipo, std::string testo) {
    const auto nuovo = static_cast<std::size_t>(numEventi_) + 1;
    if (nuovo > eventi_.size()) {
        if (numEventi_ == Capienza) {
            return false;
        }
        eventi_.resize(eventi_.size() + Passo);
    }
    ++numEventi_;
    Eventi(numEventi_) = {tempo, tipo, std::move(testo)};
    return true;
}

void Timeline::Azzera() {
    numEventi_ = 0;
    UltimoEvento = 0;
}

std::int16_t Timeline::MaxEventi() const {
    return static_cast<std::int16_t>(eventi_.size());
}

const Evento& Timeline::Eventi(std::int16_t indice) const {
    return eventi_[Posto(indice)];
}

Evento& Timeline::Eventi(std::int16_t indice) {
    return eventi_[Posto(indice)];
}

std::string_view SenzaFineRighe(std::string_view testo) {
    while (testo.ends_with(FineRiga)) {
        testo.remove_suffix(FineRiga.size());
    }
    return testo;
}

std::vector<std::string> RigheDiPagina(std::string_view testo) {
    testo = SenzaFineRighe(testo);
    std::vector<std::string> righe;
    std::size_t da = 0;
    for (std::size_t fine = testo.find(FineRiga); fine != std::string_view::npos;
         fine = testo.find(FineRiga, da)) {
        righe.emplace_back(testo.substr(da, fine - da));
        da = fine + FineRiga.size();
    }
    righe.emplace_back(testo.substr(da));
    return righe;
}

}  // namespace sonnel
