#include "library/Brani.h"

#include <utility>

namespace sonnel {
namespace {

std::size_t Posto(std::int16_t posizione) {
    return static_cast<std::size_t>(posizione) - 1;
}

}  // namespace

const Brano& TabellaBrani::Brani(std::int16_t posizione) const {
    return brani_[Posto(posizione)];
}

Brano& TabellaBrani::Brani(std::int16_t posizione) {
    return brani_[Posto(posizione)];
}

void TabellaBrani::Azzera() {
    brani_.clear();
    esclusi_ = 0;
}

void TabellaBrani::InserisciBrano(Brano brano) {
    if (brani_.size() < MassimoBrani) {
        brani_.push_back(std::move(brano));
    } else {
        ++esclusi_;
    }
}

}  // namespace sonnel
