#include "player/window/frmTurni.h"

#include "platform/qt/FileDrop.h"

#include <QApplication>
#include <utility>

namespace sonnel {

Turni::Turni(QWidget& finestra, Parti parti)
    : QObject(&finestra),
      p_(std::move(parti)),
      finestra_(finestra),
      prossimo_({p_.coda, p_.registro, p_.sequencer, timer_,
                 [this] {
                     return QApplication::activeModalWidget() != nullptr || !finestra_.isEnabled();
                 },
                 [this] {
                     carta_->Aggiorna(!p_.cantanti.isVisible());
                     p_.cantanti.update();
                 },
                 [this](const Turno& turno) { Comincia(turno); }}),
      carta_(new CartaAnnuncio(
          p_.area, p_.barra, p_.config,
          [this]() -> const std::optional<Annuncio>& { return prossimo_.Corrente(); })),
      azione_(new QAction("&Queue...", this)),
      comincia_(new QAction("&Start", this)) {
    azione_->setShortcut(Qt::CTRL | Qt::Key_U);
    comincia_->setShortcut(Qt::CTRL | Qt::Key_F2);
    connect(azione_, &QAction::triggered, this, &Turni::Apri);
}

void Turni::Apri() {
    if (coda_ == nullptr) {
        CreaFinestra();
    }
    coda_->Apri();
}

void Turni::CreaFinestra() {
    coda_ = new FinestraCoda({p_.coda, prossimo_, p_.finestre, p_.msgBox, *comincia_,
                              [this](const Turno& turno) { Comincia(turno); }, p_.lasciata},
                             &finestra_);
    new FileDrop(
        *coda_, [] { return true; },
        [this](const auto& percorsi) {
            for (const auto& percorso : percorsi) {
                Accoda(BranoDaFile(percorso));
            }
        });
}

void Turni::Accoda(const FileBrano& brano) {
    Result<Turno> turno = TurnoDi(brano);
    const auto errore = turno ? p_.coda.Aggiungi(std::move(*turno)) : turno.error();
    if (errore) {
        (void)p_.msgBox.Show({errore->text, Icon::Exclamation});
    }
}

/// A turn leaves the queue when it begins, also when its song then cannot be opened.
void Turni::Comincia(const Turno& turno) {
    if (const auto errore = p_.coda.Togli(turno.numero)) {
        (void)p_.msgBox.Show({errore->text, Icon::Exclamation});
    }
    p_.riproduzione.SuonaBrano(BranoDaFile(turno.file), turno.tonalita);
}

}  // namespace sonnel
