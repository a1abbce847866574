#include "player/window/frmCoda.h"

#include <QEvent>
#include <algorithm>
#include <utility>

namespace sonnel {

bool FinestraCoda::Riporta(const std::optional<Error>& errore) {
    errore_->setText(errore ? QString::fromStdString(errore->text) : QString());
    errore_->setVisible(errore.has_value());
    return !errore;
}

void FinestraCoda::Apri() {
    Rinnova();
    show();
    raise();
    activateWindow();
    linea_->Apri();
}

/// Shows changes that were made elsewhere: in the library, in the queue's file, and which songs
/// still exist.
void FinestraCoda::Rinnova() {
    p_.coda.Rileggi();
    turni_->Sostituisci(p_.coda.Turni());
    if (versione_ != p_.finestre.VersioneBrani()) {
        brani_->Sostituisci(p_.finestre.ElencoBrani());
        versione_ = p_.finestre.VersioneBrani();
        Cerca(parole_);
    }
}

void FinestraCoda::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange) {
        if (isActiveWindow()) {
            Rinnova();
        } else {
            p_.lasciata();
        }
    }
}

void FinestraCoda::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    linea_->Chiudi();
    setAttribute(Qt::WA_Moved);  // opens again where it was closed
}

// What is listed

void FinestraCoda::Cerca(const QString& parole) {
    parole_ = parole;
    brani_->Filtra(parole);
    if (brani_->rowCount() > 0) {
        elenco_->setCurrentIndex(brani_->index(0));
    }
    aggiungi_->setEnabled(brani_->rowCount() > 0);
    Filtra();
}

/// Lists the turns that hold the words to find.
void FinestraCoda::Filtra() {
    for (int riga = 0; riga < turni_->rowCount(); ++riga) {
        tabella_->setRowHidden(riga, true);
    }
    const auto trovate = CercaRighe(turni_->Righe()).Trova(parole_.toStdString());
    setWindowTitle(
        QString(trovate.size() == 1 ? "Queue - %1 song" : "Queue - %1 songs").arg(trovate.size()));
    for (const std::size_t riga : trovate) {
        tabella_->setRowHidden(static_cast<int>(riga), false);
    }
    const QModelIndex corrente = tabella_->currentIndex();
    if (corrente.isValid() && tabella_->isRowHidden(corrente.row())) {
        tabella_->selectionModel()->clear();  // commands must not change a hidden turn
    }
}

void FinestraCoda::MostraCoda() {
    const Turno* turno = Selezionato();
    const std::int64_t numero = turno != nullptr ? turno->numero : 0;
    turni_->Sostituisci(p_.coda.Turni());
    if (numero != 0 && turni_->Riga(numero) < 0) {
        tabella_->selectionModel()->clear();  // Qt has selected its neighbour instead
    }
    Filtra();
    AbilitaComandi();
}

const Turno* FinestraCoda::Selezionato() const {
    const QModelIndexList righe = tabella_->selectionModel()->selectedRows();
    return righe.isEmpty() ? nullptr
                           : &turni_->Turni().at(static_cast<std::size_t>(righe.first().row()));
}

void FinestraCoda::AbilitaComandi() {
    for (QAction* azione : conTurno_) {
        azione->setEnabled(Selezionato() != nullptr);
    }
}

// Commands

/// Adds the song that is selected in the list; its singer can be typed at once.
void FinestraCoda::AggiungiBrano() {
    const std::int16_t posizione = brani_->Posizione(elenco_->currentIndex().row());
    if (posizione == 0 || versione_ != p_.finestre.VersioneBrani()) {
        Rinnova();
        return;
    }
    if (Riporta(p_.coda.Aggiungi(p_.finestre.TurnoDelBrano(posizione)))) {
        linea_->clear();
        const QModelIndex cella = turni_->index(turni_->rowCount() - 1, ModelloCoda::Cantante);
        tabella_->setFocus();
        tabella_->setCurrentIndex(cella);
        tabella_->edit(cella);
    }
}

/// Starts the selected turn, or the first one.
void FinestraCoda::CominciaTurno() {
    if (const Turno* turno = Selezionato()) {
        p_.comincia(Turno(*turno));
    } else if (const auto primo = AnnunciaTurni(turni_->Turni(), 0)) {
        p_.comincia(primo->turno);
    } else {
        (void)Riporta(Error{0, "The queue has no song that could be started."});
    }
}

void FinestraCoda::TogliTurno() {
    if (const Turno* turno = Selezionato()) {
        const int riga = tabella_->currentIndex().row();
        (void)Riporta(p_.coda.Togli(turno->numero));
        tabella_->setCurrentIndex(turni_->index(std::min(riga, turni_->rowCount() - 1), 0));
        Filtra();
    }
}

void FinestraCoda::SpostaTurno(int posti) {
    if (const Turno* turno = Selezionato()) {
        (void)Riporta(p_.coda.Sposta(turno->numero, posti));
    }
}

}  // namespace sonnel
