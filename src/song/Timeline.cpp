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

}  // namespace sonnel
