#include "library/ScritturaBrani.h"

#include "library/RiscriviIntestazione.h"
#include "platform/Paths.h"

#include <string>

namespace sonnel {

ScritturaBrani::ScritturaBrani(const Libreria& libreria)
    : libreria_(libreria), indice_(PercorsoIndice(libreria.config.OpenDir)), lotto_(indice_) {}

void ScritturaBrani::Scrivi(const Brano& brano) {
    ScriviBrano(indice_, brano.NomeFile, brano.Titolo, brano.Autore, brano.Album);
    std::optional<Error> errore =
        RiscriviIntestazione(PathFromUtf8(libreria_.config.OpenDir), brano.NomeFile,
                             {brano.Titolo, brano.Autore, brano.Album});
    if (errore && ++errori_ == 1) {
        primoErrore_ = std::move(errore);
    }
}

void ScritturaBrani::Concludi() {
    (void)lotto_.Commit();
    if (!primoErrore_) {
        return;
    }
    std::string testo = primoErrore_->text;
    if (errori_ > 1) {
        testo += "\r\n\r\nIn all " + std::to_string(errori_) +
                 " LYK files could not be changed: they are as they were.";
    }
    (void)libreria_.msgBox.Show({testo, Icon::Exclamation});
}

}  // namespace sonnel
