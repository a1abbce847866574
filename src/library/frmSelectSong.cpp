#include "library/frmSelectSong.h"

#include "library/AggiungiBrani.h"
#include "library/ApriLykEsterno.h"
#include "library/EliminaBrano.h"
#include "library/SincronizzaDB.h"
#include "library/frmElencaPerLingua.h"
#include "library/frmInfoBrano.h"
#include "platform/Paths.h"
#include "platform/ScopeExit.h"
#include "platform/qt/FileDrop.h"
#include "ui/PuntatoreOccupato.h"
#include "ui/frmCerca.h"
#include "ui/frmElenco.h"

#include <QResizeEvent>
#include <QShowEvent>
#include <utility>

namespace sonnel {
namespace {

/// Prefix in the answer for the path of a song outside the library.
constexpr const char* PrefissoFile = "F=";

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
    new FileDrop(
        *this, [this] { return isEnabled(); },
        [this](const auto& percorsi) { AggiungiFile(percorsi); });
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
        if (ordini_.at(static_cast<std::size_t>(ordine))->isChecked()) {
            return ordine;
        }
    }
    return Ordine::Titolo;
}

void frmSelectSong::mnuViewSort_Click(Ordine ordine) {
    const PuntatoreOccupato occupato(p_.libreria.eventi);
    const std::int16_t selezionato = BranoSelezionato();
    righe_->Sostituisci(ElencaPerLingua(p_.libreria.brani, ordine));
    if (linea_->text().isEmpty()) {
        SelezionaBrano(selezionato);
    } else {
        SelezionaTrovato(selezionato);
    }
    ContaRighe();
    ordini_.at(static_cast<std::size_t>(ordine))->setChecked(true);
    AbilitaBottoni();
}

void frmSelectSong::ContaRighe() {
    setWindowTitle(QString("Song selection - %1 songs").arg(righe_->rowCount()));
}

/// Lists the songs that hold the words.
void frmSelectSong::Cerca(const QString& parole) {
    const std::int16_t selezionato = BranoSelezionato();
    righe_->Filtra(parole);
    SelezionaTrovato(selezionato);
    ContaRighe();
    AbilitaBottoni();
}

/// Selects the song that was selected before if it is listed, else the first one.
void frmSelectSong::SelezionaTrovato(std::int16_t selezionato) {
    SelezionaBrano(selezionato);
    if (BranoSelezionato() == 0 && righe_->rowCount() > 0) {
        lstBrani->setCurrentIndex(righe_->index(0));
    }
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
    for (const Legame& legame : legami_) {
        legame.azione->setEnabled(legame.serve == Serve::Selezione ? brano
                                                                   : righe_->rowCount() > 0);
    }
}

// Commands that end the window

void frmSelectSong::Chiudi(const std::string& risposta, std::optional<FileBrano> scelta) {
    Tag = risposta;
    scelta_ = std::move(scelta);
    hide();
    // Makes Qt show it again where the user left it, not centred over its parent.
    setAttribute(Qt::WA_Moved);
}

void frmSelectSong::ChiudiCon(std::int16_t posizione) {
    Chiudi(std::to_string(posizione),
           FileDelBrano(p_.libreria.config.OpenDir, p_.libreria.brani.Brani(posizione)));
}

void frmSelectSong::mnuFileOpen_Click() {
    if (const std::int16_t posizione = BranoSelezionato(); posizione > 0) {
        ChiudiCon(posizione);
    }
}

void frmSelectSong::mnuFileOpenLyk_Click() {
    if (const auto brano = ApriLykEsterno(p_.dialoghi, p_.libreria.msgBox)) {
        Chiudi(PrefissoFile + (brano->parole ? Utf8FromPath(*brano->mid) : brano->base), brano);
    }
}

void frmSelectSong::mnuFileRandom_Click() {
    const auto righe = static_cast<std::size_t>(righe_->rowCount());
    if (righe > 0) {
        ChiudiCon(righe_->Posizione(static_cast<int>(RigaCasuale(righe, p_.caso))));
    }
}

void frmSelectSong::mnuFileExit_Click() {
    Chiudi("", std::nullopt);
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

/// Runs an operation while the window takes no input.
template <class Operazione>
void frmSelectSong::SenzaInput(const Operazione& operazione) {
    setEnabled(false);
    {
        const ScopeExit riabilita([this] { setEnabled(true); });
        operazione();
    }
    lstBrani->setFocus();
}

void frmSelectSong::mnuDataReload_Click() {
    SenzaInput([this] { RileggiDB(p_.libreria, *this); });
}

void frmSelectSong::mnuDataRebuild_Click() {
    SenzaInput([this] { p_.comandi.SincronizzaDB(); });
}

void frmSelectSong::mnuDataAdd_Click() {
    if (const auto midi = AggiungiBrani(p_.libreria, p_.dialoghi, *this); !midi.empty()) {
        AggiungiFile(midi);
    }
    lstBrani->setFocus();
}

void frmSelectSong::AggiungiFile(const std::vector<std::filesystem::path>& percorsi) {
    SenzaInput([&] { p_.comandi.AggiungiFile(percorsi); });
}

void frmSelectSong::mnuFileProperties_Click() {
    if (const std::int16_t posizione = BranoSelezionato(); posizione > 0) {
        ProprietaBrano(p_.libreria, *this, posizione, this);
        lstBrani->setFocus();
    }
}

void frmSelectSong::mnuDataConvert_Click() {
    p_.comandi.ConvertiKar();
    lstBrani->setFocus();
}

void frmSelectSong::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    linea_->Chiudi();
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

void frmSelectSong::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        Rebar.SetBandColors();
    }
}

}  // namespace sonnel
