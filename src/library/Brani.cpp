#include "library/Brani.h"

#include "platform/Paths.h"

#include <utility>

namespace sonnel {
namespace {

std::size_t Posto(std::int16_t posizione) {
    return static_cast<std::size_t>(posizione) - 1;
}

}  // namespace

FileBrano FileDelBrano(std::string_view openDir, const Brano& brano) {
    return TrovaFileBrano(std::string(openDir) +
                          (IsPlainName(brano.NomeFile) ? brano.NomeFile : ""));
}

const Brano& TabellaBrani::Brani(std::int16_t posizione) const {
    return brani_[Posto(posizione)];
}

Brano& TabellaBrani::Cambia(std::int16_t posizione) {
    ++versione_;
    return brani_[Posto(posizione)];
}

void TabellaBrani::Azzera() {
    ++versione_;
    brani_.clear();
    esclusi_ = 0;
}

void TabellaBrani::InserisciBrano(Brano brano) {
    ++versione_;
    if (brani_.size() < MassimoBrani) {
        brani_.push_back(std::move(brano));
    } else {
        ++esclusi_;
    }
}

}  // namespace sonnel
