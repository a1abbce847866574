#include "convert/PaginaKar.h"

#include "platform/Numbers.h"
#include "platform/Text.h"

namespace sonnel {
namespace {

constexpr std::int16_t TestoPagina = 1;
constexpr std::int16_t Parola = 2;

// Tenths of a second.
constexpr std::int32_t Anticipo = 20;
constexpr std::int32_t PausaLunga = 100;

}  // namespace

void PaginaKar::Inizia(std::int32_t istante, std::string_view parola, std::string& uscita) {
    if (numVoci_ > 0) {
        ElaboraPagina(uscita);
        finePrecedente_ = ultimaParola_;
    }
    pagina_[0] = {istante, TestoPagina, std::string(parola)};
    numVoci_ = 1;
    caratteri_ = CodePoints(parola);
    Segna(istante);
}

bool PaginaKar::Aggiungi(std::int32_t istante, std::string_view parola) {
    pagina_[0].Testo += parola;
    caratteri_ += CodePoints(parola);
    if (numVoci_ == pagina_.size()) {
        return false;
    }
    Segna(istante);
    return true;
}

void PaginaKar::Segna(std::int32_t istante) {
    pagina_.at(numVoci_) = {istante, Parola, std::to_string(caratteri_)};
    ++numVoci_;
    ultimaParola_ = istante;
}

void PaginaKar::ScriviRiga(const EventoPagina& voce, std::string& uscita) {
    uscita += ZeroPadded(voce.Istante, 5);
    uscita += ZeroPadded(voce.Tipo, 2);
    uscita += voce.Testo;
    uscita += "\r\n";
    ++eventi_;
}

void PaginaKar::ElaboraPagina(std::string& uscita) {
    EventoPagina& testo = pagina_[0];
    const std::int64_t pausa = std::int64_t{testo.Istante} - finePrecedente_;
    if (pausa > Anticipo) {
        if (pausa > PausaLunga && finePrecedente_ >= 0) {
            ScriviRiga({finePrecedente_ + Anticipo, TestoPagina, ""}, uscita);
        }
        testo.Istante -= Anticipo;
    } else if (pausa >= 2) {
        testo.Istante = finePrecedente_ + 1;
    } else if (numVoci_ > 2 && pagina_[2].Istante - pagina_[1].Istante > 1) {
        // Shown together with its first word, the page would be coloured before it was seen.
        ++pagina_[1].Istante;
    }
    for (std::size_t i = 0; i < numVoci_; ++i) {
        ScriviRiga(pagina_.at(i), uscita);
    }
    numVoci_ = 0;
}

}  // namespace sonnel
