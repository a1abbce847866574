#include "ui/CercaRighe.h"

#include "platform/Text.h"

#include <algorithm>

namespace sonnel {
namespace {

std::vector<std::string> Parole(std::string_view testo) {
    const std::string piegato = FoldForSearch(testo);
    std::vector<std::string> parole;
    for (std::size_t da = 0; da < piegato.size();) {
        const std::size_t fine = std::min(piegato.find(' ', da), piegato.size());
        if (fine > da) {
            parole.push_back(piegato.substr(da, fine - da));
        }
        da = fine + 1;
    }
    return parole;
}

}  // namespace

CercaRighe::CercaRighe(const std::vector<RigaElenco>& righe) {
    righe_.reserve(righe.size());
    for (const RigaElenco& riga : righe) {
        righe_.push_back(FoldForSearch(riga.testo));
    }
}

std::vector<std::size_t> CercaRighe::Trova(std::string_view testo) const {
    const std::vector<std::string> parole = Parole(testo);
    std::vector<std::size_t> trovate;
    for (std::size_t i = 0; i < righe_.size(); ++i) {
        const bool tutte = std::all_of(
            parole.begin(), parole.end(),
            [&](const std::string& parola) { return righe_[i].find(parola) != std::string::npos; });
        if (tutte) {
            trovate.push_back(i);
        }
    }
    return trovate;
}

}  // namespace sonnel
