#include "library/frmSelectSong.h"

#include "library/ApriLykEsterno.h"
#include "library/EliminaBrano.h"
#include "library/SincronizzaDB.h"
#include "library/frmSelectSongLista.h"
#include "ui/PuntatoreOccupato.h"

#include <QResizeEvent>
#include <QShowEvent>

namespace sonnel {
namespace {

constexpr std::size_t PrimoOrdine = 8;  // index of the toolbar button of the first order, from 0

}  // namespace

frmSelectSong::frmSelectSong(const Parti& parti, QWidget* parent)
    : QDialog(parent),
      p_(parti),
      menu_(new QMenuBar(this)),
      lstBrani(new VistaBrani(this)),
      righe_(new ModelloBrani(this)),
      cmdOk(new QPushButton("&Ok", this)),
      cmdAnnulla(new QPushButton("Cancel", this)) {
    setWindowTitle("Song selection");
    CreaMenu();
    CreaLista();
    Disponi(CreaBarra());
    AggiornaLista();
    SelezionaBrano(righe_->Posizione(0));
    AbilitaBottoni();
}

// The list

void frmSelectSong::AggiornaLista() {
    mnuViewSort_Click(OrdineCorrente());
}

Ordine frmSelectSong::OrdineCorrente() const {
    for (const Ordine ordine : {Ordine::Autore, Ordine::Album}) {
        if (bottoni_[PrimoOrdine + static_cast<std::size_t>(ordine)]->isChecked()) {
            return ordine;
        }
    }
    return Ordine::Titolo;
}

void frmSelectSong::mnuViewSort_Click(Ordine ordine) {
    const PuntatoreOccupato occupato(p_.libreria.eventi);
    const std::int16_t selezionato = BranoSelezionato();
    righe_->Sostituisci(ElencaPerLingua(p_.libreria.brani, ordine));
    SelezionaBrano(selezionato);
    setWindowTitle(QString("Song selection - %1 songs").arg(righe_->rowCount()));
    bottoni_[PrimoOrdine + static_cast<std::size_t>(ordine)]->setChecked(true);
    AbilitaBottoni();
}

void frmSelectSong::SelezionaBrano(std::int16_t posizione) {
    const int riga = righe_->Riga(posizione);
    if (riga >= 0) {
        lstBrani->setCurrentIndex(righe_->index(riga));
    }
}

std::int16_t frmSelectSong::BranoSelezionato() const {
    const QModelIndexList selezione = lstBrani->selectionModel()->selectedIndexes();
    return selezione.isEmpty() ? std::int16_t{0} : righe_->Posizione(selezione.first().row());
}

void frmSelectSong::lstBrani_Click() {
    if (const std::int16_t posizione = BranoSelezionato(); posizione > 0) {
        Tag = std::to_string(posizione);
    }
    AbilitaBottoni();
}

void frmSelectSong::AbilitaBottoni() {
    const bool brano = BranoSelezionato() > 0;
    cmdOk->setEnabled(brano);
    for (QAction* comando :
         {mnuFileOpen, mnuFileProperties, mnuDataDelete, bottoni_[1], bottoni_[2]}) {
        comando->setEnabled(brano);
    }
    for (QAction* comando : {mnuFileRandom, bottoni_[3]}) {
        comando->setEnabled(righe_->rowCount() > 0);
    }
}

// Commands that end the window

void frmSelectSong::Chiudi(const std::string& risposta) {
    Tag = risposta;
    hide();
    // It comes back where the person has left it, not in the middle of its parent.
    setAttribute(Qt::WA_Moved);
}

void frmSelectSong::mnuFileOpen_Click() {
    // An Exit before has emptied the answer, but the line is selected still.
    if (const std::int16_t posizione = BranoSelezionato(); posizione > 0) {
        Chiudi(std::to_string(posizione));
    }
}

void frmSelectSong::mnuFileOpenLyk_Click() {
    if (const auto risposta = ApriLykEsterno(p_.dialoghi, p_.libreria.msgBox)) {
        Chiudi(*risposta);
    }
}

void frmSelectSong::mnuFileRandom_Click() {
    const auto righe = static_cast<std::size_t>(righe_->rowCount());
    if (righe > 0) {
        const auto riga = static_cast<int>(RigaCasuale(righe, p_.caso));
        Chiudi(std::to_string(righe_->Posizione(riga)));
    }
}

void frmSelectSong::mnuFileExit_Click() {
    Chiudi("");
}

void frmSelectSong::reject() {
    if (isEnabled()) {
        mnuFileExit_Click();
    }
}

// Commands on the library

void frmSelectSong::mnuDataDelete_Click() {
    const std::int16_t posizione = BranoSelezionato();
    if (posizione > 0 && EliminaBrano(p_.libreria, posizione)) {
        AggiornaLista();
        lstBrani->setFocus();
    }
}

void frmSelectSong::mnuDataReload_Click() {
    SenzaInput([this] { RileggiDB(p_.libreria, *this); });
}

void frmSelectSong::mnuDataRebuild_Click() {
    SenzaInput(SincronizzaDB);
}

void frmSelectSong::mnuDataAdd_Click() {
    Esegui(AggiungiBrani);
}

void frmSelectSong::mnuFileProperties_Click() {
    if (BranoSelezionato() > 0) {
        Esegui(ProprietaBrano);
    }
}

void frmSelectSong::mnuDataConvert_Click() {
    Esegui(ConvertiKar);
}

/// Runs a command while the window takes no input.
void frmSelectSong::SenzaInput(const std::function<void()>& comando) {
    setEnabled(false);
    if (comando) {
        comando();
    }
    setEnabled(true);
    lstBrani->setFocus();
}

void frmSelectSong::Esegui(const std::function<void()>& comando) {
    if (comando) {
        comando();
        lstBrani->setFocus();
    }
}

void frmSelectSong::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    lstBrani->setFocus();
    lstBrani->scrollTo(lstBrani->currentIndex());
}

void frmSelectSong::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    Rebar.Resize(*this);
}

}  // namespace sonnel
