#include "player/ProssimoTurno.h"

#include "settings/Impostazioni.h"
#include "settings/TestoNumero.h"

#include <algorithm>
#include <utility>

namespace sonnel {
namespace {

constexpr const char* Sezione = "Queue";
constexpr const char* ChiaveAutomatico = "Automatic";
constexpr const char* ChiaveSecondi = "Seconds";
constexpr int SecondiUsuali = 10;
constexpr int Intervallo = 100;  // ms
constexpr int MsPerSecondo = 1000;
constexpr int PassiAlSecondo = MsPerSecondo / Intervallo;
constexpr std::size_t MassimoSeguenti = 2;

std::string RigaSeguente(const Turno& turno) {
    return turno.cantante.empty() ? turno.titolo : turno.titolo + " - " + turno.cantante;
}

}  // namespace

std::optional<Annuncio> AnnunciaTurni(const std::vector<Turno>& turni, int secondi) {
    std::optional<Annuncio> annuncio;
    for (const Turno& turno : turni) {
        if (annuncio && annuncio->seguenti.size() == MassimoSeguenti) {
            break;
        }
        if (!Presente(turno)) {
            continue;
        }
        if (annuncio) {
            annuncio->seguenti.push_back(RigaSeguente(turno));
        } else {
            annuncio = Annuncio{turno, {}, secondi};
        }
    }
    return annuncio;
}

ProssimoTurno::ProssimoTurno(Parti parti)
    : p_(std::move(parti)),
      automatico_(LeggiInterruttore(p_.registro, Sezione, ChiaveAutomatico, true)),
      secondi_(std::clamp(Intero(LeggiImpostazione(p_.registro, Sezione, ChiaveSecondi, ""))
                              .value_or(SecondiUsuali),
                          1, MassimoSecondi)) {}

void ProssimoTurno::CambiaAutomatico(bool automatico) {
    automatico_ = automatico;
    SalvaImpostazione(p_.registro, Sezione, ChiaveAutomatico, TestoLogico(automatico));
}

void ProssimoTurno::CambiaSecondi(int secondi) {
    secondi_ = std::clamp(secondi, 1, MassimoSecondi);
    SalvaImpostazione(p_.registro, Sezione, ChiaveSecondi, TestoNumero(secondi_));
}

void ProssimoTurno::BranoFinito() {
    p_.coda.Rileggi();
    comandi_ = p_.sequencer.Commands();
    resta_ = secondi_ * MsPerSecondo;
    passi_ = 0;
    p_.timer.Start(Intervallo, [this] { Passo(); });
    Annuncia();
}

/// Updates the announcement from the queue and the countdown; ends it when no turn can start.
void ProssimoTurno::Annuncia() {
    const int secondi = automatico_ ? std::max(1, (resta_ + MsPerSecondo - 1) / MsPerSecondo) : 0;
    auto adesso = AnnunciaTurni(p_.coda.Turni(), secondi);
    if (!adesso) {
        Termina();
    } else if (adesso != annuncio_) {
        annuncio_ = std::move(adesso);
        p_.cambiato();
    }
}

void ProssimoTurno::Termina() {
    p_.timer.Stop();
    if (std::exchange(annuncio_, std::nullopt)) {
        p_.cambiato();
    }
}

void ProssimoTurno::Passo() {
    if (p_.sequencer.Commands() != comandi_) {
        Termina();
        return;
    }
    if (automatico_ && !p_.ferma()) {
        resta_ -= Intervallo;
    }
    // Only once a second: looking for the songs' files is slow on network drives.
    passi_ = (passi_ + 1) % PassiAlSecondo;
    if (passi_ == 0 || resta_ <= 0) {
        Annuncia();
    }
    if (resta_ <= 0 && annuncio_) {
        const Turno turno = annuncio_->turno;
        Termina();
        p_.comincia(turno);
    }
}

}  // namespace sonnel
