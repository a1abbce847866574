#include "player/window/frmTurni.h"

#include "platform/qt/FileDrop.h"

#include <QApplication>
#include <QToolTip>
#include <algorithm>
#include <iterator>
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
                 [this] { MostraAnnuncio(); },
                 [this](const Turno& turno) {
                     if (!Comincia(turno)) {
                         prossimo_.BranoFinito();  // the one after it
                     }
                 }}),
      carta_(new CartaAnnuncio(
          p_.area, p_.barra, p_.config,
          [this]() -> const std::optional<Annuncio>& { return prossimo_.Corrente(); })),
      azione_(new QAction("&Queue...", this)),
      comincia_(new QAction("&Start", this)),
      ferma_(new QAction(this)) {
    azione_->setShortcut(Qt::CTRL | Qt::Key_U);
    comincia_->setShortcut(Qt::CTRL | Qt::Key_F2);
    connect(azione_, &QAction::triggered, this, &Turni::Apri);
    ferma_->setShortcuts({Qt::Key_F3, Qt::Key_F4});
    ferma_->setEnabled(false);
    connect(ferma_, &QAction::triggered, this, [this] { prossimo_.Termina(); });
}

void Turni::Apri() {
    if (coda_ == nullptr) {
        CreaFinestra();
    }
    coda_->Apri();
}

void Turni::CreaFinestra() {
    coda_ = new FinestraCoda({p_.coda, prossimo_, p_.finestre, *comincia_,
                              [this](const Turno& turno) { (void)Comincia(turno); }, p_.lasciata},
                             &finestra_);
    // The host's hands are here while a song plays.
    for (const char* nome : {"mnuSoundPause", "mnuSoundStop"}) {
        coda_->addAction(finestra_.findChild<QAction*>(nome));
    }
    coda_->addAction(ferma_);
    new FileDrop(
        *coda_, [] { return true; },
        [this](const auto& percorsi) {
            std::vector<FileBrano> brani;
            std::ranges::transform(percorsi, std::back_inserter(brani), BranoDaFile);
            Accoda(brani);
        });
}

/// Over the lyrics, unless it is seen on the singers' screen.
void Turni::MostraAnnuncio() {
    ferma_->setEnabled(Corrente().has_value());
    carta_->Aggiorna(!p_.cantanti.MostraAnnuncio() || finestra_.isFullScreen());
    p_.cantanti.update();
}

void Turni::Accoda(const std::vector<FileBrano>& brani) {
    std::optional<Error> errore;
    for (const FileBrano& brano : brani) {
        if (auto nuovo = p_.coda.Aggiungi(TurnoDi(brano))) {
            errore = std::move(nuovo);
        }
    }
    if (coda_ != nullptr && coda_->isVisible()) {
        (void)coda_->Riporta(errore);
    } else if (errore) {
        (void)p_.msgBox.Show({errore->text, Icon::Exclamation});
    } else if (!p_.coda.Turni().empty()) {
        const QString titolo = QString::fromStdString(p_.coda.Turni().back().titolo);
        QToolTip::showText(
            p_.area.mapToGlobal(p_.barra.geometry().bottomLeft()),
            QString("<nobr>Added to the queue: %1</nobr>").arg(titolo.toHtmlEscaped()), &finestra_);
    }
}

/// A turn leaves the queue when it begins, also when its song then cannot be opened.
bool Turni::Comincia(const Turno& turno) {
    if (const auto errore = p_.coda.Togli(turno.numero)) {
        (void)p_.msgBox.Show({errore->text, Icon::Exclamation});
    }
    return p_.riproduzione.SuonaBrano(BranoDaFile(turno.file), turno.tonalita);
}

}  // namespace sonnel
